// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gtk/menus/menu_bar_control.h"

#include <algorithm>
#include <array>
#include <utility>

#include "platform/gtk/captions.h"
#include "platform/gtk/guard.h"

namespace kivandra::gtk {
namespace {

constexpr const char* kGroup = "menu";

/// Accelerators that a text field uses itself, and its own names for what they do.
struct FieldKey {
  const char* shortcut;
  const char* action;
};
constexpr std::array kFieldKeys{
    FieldKey{"Ctrl+X", "clipboard.cut"},
    FieldKey{"Ctrl+C", "clipboard.copy"},
    FieldKey{"Ctrl+V", "clipboard.paste"},
    FieldKey{"Ctrl+A", "selection.select-all"},
};

/// "Ctrl+O" as the toolkit writes it: "<Ctrl>o".
std::string Accelerator(const std::string& shortcut) {
  std::string result;
  std::size_t from = 0;
  for (std::size_t plus = shortcut.find('+'); plus != std::string::npos; plus = shortcut.find('+', from)) {
    result.append("<").append(shortcut, from, plus - from).append(">");
    from = plus + 1;
  }
  return result.append(shortcut, from);
}

bool IsSeparator(const MenuData& entry) { return entry.caption.empty() || entry.caption == "-"; }

void ForEachBelow(GtkWidget* root, const std::function<void(GtkWidget*)>& work) {
  for (GtkWidget* child = gtk_widget_get_first_child(root); child != nullptr;
       child = gtk_widget_get_next_sibling(child)) {
    work(child);
    ForEachBelow(child, work);
  }
}

[[noreturn]] void NoEntry(const std::string& name) {
  throw PlatformError(kInvalidCall, "the menu has no entry " + name);
}

}  // namespace

MenuBarControl::MenuBarControl(Gtk::Box& place) : WidgetControl(place), focus_(place) {
  place.insert_action_group(kGroup, actions_);
}

MenuBarControl::~MenuBarControl() { MenuBarControl::LetGo(); }

void MenuBarControl::LetGo() {
  click_ = nullptr;
  for (const Entry& entry : entries_) {
    actions_->remove_action(entry.action);
  }
  if (keys_ != nullptr) {
    GtkEventController* keys = std::exchange(keys_, nullptr);
    g_object_remove_weak_pointer(G_OBJECT(keys), reinterpret_cast<gpointer*>(&keys_));
    gtk_widget_remove_controller(gtk_event_controller_get_widget(keys), keys);
  }
  if (bar_ != nullptr) {
    ForEachBelow(bar_, [this](GtkWidget* widget) { g_signal_handlers_disconnect_by_data(widget, this); });
    g_set_weak_pointer(&bar_, nullptr);
  }
  WidgetControl::LetGo();
}

void MenuBarControl::Lay(const std::vector<MenuData>& menus) {
  auto& place = dynamic_cast<Gtk::Box&>(Widget());
  GtkWidget* bar = gtk_popover_menu_bar_new_from_model(G_MENU_MODEL(Model(menus)->gobj()));
  g_set_weak_pointer(&bar_, bar);
  gtk_widget_set_hexpand(bar, TRUE);
  gtk_box_append(place.gobj(), bar);
  for (GtkWidget* item = gtk_widget_get_first_child(bar); item != nullptr;
       item = gtk_widget_get_next_sibling(item)) {
    // The toolkit's bar takes the keyboard when the pointer passes over it: typing would break off.
    gtk_widget_set_focusable(item, FALSE);
  }
  ForEachBelow(bar, [this](GtkWidget* widget) {
    if (GTK_IS_POPOVER_MENU(widget)) {
      g_signal_connect_swapped(widget, "map", G_CALLBACK(OnMenuOpened), this);
      g_signal_connect_swapped(widget, "unmap", G_CALLBACK(OnMenuClosed), this);
    }
  });
  WatchKeys();
}

void MenuBarControl::OnMenuOpened(MenuBarControl* self) { self->focus_.Hold(); }

void MenuBarControl::OnMenuClosed(MenuBarControl* self) {
  Glib::signal_idle().connect_once([self, alive = std::weak_ptr<int>(self->alive_)] {
    if (!alive.expired() && !self->AnyMenuOpen()) {
      self->focus_.Restore();
    }
  });
}

bool MenuBarControl::AnyMenuOpen() const {
  bool open = false;
  if (bar_ != nullptr) {
    ForEachBelow(bar_, [&open](GtkWidget* widget) {
      open = open || (GTK_IS_POPOVER_MENU(widget) && gtk_widget_get_mapped(widget));
    });
  }
  return open;
}

void MenuBarControl::CloseMenus() {
  // When a menu beside another closes, the toolkit mistakes the place of the pointer for one on the bar, and
  // opens the menu that happens to be there.
  if (bar_ != nullptr) {
    ForEachBelow(bar_, [](GtkWidget* widget) {
      if (GTK_IS_POPOVER_MENU(widget) && gtk_widget_get_mapped(widget)) {
        gtk_popover_popdown(GTK_POPOVER(widget));
      }
    });
  }
}

void MenuBarControl::TellMark(const Entry& entry) {
  const std::string action = std::string(kGroup).append(".").append(entry.action);
  ForEachBelow(bar_, [&](GtkWidget* widget) {
    if (!GTK_IS_ACTIONABLE(widget) ||
        g_strcmp0(gtk_actionable_get_action_name(GTK_ACTIONABLE(widget)), action.c_str()) != 0) {
      return;
    }
    gtk_accessible_update_state(GTK_ACCESSIBLE(widget), GTK_ACCESSIBLE_STATE_CHECKED,
                                entry.checked ? GTK_ACCESSIBLE_TRISTATE_TRUE : GTK_ACCESSIBLE_TRISTATE_FALSE,
                                -1);
  });
}

Glib::RefPtr<Gio::Menu> MenuBarControl::Model(const std::vector<MenuData>& entries) {
  auto model = Gio::Menu::create();
  auto section = Gio::Menu::create();
  const bool isBar = entries_.empty();
  const auto closeSection = [&] {
    if (section->get_n_items() > 0) {
      model->append_section(section);
      section = Gio::Menu::create();
    }
  };
  for (const MenuData& data : entries) {
    if (IsSeparator(data)) {
      closeSection();
      continue;
    }
    const std::size_t index = entries_.size();
    Entry& entry = entries_.emplace_back();
    entry.name = data.name;
    entry.action.append("e").append(std::to_string(index));
    AddAction(index, false);
    if (!data.entries.empty()) {
      (isBar ? model : section)->append_submenu(MnemonicOf(data.caption), Model(data.entries));
      continue;
    }
    auto item =
        Gio::MenuItem::create(MnemonicOf(data.caption), std::string(kGroup) + "." + entries_[index].action);
    const std::string accelerator = Accelerator(data.shortcut);
    if (!accelerator.empty() &&
        gtk_accelerator_parse(accelerator.c_str(), &entries_[index].keyval, &entries_[index].modifiers)) {
      item->set_attribute_value("accel", Glib::Variant<Glib::ustring>::create(accelerator));
      const auto* key = std::find_if(kFieldKeys.begin(), kFieldKeys.end(),
                                     [&](const FieldKey& each) { return data.shortcut == each.shortcut; });
      entries_[index].fieldAction = key == kFieldKeys.end() ? nullptr : key->action;
    }
    section->append_item(item);
  }
  closeSection();
  return model;
}

void MenuBarControl::AddAction(std::size_t index, bool checkable) {
  const Entry& entry = entries_[index];
  const auto action = checkable ? Gio::SimpleAction::create_bool(entry.action, entry.checked)
                                : Gio::SimpleAction::create(entry.action);
  action->signal_activate().connect(
      [this, index](const Glib::VariantBase&) { Guarded([&] { Chosen(index); }); });
  actions_->add_action(action);
}

MenuBarControl::Entry& MenuBarControl::Find(const std::string& name) {
  const auto found =
      std::find_if(entries_.begin(), entries_.end(), [&](const Entry& each) { return each.name == name; });
  if (found == entries_.end()) {
    NoEntry(name);
  }
  return *found;
}

bool MenuBarControl::Checked(const std::string& name) const {
  Alive();
  const auto found =
      std::find_if(entries_.begin(), entries_.end(), [&](const Entry& each) { return each.name == name; });
  if (found == entries_.end()) {
    NoEntry(name);
  }
  return found->checked;
}

void MenuBarControl::SetChecked(const std::string& name, bool checked) {
  Alive();
  Entry& entry = Find(name);
  entry.checked = checked;
  // An entry that was never checked has no place for a mark; the first wish for one makes it.
  const auto action = std::dynamic_pointer_cast<Gio::SimpleAction>(actions_->lookup_action(entry.action));
  if (action && action->get_state_variant()) {
    action->set_state(Glib::Variant<bool>::create(checked));
  } else {
    AddAction(static_cast<std::size_t>(&entry - entries_.data()), true);
  }
  TellMark(entry);
}

void MenuBarControl::OnClick(std::function<void(const std::string& name)> handler) {
  Alive();
  click_ = std::move(handler);
}

void MenuBarControl::WatchKeys() {
  GtkRoot* window = gtk_widget_get_root(Widget().gobj());
  if (window == nullptr || keys_ != nullptr) {
    return;
  }
  keys_ = gtk_event_controller_key_new();
  g_object_add_weak_pointer(G_OBJECT(keys_), reinterpret_cast<gpointer*>(&keys_));
  gtk_event_controller_set_propagation_phase(keys_, GTK_PHASE_CAPTURE);
  g_signal_connect(
      keys_, "key-pressed",
      G_CALLBACK(+[](GtkEventController* keys, guint, guint, GdkModifierType, gpointer self) {
        return Guarded([&]() -> gboolean {
          return static_cast<MenuBarControl*>(self)->Key(gtk_event_controller_get_current_event(keys));
        });
      }),
      this);
  gtk_widget_add_controller(GTK_WIDGET(window), keys_);
}

bool MenuBarControl::Key(GdkEvent* event) {
  if (event == nullptr || focus_.InMenus()) {
    return false;
  }
  for (std::size_t index = 0; index < entries_.size(); ++index) {
    const Entry& entry = entries_[index];
    if (entry.keyval == 0 ||
        gdk_key_event_matches(event, entry.keyval, entry.modifiers) != GDK_KEY_MATCH_EXACT) {
      continue;
    }
    if (entry.fieldAction != nullptr && focus_.Field() != nullptr) {
      return false;  // the field does it
    }
    RaiseLater(index);
    return true;
  }
  return false;
}

void MenuBarControl::Chosen(std::size_t index) {
  GtkWidget* field = focus_.Field();
  const char* fieldAction = entries_[index].fieldAction;
  if (fieldAction == nullptr || field == nullptr) {
    RaiseLater(index);
    return;
  }
  g_object_ref(field);
  Glib::signal_idle().connect_once([this, alive = std::weak_ptr<int>(alive_), field, fieldAction] {
    if (!alive.expired()) {
      focus_.Restore();
      gtk_widget_activate_action(field, fieldAction, nullptr);
    }
    g_object_unref(field);
  });
}

void MenuBarControl::RaiseLater(std::size_t index) {
  if (std::exchange(entries_[index].pending, true)) {
    return;
  }
  Glib::signal_idle().connect_once([this, alive = std::weak_ptr<int>(alive_), index] {
    if (alive.expired()) {
      return;
    }
    entries_[index].pending = false;
    CloseMenus();
    focus_.Restore();
    Raise(click_, std::string(entries_[index].name));  // the handler may take this object away
  });
}

}  // namespace kivandra::gtk
