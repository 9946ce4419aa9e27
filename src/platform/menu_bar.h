// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

#include "platform/control.h"

namespace kivandra {

/// Design-time data of one menu entry. An entry without a caption, or with the caption "-", is a separator;
/// one with entries of its own opens them.
struct MenuData {
  std::string name;
  std::string caption;   ///< "&" marks the access key
  std::string shortcut;  ///< accelerator as it is shown, "Ctrl+O", or empty
  std::vector<MenuData> entries;
};

/// The menu of the frame, laid down once from data.
class MenuBar : public virtual Control {
 public:
  static constexpr ControlKind kKind = ControlKind::MenuBar;

  /// Makes every entry; to be called once, before any other operation.
  virtual void Lay(const std::vector<MenuData>& menus) = 0;
  /// The check mark beside an entry. Throws PlatformError for an unknown name.
  [[nodiscard]] virtual bool Checked(const std::string& name) const = 0;
  virtual void SetChecked(const std::string& name, bool checked) = 0;
  /// A person has chosen an entry, by mouse, keyboard or accelerator; the handler gets its name.
  virtual void OnClick(std::function<void(const std::string& name)> handler) = 0;
};

}  // namespace kivandra
