// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtkmm.h>

#include <memory>
#include <string>
#include <vector>

#include "platform/gtk/controls/widget_control.h"
#include "platform/gtk/menus/field_focus.h"
#include "platform/menu_bar.h"

namespace kivandra::gtk {

/// The toolkit's menu bar over a model that is made from the data. It knows access keys, F10, arrows and
/// Escape by itself.
///
/// Accelerators are taken from the whole window before a page or a field sees them, so that each press counts
/// once: a page gives back the keys that it has no use for. Cut, copy, paste and select all belong to a text
/// field of ours while it has the keyboard, by key and by menu; elsewhere their entry is clicked.
class MenuBarControl : public WidgetControl, public MenuBar {
 public:
  explicit MenuBarControl(Gtk::Box& place);
  ~MenuBarControl() override;

  void Lay(const std::vector<MenuData>& menus) override;
  [[nodiscard]] bool Checked(const std::string& name) const override;
  void SetChecked(const std::string& name, bool checked) override;
  void OnClick(std::function<void(const std::string& name)> handler) override;
  void LetGo() override;

 private:
  struct Entry {
    std::string name;
    std::string action;
    guint keyval = 0;  // 0 without accelerator
    GdkModifierType modifiers{};
    const char* fieldAction = nullptr;  // what the accelerator means to a text field
    bool checked = false;
    bool pending = false;  // its click is on its way
  };

  Glib::RefPtr<Gio::Menu> Model(const std::vector<MenuData>& entries);
  void AddAction(std::size_t index, bool checkable);
  void WatchKeys();
  [[nodiscard]] bool Key(GdkEvent* event);
  /// An entry was chosen from its menu.
  void Chosen(std::size_t index);
  /// Raises the entry's click from the event loop, once.
  void RaiseLater(std::size_t index);
  /// Tells assistive tools of an entry's check mark.
  void TellMark(const Entry& entry);
  [[nodiscard]] bool AnyMenuOpen() const;
  void CloseMenus();
  static void OnMenuOpened(MenuBarControl* self);
  static void OnMenuClosed(MenuBarControl* self);
  Entry& Find(const std::string& name);

  std::vector<Entry> entries_;
  Glib::RefPtr<Gio::SimpleActionGroup> actions_ = Gio::SimpleActionGroup::create();
  FieldFocus focus_;
  std::function<void(const std::string&)> click_;
  GtkWidget* bar_ = nullptr;            // weak
  GtkEventController* keys_ = nullptr;  // weak; the window owns it
  std::shared_ptr<int> alive_ = std::make_shared<int>();
};

}  // namespace kivandra::gtk
