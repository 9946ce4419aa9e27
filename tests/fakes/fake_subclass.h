// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <utility>

#include "fakes/journal.h"
#include "platform/subclass.h"

namespace kivandra::fakes {

/// One combo box on a screen, with what is drawn on it pixel by pixel.
class FakeSubclassCalls : public SubclassCalls {
 public:
  static constexpr WindowHandle kBox = 7;
  static constexpr WindowHandle kEdit = 8;

  explicit FakeSubclassCalls(Journal& journal);
  ~FakeSubclassCalls() override;

  void AttachMessage(ISubclass& subclass, WindowHandle hwnd, unsigned message) override;
  void DetachMessage(ISubclass&, WindowHandle hwnd, unsigned message) override;
  [[nodiscard]] unsigned CurrentMessage() const override;
  [[nodiscard]] WindowHandle hWnd(const Control&) const override;
  [[nodiscard]] unsigned Style(WindowHandle) const override;
  [[nodiscard]] WindowHandle FirstChild(WindowHandle) const override;
  [[nodiscard]] bool DroppedState(WindowHandle) const override;
  [[nodiscard]] bool IsWindowEnabled(WindowHandle) const override;
  [[nodiscard]] WindowHandle GetFocus() const override;
  [[nodiscard]] Point GetCursorPos() const override;
  [[nodiscard]] Rect GetWindowRect(WindowHandle) const override;
  [[nodiscard]] Rect GetClientRect(WindowHandle) const override;
  void SetTimer(WindowHandle hwnd, unsigned number, unsigned milliseconds) override;
  void KillTimer(WindowHandle hwnd, unsigned number) override;
  void InvalidateRect(WindowHandle hwnd, bool erase) override;
  [[nodiscard]] DrawingHandle GetDC(WindowHandle) override;
  void ReleaseDC(WindowHandle, DrawingHandle) override;
  [[nodiscard]] PenHandle CreatePen(std::uint32_t color) override;
  void DeletePen(PenHandle pen) override;
  PenHandle SelectPen(DrawingHandle, PenHandle pen) override;
  void MoveToEx(DrawingHandle, long x, long y) override;
  void LineTo(DrawingHandle, long x, long y) override;

  /// A message comes to the window; it is heard only if it was attached. The way it is handled.
  int Send(WindowHandle hwnd, unsigned message);
  /// The colours on the box, each once.
  [[nodiscard]] std::set<std::uint32_t> Colors() const;

  std::set<std::pair<WindowHandle, unsigned>> attached;
  std::map<std::pair<long, long>, std::uint32_t> pixels;
  std::map<PenHandle, std::uint32_t> pens;
  unsigned current = 0;
  unsigned style = 2;
  long lastResult = -1;
  bool dropped = false;
  bool enabled = true;
  bool timer = false;
  int drawings = 0;
  WindowHandle focus = 0;
  Point cursor{0, 0};
  Rect client{0, 0, 80, 20};

 private:
  Journal& journal_;
  ISubclass* receiver_ = nullptr;
  PenHandle lastPen_ = 0;
  PenHandle pen_ = 0;
  Point at_;
};

}  // namespace kivandra::fakes
