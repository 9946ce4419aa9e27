// SPDX-License-Identifier: GPL-3.0-or-later
// A tool to type into, with a button that opens its drop-down.
#include "platform/gtk/bars/bar_tool.h"
#include "platform/gtk/bars/tool_face.h"
#include "platform/gtk/captions.h"
#include "platform/gtk/controls/widget_control.h"
#include "platform/gtk/utf8_text.h"

namespace kivandra::gtk {

Gtk::Widget* ToolView::MakeEdit() {
  auto* box = Gtk::make_managed<Gtk::Box>();
  box->add_css_class("kv-joined");
  entry_ = Gtk::make_managed<Gtk::Entry>();
  entry_->set_placeholder_text(ShownText(WordsOfCaption(data_.caption)));
  entry_->set_width_chars(1);
  entry_->set_max_width_chars(1);
  entry_->set_hexpand(true);
  const std::string name = AccessibleNameOf(data_, {});
  SetAccessibleName(*entry_, name);
  box->append(*entry_);
  if (!data_.subBand.empty()) {
    chevron_ = Gtk::make_managed<Gtk::Button>();
    chevron_->set_icon_name("chevron-down-symbolic");
    chevron_->set_focus_on_click(false);
    SetAccessibleName(*chevron_, name + " choices");
    MarkOpener(*chevron_);
    chevron_->signal_clicked().connect([this] { Activated(); });
    box->append(*chevron_);
  }
  if (data_.width > 0) {
    box->set_size_request(static_cast<int>(data_.width / kTwipsPerPixel), -1);
  }
  if (!data_.toolTip.empty()) {
    box->set_tooltip_text(ShownText(data_.toolTip));
  }
  widget_ = box;
  WatchEdit();
  return box;
}

void ToolView::WatchEdit() {
  if (chevron_ != nullptr) {
    // From inside the box the list of choices opens without a click on the tool: the text is about to be
    // used.
    entry_->signal_activate().connect([this] { Open(false); });
    // On the two parts, not on the box: the drop-down hangs on the box and has keys of its own.
    for (Gtk::Widget* part : {static_cast<Gtk::Widget*>(entry_), static_cast<Gtk::Widget*>(chevron_)}) {
      auto keys = Gtk::EventControllerKey::create();
      keys->set_propagation_phase(Gtk::PropagationPhase::CAPTURE);
      keys->signal_key_pressed().connect(
          [this](unsigned keyval, unsigned, Gdk::ModifierType) {
            if (keyval != GDK_KEY_Down && keyval != GDK_KEY_KP_Down) {
              return false;
            }
            Open(false);
            return true;
          },
          false);
      part->add_controller(keys);
    }
  }
  // The window's focus is watched, not the box's: the box also loses the keyboard to its own drop-down and
  // while the window rests, and coming back from there is no going in.
  widget_->property_root().signal_changed().connect([this] {
    focus_.disconnect();
    if (auto* window = widget_ != nullptr ? dynamic_cast<Gtk::Window*>(widget_->get_root()) : nullptr) {
      focus_ =
          window->property_focus_widget().signal_changed().connect([this, window] { FocusMoved(*window); });
    }
  });
}

void ToolView::FocusMoved(Gtk::Window& window) {
  Gtk::Widget* focus = window.get_focus();
  if (focus == nullptr || host_ == nullptr) {
    return;
  }
  const auto hold = shared_from_this();
  if (focus == entry_ || focus->is_ancestor(*entry_)) {
    if (!std::exchange(entered_, true)) {
      host_->Entered(*this);
    }
  } else if (!focus->is_ancestor(*widget_)) {
    entered_ = false;
  }
}

Gtk::Widget* ToolView::KeyboardPlace() const {
  if (entry_ == nullptr) {
    return widget_;
  }
  return entered_ || chevron_ == nullptr ? static_cast<Gtk::Widget*>(entry_) : chevron_;
}

void ToolView::ShowOpen(bool open) {
  if (Gtk::Widget* face = chevron_ != nullptr ? chevron_ : widget_) {
    MarkOpen(*face, open);
  }
}

std::string ToolView::Text() const {
  (void)Host();
  return entry_ != nullptr ? entry_->get_text().raw() : std::string();
}

void ToolView::SetText(const std::string& text) {
  (void)Host();
  if (entry_ != nullptr) {
    entry_->set_text(ValidText(text));
  }
}

}  // namespace kivandra::gtk
