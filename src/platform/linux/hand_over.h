// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <functional>
#include <string>

namespace kivandra::linux_impl {

/// What a desktop hands to a program of its list, as an address: a path of a file becomes a file address, and
/// anything else stays as it is.
[[nodiscard]] std::string AddressOf(const std::string& word);

/// How long to wait for another instance that runs and is not on the bus: longer than a parent takes to
/// choose a password at a first start.
inline constexpr std::chrono::milliseconds kMostForAnotherInstance = std::chrono::minutes(10);

struct HandOverPlan {
  /// The program that opens the address, started if it does not run.
  std::string program;
  /// Whether an instance of it runs, from its start on.
  std::function<bool()> runs;
  std::chrono::milliseconds mostForAnother = kMostForAnotherInstance;
};

/// Gives an address to the running program through its automation object; an empty one only brings the frame
/// to the front. Starts the program if need be and then waits for the object for as long as the program
/// lives: before its first start is over, a parent chooses a password. An instance that somebody else has
/// started is waited for no longer than the plan says, since it may be on another bus for good. Runs GLib's
/// events. Gives an empty text, or why the address did not arrive.
[[nodiscard]] std::string HandOver(const std::string& address, const HandOverPlan& plan);

}  // namespace kivandra::linux_impl
