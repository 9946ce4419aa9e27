// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>

#include "platform/control.h"

namespace kivandra {

/// A window, a drawing place or a pen by its number; 0 is none.
using WindowHandle = std::uintptr_t;
using DrawingHandle = std::uintptr_t;
using PenHandle = std::uintptr_t;

struct Point {
  long x = 0;
  long y = 0;
};

/// A rectangle in pixels; right and bottom lie outside of it.
struct Rect {
  long left = 0;
  long top = 0;
  long right = 0;
  long bottom = 0;
};

// Numbers of window messages, as in winuser.h.
inline constexpr unsigned WM_PAINT = 15;
inline constexpr unsigned WM_TIMER = 275;
inline constexpr unsigned WM_MOUSEMOVE = 512;

/// A control that is known by the name of its type alone.
class NamedControl : public virtual Control {
 public:
  [[nodiscard]] virtual std::string TypeName() const = 0;
};

/// What listens to the messages of a window besides the window itself.
class ISubclass {
 public:
  virtual ~ISubclass() = default;

  /// How the present message is handled: 2, the window's own handling comes first; 1, it comes afterwards.
  [[nodiscard]] virtual int ISubclass_MsgResponse() const = 0;
  /// A message of a window that this object is attached to. No exception may leave it.
  virtual long ISubclass_WindowProc(WindowHandle hwnd, unsigned message, std::uintptr_t wParam,
                                    std::intptr_t lParam) = 0;
};

/// The calls on windows and their drawing that a subclassing object needs. What fails throws PlatformError.
class SubclassCalls {
 public:
  virtual ~SubclassCalls() = default;

  /// From now on `subclass` hears this message of the window, until it is detached.
  virtual void AttachMessage(ISubclass& subclass, WindowHandle hwnd, unsigned message) = 0;
  virtual void DetachMessage(ISubclass& subclass, WindowHandle hwnd, unsigned message) = 0;
  /// The message that is being handled, 0 outside of one.
  [[nodiscard]] virtual unsigned CurrentMessage() const = 0;

  [[nodiscard]] virtual WindowHandle hWnd(const Control& control) const = 0;
  /// The style value of a combo box: the lowest bit is clear if it has an edit field.
  [[nodiscard]] virtual unsigned Style(WindowHandle hwnd) const = 0;
  /// The first child window, or 0.
  [[nodiscard]] virtual WindowHandle FirstChild(WindowHandle hwnd) const = 0;
  [[nodiscard]] virtual bool DroppedState(WindowHandle hwnd) const = 0;
  [[nodiscard]] virtual bool IsWindowEnabled(WindowHandle hwnd) const = 0;
  /// The window that the keyboard writes to, or 0.
  [[nodiscard]] virtual WindowHandle GetFocus() const = 0;
  /// In pixels of the screen.
  [[nodiscard]] virtual Point GetCursorPos() const = 0;
  [[nodiscard]] virtual Rect GetWindowRect(WindowHandle hwnd) const = 0;
  /// The inside of the window, from its own corner.
  [[nodiscard]] virtual Rect GetClientRect(WindowHandle hwnd) const = 0;

  /// Sends WM_TIMER every `milliseconds`; a timer of the same number starts anew.
  virtual void SetTimer(WindowHandle hwnd, unsigned number, unsigned milliseconds) = 0;
  virtual void KillTimer(WindowHandle hwnd, unsigned number) = 0;
  /// Has the client area painted anew, its ground too if `erase`.
  virtual void InvalidateRect(WindowHandle hwnd, bool erase) = 0;

  [[nodiscard]] virtual DrawingHandle GetDC(WindowHandle hwnd) = 0;
  virtual void ReleaseDC(WindowHandle hwnd, DrawingHandle drawing) = 0;
  /// A solid pen one pixel wide, in the colour of the system with this number (0x80000000 and an index).
  [[nodiscard]] virtual PenHandle CreatePen(std::uint32_t color) = 0;
  virtual void DeletePen(PenHandle pen) = 0;
  /// Chooses the pen of the lines to come and gives the one before.
  virtual PenHandle SelectPen(DrawingHandle drawing, PenHandle pen) = 0;
  virtual void MoveToEx(DrawingHandle drawing, long x, long y) = 0;
  /// Draws from the last point to this one, which is not drawn itself.
  virtual void LineTo(DrawingHandle drawing, long x, long y) = 0;
};

}  // namespace kivandra
