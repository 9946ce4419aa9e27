// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gtk/forms/title_bar.h"

#include "platform/gtk/controls/picture.h"
#include "platform/gtk/guard.h"
#include "platform/gtk/utf8_text.h"

namespace kivandra::gtk {
namespace {

constexpr int kMarkSize = 20;
constexpr std::size_t kToolTipCharacters = 1000;
// The one caption that is shown on a slip of warm paper.
constexpr const char* kNotice = "Possible Adult Content Has Been Detected.  Page will not be displayed.";

Gtk::Button* MaximiseButton(Gtk::Window& window) {
  Gtk::Button* button = NewWindowButton("win-maximise-symbolic", "Maximise");
  button->signal_clicked().connect([&window] {
    if (window.is_maximized()) {
      window.unmaximize();
    } else {
      window.maximize();
    }
  });
  window.property_maximized().signal_changed().connect([&window, button] {
    const bool maximised = window.is_maximized();
    DressWindowButton(*button, maximised ? "win-restore-symbolic" : "win-maximise-symbolic",
                      maximised ? "Restore" : "Maximise");
  });
  return button;
}

}  // namespace

Gtk::Button* NewWindowButton(const char* symbol, const char* name) {
  auto* button = Gtk::make_managed<Gtk::Button>();
  button->add_css_class("kv-winbtn");
  button->set_valign(Gtk::Align::CENTER);
  button->set_focus_on_click(false);
  DressWindowButton(*button, symbol, name);
  return button;
}

void DressWindowButton(Gtk::Button& button, const char* symbol, const char* name) {
  button.set_icon_name(symbol);
  gtk_accessible_update_property(GTK_ACCESSIBLE(button.gobj()), GTK_ACCESSIBLE_PROPERTY_LABEL, name, -1);
}

TitleBar::TitleBar(Gtk::Window& window, std::function<void()> onClose)
    : title_(Gtk::make_managed<Gtk::Label>()) {
  auto* handle = Gtk::make_managed<Gtk::WindowHandle>();
  handle->add_css_class("kv-titlebar");
  auto* box = Gtk::make_managed<Gtk::Box>();
  handle->set_child(*box);

  gtk_box_append(box->gobj(), NewPicture("mascot/kiv-mark.svg", kMarkSize, kMarkSize));
  title_->add_css_class("kv-title");
  title_->set_ellipsize(Pango::EllipsizeMode::END);
  title_->set_halign(Gtk::Align::START);
  title_->set_valign(Gtk::Align::CENTER);
  title_->set_hexpand(true);
  box->append(*title_);

  if (window.get_resizable()) {
    Gtk::Button* minimise = NewWindowButton("win-minimise-symbolic", "Minimise");
    minimise->signal_clicked().connect([&window] { window.minimize(); });
    box->append(*minimise);
    box->append(*MaximiseButton(window));
  }
  Gtk::Button* close = NewWindowButton("win-close-symbolic", "Close");
  close->add_css_class("kv-close");
  close->signal_clicked().connect([onClose = std::move(onClose)] { Raise(onClose); });
  box->append(*close);
  window.set_titlebar(*handle);
}

void TitleBar::SetCaption(const std::string& caption) {
  title_->set_text(ShownText(caption));
  title_->set_tooltip_text(ShownText(caption, kToolTipCharacters));
  if (caption == kNotice) {
    title_->add_css_class("kv-notice");
  } else {
    title_->remove_css_class("kv-notice");
  }
}

}  // namespace kivandra::gtk
