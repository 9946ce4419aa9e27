// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

namespace kivandra {

class Clipboard {
 public:
  virtual ~Clipboard() = default;

  virtual void Clear() = 0;
  /// Text on the clipboard, empty if there is none. Waits for the clipboard's owner, at most a second; events
  /// may run inside.
  [[nodiscard]] virtual std::string GetText() = 0;
};

}  // namespace kivandra
