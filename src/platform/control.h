// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <string>

namespace kivandra {

/// A length on a window in twips: 15 to a pixel at scale 1.
using Twips = long;

/// The kinds of control that a form file can hold; the adapter has one wrapper for each.
enum class ControlKind {
  BarControl,
  Button,
  Calendar,
  CheckBox,
  ComboBox,
  CommonDialog,
  Label,
  MdiClient,
  MenuBar,
  PageView,
  PictureBox,
  RichTextBox,
  SkinForm,
  StatusBar,
  TextBox,
  Timer,
  TreeView,
  WebBrowser,
};

/// Key codes as the handlers see them; the numbers are those of winuser.h.
enum KeyCode : int { kKeyReturn = 13, kKeyDelete = 46, kKeyF1 = 112, kKeyF12 = 123 };

/// Gets a key's code; true if the key is used up and the control must not see it.
using KeyHandler = std::function<bool(int keyCode)>;

/// One named control of a form. Every operation throws PlatformError if the control's window is gone.
class Control {
 public:
  virtual ~Control() = default;

  [[nodiscard]] virtual bool Enabled() const = 0;
  virtual void SetEnabled(bool enabled) = 0;
  /// Whether the control itself is shown (its window may be hidden all the same).
  [[nodiscard]] virtual bool Visible() const = 0;
  virtual void SetVisible(bool visible) = 0;
  virtual void SetFocus() = 0;

  [[nodiscard]] virtual Twips Left() const = 0;
  [[nodiscard]] virtual Twips Top() const = 0;
  [[nodiscard]] virtual Twips Width() const = 0;
  [[nodiscard]] virtual Twips Height() const = 0;
  /// Places the control inside its form, for the forms whose layout the logic computes.
  virtual void Move(Twips left, Twips top, Twips width, Twips height) = 0;
};

}  // namespace kivandra
