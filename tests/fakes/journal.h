// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
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
  std::vector<std::string> lines;
  long calls = 0;
  long failAt = 0;                                     // 0: never
  std::string failOn;                                  // the call of this very line throws, each time
  std::function<void(const std::string& line)> watch;  // sees each call before it is carried out

  /// Records an operation that may fail.
  void Call(const std::string& line) {
    ++calls;
    if (watch) {
      watch(line);
    }
    if (calls == failAt || line == failOn) {
      lines.push_back("FAILED " + line);
      throw PlatformError(kInvalidCall, "injected fault");
    }
    lines.push_back(line);
  }
  /// Records what cannot fail.
  void Note(const std::string& line) { lines.push_back(line); }

  [[nodiscard]] bool Has(const std::string& line) const {
    return std::find(lines.begin(), lines.end(), line) != lines.end();
  }
  [[nodiscard]] long Count(const std::string& line) const {
    return static_cast<long>(std::count(lines.begin(), lines.end(), line));
  }
  /// The lines that contain `part`, in order.
  [[nodiscard]] std::vector<std::string> With(const std::string& part) const {
    std::vector<std::string> found;
    std::copy_if(lines.begin(), lines.end(), std::back_inserter(found),
                 [&](const std::string& line) { return line.find(part) != std::string::npos; });
    return found;
  }
  /// Position of the first line equal to `line`, or -1.
  [[nodiscard]] long Index(const std::string& line) const {
    const auto at = std::find(lines.begin(), lines.end(), line);
    return at == lines.end() ? -1 : static_cast<long>(at - lines.begin());
  }
  void Clear() { lines.clear(); }
};

inline std::string Quoted(const std::string& text) { return "\"" + text + "\""; }

}  // namespace kivandra::fakes
