// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <stdexcept>
#include <string>
#include <utility>

namespace kivandra {

/// What every platform operation throws when it fails. `Number` is the error number that a message box shows,
/// `what()` its description, `Source` the object that raised it (may be empty).
class PlatformError : public std::runtime_error {
 public:
  PlatformError(long number, const std::string& description, std::string source = {})
      : std::runtime_error(description), number_(number), source_(std::move(source)) {}

  [[nodiscard]] long Number() const noexcept { return number_; }
  [[nodiscard]] const std::string& Source() const noexcept { return source_; }

 private:
  long number_;
  std::string source_;
};

/// Number of the error "object variable not set": an operation on a window or a page that is not there.
inline constexpr long kObjectNotSet = 91;
/// Number of the error "subscript out of range".
inline constexpr long kSubscriptOutOfRange = 9;
/// Number of the error "invalid procedure call or argument".
inline constexpr long kInvalidCall = 5;

}  // namespace kivandra
