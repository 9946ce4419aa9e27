// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/control.h"

namespace kivandra {

class StatusBar : public virtual Control {
 public:
  static constexpr ControlKind kKind = ControlKind::StatusBar;

  [[nodiscard]] virtual std::string Text() const = 0;
  virtual void SetText(const std::string& text) = 0;
  /// Text of the panel with this key; the bar's one panel has the key "TEXT" and shows what SetText shows.
  virtual void SetPanelText(const std::string& key, const std::string& text) = 0;
};

}  // namespace kivandra
