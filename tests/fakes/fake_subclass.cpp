// SPDX-License-Identifier: GPL-3.0-or-later
#include "fakes/fake_subclass.h"

#include <utility>

namespace kivandra::fakes {

FakeSubclassCalls::FakeSubclassCalls(Journal& journal) : journal_(journal) {}

FakeSubclassCalls::~FakeSubclassCalls() = default;

void FakeSubclassCalls::AttachMessage(ISubclass& subclass, WindowHandle hwnd, unsigned message) {
  journal_.Call("AttachMessage " + std::to_string(hwnd) + ", " + std::to_string(message));
  attached.insert({hwnd, message});
  receiver_ = &subclass;
}

void FakeSubclassCalls::DetachMessage(ISubclass&, WindowHandle hwnd, unsigned message) {
  journal_.Call("DetachMessage " + std::to_string(hwnd) + ", " + std::to_string(message));
  attached.erase({hwnd, message});
}

unsigned FakeSubclassCalls::CurrentMessage() const { return current; }

WindowHandle FakeSubclassCalls::hWnd(const Control&) const { return journal_.Call("hWnd"), kBox; }

unsigned FakeSubclassCalls::Style(WindowHandle) const { return journal_.Call("Style"), style; }

WindowHandle FakeSubclassCalls::FirstChild(WindowHandle) const { return journal_.Call("FirstChild"), kEdit; }

bool FakeSubclassCalls::DroppedState(WindowHandle) const { return journal_.Call("Dropped"), dropped; }

bool FakeSubclassCalls::IsWindowEnabled(WindowHandle) const {
  return journal_.Call("IsWindowEnabled"), enabled;
}

WindowHandle FakeSubclassCalls::GetFocus() const { return journal_.Call("GetFocus"), focus; }

Point FakeSubclassCalls::GetCursorPos() const { return journal_.Call("GetCursorPos"), cursor; }

Rect FakeSubclassCalls::GetWindowRect(WindowHandle) const {
  return journal_.Call("GetWindowRect"), Rect{100, 200, 100 + client.right, 200 + client.bottom};
}

Rect FakeSubclassCalls::GetClientRect(WindowHandle) const { return journal_.Call("GetClientRect"), client; }

void FakeSubclassCalls::SetTimer(WindowHandle hwnd, unsigned number, unsigned milliseconds) {
  journal_.Call("SetTimer " + std::to_string(hwnd) + ", " + std::to_string(number) + ", " +
                std::to_string(milliseconds));
  timer = true;
}

void FakeSubclassCalls::KillTimer(WindowHandle hwnd, unsigned number) {
  journal_.Call("KillTimer " + std::to_string(hwnd) + ", " + std::to_string(number));
  timer = false;
}

void FakeSubclassCalls::InvalidateRect(WindowHandle hwnd, bool erase) {
  journal_.Call("InvalidateRect " + std::to_string(hwnd) + (erase ? ", erase" : ""));
}

DrawingHandle FakeSubclassCalls::GetDC(WindowHandle) {
  journal_.Call("GetDC");
  ++drawings;
  return 50;
}

void FakeSubclassCalls::ReleaseDC(WindowHandle, DrawingHandle) {
  --drawings;
  journal_.Call("ReleaseDC");
}

PenHandle FakeSubclassCalls::CreatePen(std::uint32_t color) {
  journal_.Call("CreatePen");
  pens[++lastPen_] = color;
  return lastPen_;
}

void FakeSubclassCalls::DeletePen(PenHandle pen) {
  pens.erase(pen);
  journal_.Call("DeletePen");
}

PenHandle FakeSubclassCalls::SelectPen(DrawingHandle, PenHandle pen) {
  journal_.Call("SelectPen");
  return std::exchange(pen_, pen);
}

void FakeSubclassCalls::MoveToEx(DrawingHandle, long x, long y) {
  journal_.Call("MoveToEx");
  at_ = {x, y};
}

void FakeSubclassCalls::LineTo(DrawingHandle, long x, long y) {
  journal_.Call("LineTo");
  while (at_.x != x || at_.y != y) {
    pixels[{at_.x, at_.y}] = pens.at(pen_);
    at_.x += (x > at_.x) - (x < at_.x);
    at_.y += (y > at_.y) - (y < at_.y);
  }
}

int FakeSubclassCalls::Send(WindowHandle hwnd, unsigned message) {
  if (attached.count({hwnd, message}) == 0) {
    return 0;
  }
  current = message;
  const int response = receiver_->ISubclass_MsgResponse();
  lastResult = receiver_->ISubclass_WindowProc(hwnd, message, 0, 0);
  current = 0;
  return response;
}

std::set<std::uint32_t> FakeSubclassCalls::Colors() const {
  std::set<std::uint32_t> colors;
  for (const auto& [place, color] : pixels) {
    colors.insert(color);
  }
  return colors;
}

}  // namespace kivandra::fakes
