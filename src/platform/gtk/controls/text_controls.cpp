// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gtk/controls/text_controls.h"

#include "platform/gtk/guard.h"
#include "platform/gtk/utf8_text.h"

namespace kivandra::gtk {

namespace {

/// The drop-down button, which has no name of its own.
void NameListButton(GtkWidget* inside) {
  for (GtkWidget* child = gtk_widget_get_first_child(inside); child != nullptr;
       child = gtk_widget_get_next_sibling(child)) {
    if (GTK_IS_TOGGLE_BUTTON(child)) {
      gtk_accessible_update_property(GTK_ACCESSIBLE(child), GTK_ACCESSIBLE_PROPERTY_LABEL, "Show the list",
                                     -1);
    } else {
      NameListButton(child);
    }
  }
}

/// A long item ends in an ellipsis in the list; the field shows the whole of it.
void ShortenItems(Gtk::ComboBoxText& combo) {
  constexpr int kWidestItem = 48;  // characters
  for (Gtk::CellRenderer* cell : combo.get_cells()) {
    if (auto* text = dynamic_cast<Gtk::CellRendererText*>(cell)) {
      text->property_ellipsize() = Pango::EllipsizeMode::END;
      text->property_max_width_chars() = kWidestItem;
    }
  }
}

}  // namespace

TextBoxControl::TextBoxControl(Gtk::Widget& entry)
    : WidgetControl(entry), text_(GTK_EDITABLE(entry.gobj())), keys_(entry) {}

std::string TextBoxControl::Text() const { return Alive(), text_.Get(); }

void TextBoxControl::SetText(const std::string& text) { Alive(), text_.Set(text); }

void TextBoxControl::SetBackColor(SystemColor color) {
  Alive();
  if (color == SystemColor::Disabled) {
    Widget().add_css_class("kv-disabled-ground");
  } else {
    Widget().remove_css_class("kv-disabled-ground");
  }
}

void TextBoxControl::OnKeyDown(KeyHandler handler) { Alive(), keys_.SetHandler(std::move(handler)); }

void TextBoxControl::LetGo() {
  keys_.SetHandler({});
  WidgetControl::LetGo();
}

ComboBoxControl::ComboBoxControl(Gtk::ComboBoxText& combo)
    : WidgetControl(combo),
      text_(GTK_EDITABLE(gtk_combo_box_get_child(combo.Gtk::ComboBox::gobj()))),
      keys_(*combo.get_child()) {  // the field alone: in the list Enter chooses an item
  combo.signal_changed().connect([this] { Chosen(); });
  combo.property_popup_shown().signal_changed().connect([this] {
    if (Combo().property_popup_shown()) {
      Select(-1);  // so that the item chosen before can be chosen again
    }
  });
  NameListButton(combo.Gtk::Widget::gobj());
  ShortenItems(combo);
  auto clicks = Gtk::GestureClick::create();
  clicks->set_propagation_phase(Gtk::PropagationPhase::CAPTURE);
  clicks->signal_pressed().connect([this](int times, double, double) {
    if (times == 2) {
      Raise(dblClick_);
    }
  });
  combo.get_child()->add_controller(clicks);
}

Gtk::ComboBoxText& ComboBoxControl::Combo() const { return dynamic_cast<Gtk::ComboBoxText&>(Widget()); }

void ComboBoxControl::SetFocus() { Combo().get_child()->grab_focus(); }

std::string ComboBoxControl::Text() const { return Alive(), text_.Get(); }

void ComboBoxControl::SetText(const std::string& text) {
  Select(-1);
  text_.Set(text);
}

int ComboBoxControl::ListCount() const { return Alive(), static_cast<int>(items_.size()); }

std::string ComboBoxControl::List(int index) const { return items_[Checked(index, items_.size())]; }

void ComboBoxControl::AddItem(const std::string& text, int index) {
  const std::size_t place = Checked(index, items_.size() + 1);
  // Not through the wrapper, which turns an empty text into none at all.
  gtk_combo_box_text_insert_text(Combo().gobj(), index, ShownText(text).c_str());
  items_.insert(items_.begin() + static_cast<std::ptrdiff_t>(place), text);
}

void ComboBoxControl::RemoveItem(int index) {
  const std::size_t place = Checked(index, items_.size());
  Select(-1);
  Combo().remove_text(index);
  items_.erase(items_.begin() + static_cast<std::ptrdiff_t>(place));
}

void ComboBoxControl::SetListIndex(int index) {
  const std::string text = items_[Checked(index, items_.size())];
  Select(index);
  text_.Set(text);
}

void ComboBoxControl::OnKeyDown(KeyHandler handler) { Alive(), keys_.SetHandler(std::move(handler)); }

void ComboBoxControl::OnDblClick(std::function<void()> handler) { Alive(), dblClick_ = std::move(handler); }

void ComboBoxControl::OnClick(std::function<void()> handler) { Alive(), click_ = std::move(handler); }

void ComboBoxControl::LetGo() {
  keys_.SetHandler({});
  dblClick_ = nullptr;
  click_ = nullptr;
  WidgetControl::LetGo();
}

std::size_t ComboBoxControl::Checked(int index, std::size_t end) const {
  Alive();
  if (index < 0 || static_cast<std::size_t>(index) >= end) {
    throw PlatformError(kInvalidCall, "the list has no such item");
  }
  return static_cast<std::size_t>(index);
}

void ComboBoxControl::Select(int index) {
  Gtk::ComboBoxText& combo = Combo();
  const bool before = std::exchange(selecting_, true);
  combo.set_active(index);
  selecting_ = before;
}

void ComboBoxControl::Chosen() {
  Guarded([this] {
    const int index = Combo().get_active_row_number();
    if (selecting_ || index < 0) {
      return;
    }
    text_.Set(List(index));
    Raise(click_);
  });
}

}  // namespace kivandra::gtk
