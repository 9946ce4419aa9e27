// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/control.h"

namespace kivandra {

/// A text field with a drop-down list. Items count from 0. Choosing an item puts its text into the field and
/// raises OnClick; SetListIndex does the same without the event.
class ComboBox : public virtual Control {
 public:
  static constexpr ControlKind kKind = ControlKind::ComboBox;

  [[nodiscard]] virtual std::string Text() const = 0;
  virtual void SetText(const std::string& text) = 0;
  [[nodiscard]] virtual int ListCount() const = 0;
  /// Item at `index`; throws PlatformError outside 0 to ListCount - 1.
  [[nodiscard]] virtual std::string List(int index) const = 0;
  virtual void AddItem(const std::string& text, int index) = 0;
  virtual void RemoveItem(int index) = 0;
  virtual void SetListIndex(int index) = 0;
  virtual void OnKeyDown(KeyHandler handler) = 0;
  virtual void OnDblClick(std::function<void()> handler) = 0;
  /// A person has chosen an item of the list.
  virtual void OnClick(std::function<void()> handler) = 0;
};

}  // namespace kivandra
