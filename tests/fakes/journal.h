// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/platform_error.h"

namespace kivandra::fakes {

/// The one record of everything that a test's fakes are asked to do, in order, so that a test can assert the
/// order of effects across controls. It also injects faults: with `failAt` n the n-th call throws instead of
/// working.
class Journal {
 public:
  Journal();
  ~Journal();

  std::vector<std::string> lines;
  long calls = 0;
  long failAt = 0;                                     // 0: never
  std::string failOn;                                  // the call of this very line throws, each time
  std::function<void(const std::string& line)> watch;  // sees each call before it is carried out

  /// Records an operation that may fail.
  void Call(const std::string& line);
  /// Records what cannot fail.
  void Note(const std::string& line);

  [[nodiscard]] bool Has(const std::string& line) const;
  [[nodiscard]] long Count(const std::string& line) const;
  /// The lines that contain `part`, in order.
  [[nodiscard]] std::vector<std::string> With(const std::string& part) const;
  /// Position of the first line equal to `line`, or -1.
  [[nodiscard]] long Index(const std::string& line) const;
  void Clear();
};

std::string Quoted(const std::string& text);

}  // namespace kivandra::fakes
