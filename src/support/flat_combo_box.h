// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>

#include "platform/subclass.h"

namespace kivandra {

/// Paints a combo box in the flat look of a toolbar: flat when idle, raised while the mouse is over it or it
/// has the focus. It hears the box's messages and draws over what the control draws. Ending the object ends
/// that. It must end before the box's window does.
class cboFlat : public ISubclass {
 public:
  /// The number of the error that Attach raises.
  static constexpr long kWrongControl = static_cast<std::int32_t>(0x80040419U);

  /// `programFileName` is named in the error's source.
  cboFlat(SubclassCalls& calls, std::string programFileName);
  ~cboFlat() override;
  cboFlat(const cboFlat&) = delete;
  cboFlat& operator=(const cboFlat&) = delete;

  /// Takes a ComboBox, or a control whose type name is "OwnerDrawComboList", in the place of the one before.
  /// Any other raises PlatformError with the number kWrongControl and leaves everything as it is.
  void Attach(Control& cboThis);
  /// Stops the subclassing; does nothing without a box.
  void Destroy();
  /// Whether the list is open.
  [[nodiscard]] bool DroppedDown() const;
  /// Paints the box in its present state.
  void OnPaint();

  [[nodiscard]] int ISubclass_MsgResponse() const override;
  long ISubclass_WindowProc(WindowHandle hwnd, unsigned message, std::uintptr_t wParam,
                            std::intptr_t lParam) override;

 private:
  enum class Look { Idle = 1, Hot = 2 };

  void HoverTest();
  [[nodiscard]] bool UnderTheCursor() const;
  [[nodiscard]] bool HasFocus() const;
  void Draw(Look look);
  void DrawOutline(DrawingHandle drawing, const Rect& rect, std::uint32_t topLeft, std::uint32_t bottomRight);
  void DrawCorner(DrawingHandle drawing, std::uint32_t color, Point from, Point corner, Point to);

  SubclassCalls& calls_;
  std::string programFileName_;
  WindowHandle box_ = 0;
  WindowHandle edit_ = 0;  // only of a box with an edit field
  bool MouseDownSeen = false;
};

}  // namespace kivandra
