// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

namespace kivandra {

// How a started program shows its window.
inline constexpr int kNormalFocus = 1;
inline constexpr int kMinimizedFocus = 2;

class ShellCalls {
 public:
  virtual ~ShellCalls() = default;

  /// Starts an outside program, or what the desktop has in its place, and returns at once; where the desktop
  /// has nothing for a kind of program that it knows, nothing happens. Throws PlatformError if the program is
  /// an unknown one or does not start.
  virtual void Shell(const std::string& commandLine, int windowStyle) = 0;
  /// Sends key strokes to the window of this program that has the focus, in the notation "{DOWN}", "{TAB}",
  /// "( )" for a blank, "^{f}" for Ctrl+F, "%{v}" for Alt+V. Strokes that such a window has no use for, and
  /// those meant for a window of another program, are lost.
  virtual void SendKeys(const std::string& keys) = 0;
};

}  // namespace kivandra
