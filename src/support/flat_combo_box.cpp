// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/flat_combo_box.h"

#include <array>
#include <utility>

#include "platform/combo_box.h"
#include "support/attempt.h"

namespace kivandra {
namespace {

constexpr unsigned kLeftButtonDown = 513;  // WM_LBUTTONDOWN of winuser.h
constexpr unsigned kLeftButtonUp = 514;    // WM_LBUTTONUP
constexpr std::array<unsigned, 5> kMessages{WM_PAINT, WM_MOUSEMOVE, kLeftButtonDown, kLeftButtonUp, WM_TIMER};
constexpr unsigned kHoverTimer = 1;
constexpr unsigned kHoverPeriod = 10;  // milliseconds

// Colours of the system: an index of winuser.h above the mark of such a colour.
constexpr std::uint32_t kHighlight = 0x80000014;   // COLOR_3DHIGHLIGHT
constexpr std::uint32_t kShadow = 0x80000010;      // COLOR_3DSHADOW
constexpr std::uint32_t kButtonFace = 0x8000000F;  // COLOR_BTNFACE

/// Rings that cover the sunken frame of the control.
constexpr int kRings = 3;

Rect InflateRect(const Rect& rect, long by) {
  return {rect.left - by, rect.top - by, rect.right + by, rect.bottom + by};
}

}  // namespace

cboFlat::cboFlat(SubclassCalls& calls, std::string programFileName)
    : calls_(calls), programFileName_(std::move(programFileName)) {}

cboFlat::~cboFlat() { Destroy(); }

void cboFlat::Attach(Control& cboThis) {
  const auto* named = dynamic_cast<const NamedControl*>(&cboThis);
  const bool right = dynamic_cast<const ComboBox*>(&cboThis) != nullptr ||
                     (named != nullptr && named->TypeName() == "OwnerDrawComboList");
  if (!right) {
    throw PlatformError(kWrongControl,
                        "Incorrect control type passed to 'Attach' parameter - must be of type ComboBox.",
                        programFileName_ + ".cFlatComboBox");
  }
  Destroy();
  const WindowHandle box = calls_.hWnd(cboThis);
  box_ = box;
  try {
    for (const unsigned message : kMessages) {
      calls_.AttachMessage(*this, box, message);
    }
    if ((calls_.Style(box) & 1U) == 0) {
      edit_ = calls_.FirstChild(box);
    }
    if (edit_ != 0) {
      calls_.AttachMessage(*this, edit_, WM_MOUSEMOVE);
    }
  } catch (const PlatformError&) {
    Destroy();  // half a subclassing would paint without ever becoming flat again
    throw;
  }
}

void cboFlat::Destroy() {
  const WindowHandle box = std::exchange(box_, 0);
  const WindowHandle edit = std::exchange(edit_, 0);
  if (box == 0) {
    return;
  }
  attempt([&] { calls_.KillTimer(box, kHoverTimer); });
  for (const unsigned message : kMessages) {
    attempt([&] { calls_.DetachMessage(*this, box, message); });
  }
  if (edit != 0) {
    attempt([&] { calls_.DetachMessage(*this, edit, WM_MOUSEMOVE); });
  }
}

bool cboFlat::DroppedDown() const {
  bool open = false;
  if (box_ != 0) {
    attempt([&] { open = calls_.DroppedState(box_); });
  }
  return open;
}

int cboFlat::ISubclass_MsgResponse() const { return calls_.CurrentMessage() == WM_PAINT ? 2 : 1; }

long cboFlat::ISubclass_WindowProc(WindowHandle /*hwnd*/, unsigned message, std::uintptr_t /*wParam*/,
                                   std::intptr_t /*lParam*/) {
  if (box_ == 0) {
    return 0;
  }
  switch (message) {
    case WM_PAINT:
      OnPaint();
      break;
    case WM_MOUSEMOVE:
      attempt([&] { calls_.SetTimer(box_, kHoverTimer, kHoverPeriod); });
      break;
    case kLeftButtonDown:
      // kept on purpose: nothing takes it back, so the first press ends the hover test for good.
      MouseDownSeen = true;
      break;
    case kLeftButtonUp:
      attempt([&] { calls_.InvalidateRect(box_, true); });
      break;
    case WM_TIMER:
      HoverTest();
      break;
    default:
      break;
  }
  return 0;
}

void cboFlat::HoverTest() {
  if (MouseDownSeen) {
    return;
  }
  bool inside = false;
  if (!attempt([&] { inside = UnderTheCursor(); })) {
    return;
  }
  if (!inside) {
    attempt([&] { calls_.KillTimer(box_, kHoverTimer); });
  }
  Draw(inside ? Look::Hot : Look::Idle);
}

bool cboFlat::UnderTheCursor() const {
  const Point cursor = calls_.GetCursorPos();
  const Rect rect = calls_.GetWindowRect(box_);
  return cursor.x >= rect.left && cursor.x < rect.right && cursor.y >= rect.top && cursor.y < rect.bottom;
}

bool cboFlat::HasFocus() const {
  const WindowHandle focus = calls_.GetFocus();
  return focus != 0 && (focus == box_ || focus == edit_);
}

void cboFlat::OnPaint() {
  if (box_ == 0) {
    return;
  }
  bool hot = false;
  attempt([&] { hot = HasFocus() || UnderTheCursor(); });
  Draw(hot ? Look::Hot : Look::Idle);
}

/// The outermost ring shows the state; the rings inside of it cover what the control has drawn.
void cboFlat::Draw(Look look) {
  DrawingHandle drawing = 0;
  if (!attempt([&] { drawing = calls_.GetDC(box_); }) || drawing == 0) {
    return;
  }
  attempt([&] {
    // A box that is switched off never rises.
    const bool raised = look == Look::Hot && calls_.IsWindowEnabled(box_);
    Rect rect = calls_.GetClientRect(box_);
    DrawOutline(drawing, rect, raised ? kHighlight : kButtonFace, raised ? kShadow : kButtonFace);
    for (int ring = 1; ring < kRings; ++ring) {
      rect = InflateRect(rect, -1);
      DrawOutline(drawing, rect, kButtonFace, kButtonFace);
    }
  });
  attempt([&] { calls_.ReleaseDC(box_, drawing); });
}

void cboFlat::DrawOutline(DrawingHandle drawing, const Rect& rect, std::uint32_t topLeft,
                          std::uint32_t bottomRight) {
  const long right = rect.right - 1;
  const long bottom = rect.bottom - 1;
  if (right <= rect.left || bottom <= rect.top) {
    return;  // a box too small for one more ring
  }
  DrawCorner(drawing, topLeft, {rect.left, bottom}, {rect.left, rect.top}, {right, rect.top});
  DrawCorner(drawing, bottomRight, {right, rect.top}, {right, bottom}, {rect.left - 1, bottom});
}

void cboFlat::DrawCorner(DrawingHandle drawing, std::uint32_t color, Point from, Point corner, Point to) {
  const PenHandle pen = calls_.CreatePen(color);
  attempt([&] {
    const PenHandle before = calls_.SelectPen(drawing, pen);
    attempt([&] {
      calls_.MoveToEx(drawing, from.x, from.y);
      calls_.LineTo(drawing, corner.x, corner.y);
      calls_.LineTo(drawing, to.x, to.y);
    });
    // A pen in use can't be freed.
    calls_.SelectPen(drawing, before);
  });
  attempt([&] { calls_.DeletePen(pen); });
}

}  // namespace kivandra
