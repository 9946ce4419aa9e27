// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gtk/controls/control_factory.h"

#include "platform/calendar.h"
#include "platform/check_box.h"
#include "platform/common_dialog.h"
#include "platform/gtk/bars/bar_view.h"
#include "platform/gtk/controls/calendar_control.h"
#include "platform/gtk/controls/check_box_control.h"
#include "platform/gtk/controls/common_dialog.h"
#include "platform/gtk/controls/mdi_client_control.h"
#include "platform/gtk/controls/page_view_control.h"
#include "platform/gtk/controls/plain_controls.h"
#include "platform/gtk/controls/rich_text_box_control.h"
#include "platform/gtk/controls/skin_control.h"
#include "platform/gtk/controls/text_controls.h"
#include "platform/gtk/controls/timer_control.h"
#include "platform/gtk/controls/tree_view_control.h"
#include "platform/gtk/forms/form_base.h"
#include "platform/gtk/forms/form_loader.h"
#include "platform/gtk/menus/menu_bar_control.h"
#include "platform/menu_bar.h"
#include "platform/rich_text_box.h"
#include "platform/tree_view.h"

namespace kivandra::gtk {
namespace {

[[noreturn]] void NoControl(const FormBase& form, const std::string& name) {
  throw PlatformError(kObjectNotSet, form.Name() + " has no such control: " + name);
}

/// The object as a widget of the wanted type, or null.
template <typename Widget>
Widget* As(GObject* object) {
  return GTK_IS_WIDGET(object) ? dynamic_cast<Widget*>(Glib::wrap(GTK_WIDGET(object))) : nullptr;
}

std::unique_ptr<Control> MakeText(GObject* object) {
  auto* widget = As<Gtk::Widget>(object);
  const bool isEntry = widget != nullptr && (GTK_IS_ENTRY(object) || GTK_IS_PASSWORD_ENTRY(object));
  return isEntry ? std::make_unique<TextBoxControl>(*widget) : nullptr;
}

template <typename Wrapper, typename Widget>
std::unique_ptr<Control> Make(GObject* object) {
  auto* widget = As<Widget>(object);
  return widget != nullptr ? std::make_unique<Wrapper>(*widget) : nullptr;
}

std::unique_ptr<Control> MakeBars(GObject* object, const Glib::RefPtr<Gtk::Builder>& builder,
                                  const std::string& name, FormLoader& loader) {
  auto* top = As<Gtk::Box>(object);
  auto* side = As<Gtk::Box>(gtk_builder_get_object(builder->gobj(), (name + "_Side").c_str()));
  if (top == nullptr || side == nullptr) {
    return nullptr;
  }
  return std::make_unique<BarView>(*top, *side, loader.AssetsDirectory() + "/icons");
}

}  // namespace

std::unique_ptr<Control> MakeControl(FormBase& form, FormLoader& loader,
                                     const Glib::RefPtr<Gtk::Builder>& builder, const std::string& name,
                                     ControlKind kind) {
  GObject* object = gtk_builder_get_object(builder->gobj(), name.c_str());
  if (object == nullptr) {
    NoControl(form, name);
  }
  std::unique_ptr<Control> control;
  switch (kind) {
    case ControlKind::BarControl:
      control = MakeBars(object, builder, name, loader);
      break;
    case ControlKind::Button:
      control = Make<ButtonControl, Gtk::Button>(object);
      break;
    case ControlKind::Calendar:
      control = Make<CalendarControl, Gtk::Calendar>(object);
      break;
    case ControlKind::CheckBox:
      control = Make<CheckBoxControl, Gtk::CheckButton>(object);
      break;
    case ControlKind::CommonDialog:
      if (IsCommonDialog(object)) {
        control = std::make_unique<CommonDialogControl>(form.Dress());
      }
      break;
    case ControlKind::ComboBox:
      control = Make<ComboBoxControl, Gtk::ComboBoxText>(object);
      break;
    case ControlKind::Label:
      control = Make<LabelControl, Gtk::Label>(object);
      break;
    case ControlKind::MdiClient:
      if (auto* place = As<Gtk::Box>(object); place != nullptr && loader.Area() != nullptr) {
        control = std::make_unique<MdiClientControl>(*place, *loader.Area());
      }
      break;
    case ControlKind::MenuBar:
      if (auto* place = As<Gtk::Box>(object)) {
        control = std::make_unique<MenuBarControl>(*place);
      }
      break;
    case ControlKind::PageView:
      if (auto* place = As<Gtk::Box>(object)) {
        control = std::make_unique<PageViewControl>(*place, loader.Engine());
      }
      break;
    case ControlKind::PictureBox:
      if (auto* box = As<Gtk::Box>(object)) {
        control = std::make_unique<PictureBoxControl>(*box);
      }
      break;
    case ControlKind::RichTextBox:
      control = Make<RichTextBoxControl, Gtk::TextView>(object);
      break;
    case ControlKind::SkinForm:
      if (IsSkin(object)) {
        control = std::make_unique<SkinControl>(form.Dress(), loader.Structure());
      }
      break;
    case ControlKind::StatusBar:
      control = Make<StatusBarControl, Gtk::Label>(object);
      break;
    case ControlKind::TextBox:
      control = MakeText(object);
      break;
    case ControlKind::Timer:
      if (IsTimer(object)) {
        control = std::make_unique<TimerControl>(object);
      }
      break;
    case ControlKind::TreeView:
      control = Make<TreeViewControl, Gtk::ListView>(object);
      break;
    case ControlKind::WebBrowser:
      if (auto* place = As<Gtk::Box>(object)) {
        control = loader.Engine().MakeBrowser(*place);
      }
      break;
  }
  if (!control) {
    NoControl(form, name);
  }
  return control;
}

bool IsKind(Control& control, ControlKind kind) {
  switch (kind) {
    case ControlKind::BarControl:
      return dynamic_cast<BarControl*>(&control) != nullptr;
    case ControlKind::Button:
      return dynamic_cast<Button*>(&control) != nullptr;
    case ControlKind::Calendar:
      return dynamic_cast<Calendar*>(&control) != nullptr;
    case ControlKind::CheckBox:
      return dynamic_cast<CheckBox*>(&control) != nullptr;
    case ControlKind::CommonDialog:
      return dynamic_cast<CommonDialog*>(&control) != nullptr;
    case ControlKind::MenuBar:
      return dynamic_cast<MenuBar*>(&control) != nullptr;
    case ControlKind::RichTextBox:
      return dynamic_cast<RichTextBox*>(&control) != nullptr;
    case ControlKind::ComboBox:
      return dynamic_cast<ComboBox*>(&control) != nullptr;
    case ControlKind::Label:
      return dynamic_cast<Label*>(&control) != nullptr;
    case ControlKind::MdiClient:
      return dynamic_cast<MdiClient*>(&control) != nullptr;
    case ControlKind::PageView:
      return dynamic_cast<PageView*>(&control) != nullptr;
    case ControlKind::PictureBox:
      return dynamic_cast<PictureBox*>(&control) != nullptr;
    case ControlKind::SkinForm:
      return dynamic_cast<SkinForm*>(&control) != nullptr;
    case ControlKind::StatusBar:
      return dynamic_cast<StatusBar*>(&control) != nullptr;
    case ControlKind::TextBox:
      return dynamic_cast<TextBox*>(&control) != nullptr;
    case ControlKind::Timer:
      return dynamic_cast<Timer*>(&control) != nullptr;
    case ControlKind::TreeView:
      return dynamic_cast<TreeView*>(&control) != nullptr;
    case ControlKind::WebBrowser:
      return dynamic_cast<WebBrowser*>(&control) != nullptr;
  }
  return false;
}

}  // namespace kivandra::gtk
