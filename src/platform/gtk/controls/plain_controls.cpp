// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gtk/controls/plain_controls.h"

#include "platform/gtk/captions.h"
#include "platform/gtk/guard.h"
#include "platform/gtk/utf8_text.h"

namespace kivandra::gtk {

ButtonControl::ButtonControl(Gtk::Button& button) : WidgetControl(button) {
  button.signal_clicked().connect([this] { Raise(click_); });
}

std::string ButtonControl::Caption() const {
  return CaptionOf(dynamic_cast<Gtk::Button&>(Widget()).get_label());
}

void ButtonControl::SetCaption(const std::string& caption) {
  auto& button = dynamic_cast<Gtk::Button&>(Widget());
  button.set_label(MnemonicOf(caption));
  // The toolkit would have the words read out twice: for the button and for the label in it.
  gtk_accessible_reset_property(GTK_ACCESSIBLE(button.gobj()), GTK_ACCESSIBLE_PROPERTY_LABEL);
}

void ButtonControl::OnClick(std::function<void()> handler) { Alive(), click_ = std::move(handler); }

void ButtonControl::LetGo() {
  click_ = nullptr;
  WidgetControl::LetGo();
}

void KeptText::Set(Gtk::Label& label, const std::string& text) {
  if (text != text_) {
    text_ = text;
    label.set_text(ShownText(text));
  }
}

LabelControl::LabelControl(Gtk::Label& label) : WidgetControl(label), text_(label) {}

std::string LabelControl::Caption() const { return Alive(), text_.Get(); }

void LabelControl::SetCaption(const std::string& caption) {
  text_.Set(dynamic_cast<Gtk::Label&>(Widget()), caption);
}

StatusBarControl::StatusBarControl(Gtk::Label& label) : WidgetControl(label), text_(label) {}

std::string StatusBarControl::Text() const { return Alive(), text_.Get(); }

void StatusBarControl::SetText(const std::string& text) {
  text_.Set(dynamic_cast<Gtk::Label&>(Widget()), text);
}

void StatusBarControl::SetPanelText(const std::string& key, const std::string& text) {
  if (key != "TEXT") {
    throw PlatformError(kInvalidCall, "the status bar has no panel " + key);
  }
  SetText(text);
}

}  // namespace kivandra::gtk
