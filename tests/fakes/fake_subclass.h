// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
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

  explicit FakeSubclassCalls(Journal& journal) : journal_(journal) {}

  void AttachMessage(ISubclass& subclass, WindowHandle hwnd, unsigned message) override {
    journal_.Call("AttachMessage " + std::to_string(hwnd) + ", " + std::to_string(message));
    attached.insert({hwnd, message});
    receiver_ = &subclass;
  }
  void DetachMessage(ISubclass&, WindowHandle hwnd, unsigned message) override {
    journal_.Call("DetachMessage " + std::to_string(hwnd) + ", " + std::to_string(message));
    attached.erase({hwnd, message});
  }
  [[nodiscard]] unsigned CurrentMessage() const override { return current; }
  [[nodiscard]] WindowHandle hWnd(const Control&) const override { return journal_.Call("hWnd"), kBox; }
  [[nodiscard]] unsigned Style(WindowHandle) const override { return journal_.Call("Style"), style; }
  [[nodiscard]] WindowHandle FirstChild(WindowHandle) const override {
    return journal_.Call("FirstChild"), kEdit;
  }
  [[nodiscard]] bool DroppedState(WindowHandle) const override { return journal_.Call("Dropped"), dropped; }
  [[nodiscard]] bool IsWindowEnabled(WindowHandle) const override {
    return journal_.Call("IsWindowEnabled"), enabled;
  }
  [[nodiscard]] WindowHandle GetFocus() const override { return journal_.Call("GetFocus"), focus; }
  [[nodiscard]] Point GetCursorPos() const override { return journal_.Call("GetCursorPos"), cursor; }
  [[nodiscard]] Rect GetWindowRect(WindowHandle) const override {
    return journal_.Call("GetWindowRect"), Rect{100, 200, 100 + client.right, 200 + client.bottom};
  }
  [[nodiscard]] Rect GetClientRect(WindowHandle) const override {
    return journal_.Call("GetClientRect"), client;
  }
  void SetTimer(WindowHandle hwnd, unsigned number, unsigned milliseconds) override {
    journal_.Call("SetTimer " + std::to_string(hwnd) + ", " + std::to_string(number) + ", " +
                  std::to_string(milliseconds));
    timer = true;
  }
  void KillTimer(WindowHandle hwnd, unsigned number) override {
    journal_.Call("KillTimer " + std::to_string(hwnd) + ", " + std::to_string(number));
    timer = false;
  }
  void InvalidateRect(WindowHandle hwnd, bool erase) override {
    journal_.Call("InvalidateRect " + std::to_string(hwnd) + (erase ? ", erase" : ""));
  }
  [[nodiscard]] DrawingHandle GetDC(WindowHandle) override {
    journal_.Call("GetDC");
    ++drawings;
    return 50;
  }
  void ReleaseDC(WindowHandle, DrawingHandle) override {
    --drawings;
    journal_.Call("ReleaseDC");
  }
  [[nodiscard]] PenHandle CreatePen(std::uint32_t color) override {
    journal_.Call("CreatePen");
    pens[++lastPen_] = color;
    return lastPen_;
  }
  void DeletePen(PenHandle pen) override {
    pens.erase(pen);
    journal_.Call("DeletePen");
  }
  PenHandle SelectPen(DrawingHandle, PenHandle pen) override {
    journal_.Call("SelectPen");
    return std::exchange(pen_, pen);
  }
  void MoveToEx(DrawingHandle, long x, long y) override {
    journal_.Call("MoveToEx");
    at_ = {x, y};
  }
  void LineTo(DrawingHandle, long x, long y) override {
    journal_.Call("LineTo");
    while (at_.x != x || at_.y != y) {
      pixels[{at_.x, at_.y}] = pens.at(pen_);
      at_.x += (x > at_.x) - (x < at_.x);
      at_.y += (y > at_.y) - (y < at_.y);
    }
  }

  /// A message comes to the window; it is heard only if it was attached. The way it is handled.
  int Send(WindowHandle hwnd, unsigned message) {
    if (attached.count({hwnd, message}) == 0) {
      return 0;
    }
    current = message;
    const int response = receiver_->ISubclass_MsgResponse();
    lastResult = receiver_->ISubclass_WindowProc(hwnd, message, 0, 0);
    current = 0;
    return response;
  }
  /// The colours on the box, each once.
  [[nodiscard]] std::set<std::uint32_t> Colors() const {
    std::set<std::uint32_t> colors;
    for (const auto& [place, color] : pixels) {
      colors.insert(color);
    }
    return colors;
  }

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
