// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gtk/controls/editable_text.h"

#include "platform/gtk/utf8_text.h"

namespace kivandra::gtk {
namespace {

// An entry lays its text out as one line; beyond this it would be felt.
constexpr std::size_t kEntryCharacters = 8192;

}  // namespace

EditableText::EditableText(GtkEditable* entry) : entry_(entry) {
  g_signal_connect(entry, "changed", G_CALLBACK(Changed), this);
}

std::string EditableText::Get() const { return whole_ ? *whole_ : gtk_editable_get_text(entry_); }

void EditableText::Set(const std::string& text) {
  setting_ = true;
  gtk_editable_set_text(entry_, ShownText(text, kEntryCharacters).c_str());
  setting_ = false;
  whole_ = text;
}

void EditableText::Changed(GtkEditable*, gpointer self) {
  auto* text = static_cast<EditableText*>(self);
  if (!text->setting_) {
    text->whole_.reset();
  }
}

}  // namespace kivandra::gtk
