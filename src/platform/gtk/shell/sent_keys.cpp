// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gtk/shell/sent_keys.h"

namespace kivandra::gtk {
namespace {

/// Marks "^", "%" or "+" on a key; false for any other character.
bool Hold(SentKey& held, char mark) {
  bool* place = mark == '^' ? &held.control : mark == '%' ? &held.alt : mark == '+' ? &held.shift : nullptr;
  if (place != nullptr) {
    *place = true;
  }
  return place != nullptr;
}

}  // namespace

std::vector<SentKey> ReadSentKeys(const std::string& text) {
  std::vector<SentKey> keys;
  SentKey held;
  bool inGroup = false;
  const auto add = [&](std::string key) {
    SentKey& made = keys.emplace_back(held);
    made.key = std::move(key);
    if (!inGroup) {
      held = {};
    }
  };
  for (std::size_t at = 0; at < text.size(); ++at) {
    const char mark = text[at];
    if (mark == '{') {
      const std::size_t close = text.find('}', at + 2);  // "{}}" is the brace itself
      if (close == std::string::npos) {
        break;
      }
      add(text.substr(at + 1, close - at - 1));
      at = close;
    } else if (mark == '(') {
      inGroup = true;
    } else if (mark == ')') {
      inGroup = false;
      held = {};
    } else if (!Hold(held, mark)) {
      add(std::string(1, mark));
    }
  }
  return keys;
}

}  // namespace kivandra::gtk
