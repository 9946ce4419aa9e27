// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <string>

namespace kivandra::linux_impl {

/// What a desktop hands to a program of its list, as an address: a path of a file becomes a file address, and
/// anything else stays as it is.
[[nodiscard]] std::string AddressOf(const std::string& word);

struct HandOverPlan {
  /// The program that opens the address, started if it does not run.
  std::string program;
  /// Whether an instance of it runs, from its start on.
  std::function<bool()> runs;
};

/// Gives an address to the running program through its automation object; an empty one only brings the frame
/// to the front. Starts the program if need be and then waits for the object for as long as the program
/// lives: before its first start is over, a parent chooses a password. Runs GLib's events. Gives an empty
/// text, or why the address did not arrive.
[[nodiscard]] std::string HandOver(const std::string& address, const HandOverPlan& plan);

}  // namespace kivandra::linux_impl
