// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gtk/captions.h"

#include "platform/gtk/utf8_text.h"

namespace kivandra::gtk {
namespace {

/// Every `mark` becomes `other`, a doubled one becomes a single one, and every `other` is doubled.
std::string Exchange(const std::string& text, char mark, char other) {
  std::string result;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == other) {
      result.append(2, other);
    } else if (text[i] != mark) {
      result += text[i];
    } else if (i + 1 < text.size() && text[i + 1] == mark) {
      result += mark;
      ++i;
    } else {
      result += other;
    }
  }
  return result;
}

}  // namespace

Glib::ustring MnemonicOf(const std::string& caption) { return ValidText(Exchange(caption, '&', '_')); }

std::string CaptionOf(const Glib::ustring& mnemonic) { return Exchange(mnemonic.raw(), '_', '&'); }

std::string WordsOfCaption(const std::string& caption) {
  std::string words;
  for (std::size_t i = 0; i < caption.size(); ++i) {
    if (caption[i] == '&' && i + 1 < caption.size()) {
      ++i;
    }
    words += caption[i];
  }
  return words;
}

}  // namespace kivandra::gtk
