// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gtk/utf8_text.h"

#include <glib.h>

#include <memory>

namespace kivandra::gtk {
namespace {

constexpr std::size_t kBytesPerCharacter = 4;  // at most, in UTF-8

struct FreeText {
  void operator()(char* text) const { g_free(text); }
};

std::unique_ptr<char, FreeText> Valid(const std::string& text) {
  return std::unique_ptr<char, FreeText>(g_utf8_make_valid(text.data(), static_cast<gssize>(text.size())));
}

}  // namespace

Glib::ustring ValidText(const std::string& text) {
  // g_utf8_make_valid replaces NUL characters as it does invalid bytes.
  return Glib::ustring(Valid(text).get());
}

Glib::ustring ShownText(const std::string& text, std::size_t characters) {
  // Cut the bytes first: a long text must not be walked whole for what nobody sees.
  const std::string head = text.substr(0, (characters + 1) * kBytesPerCharacter);
  Glib::ustring shown(Valid(head).get());
  if (shown.size() > characters || head.size() < text.size()) {
    shown.resize(std::min(shown.size(), characters));
    shown += "\u2026";
  }
  return shown;
}

}  // namespace kivandra::gtk
