// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gtk/controls/skin_check.h"

#include <glib.h>

#include <algorithm>
#include <array>
#include <map>
#include <string_view>
#include <vector>

#include "platform/platform_error.h"

namespace kivandra::gtk {
namespace {

constexpr std::size_t kMostColours = 256;
constexpr std::size_t kMostMentions = 1000;  // colours that one colour is made of, counted each time
constexpr int kDeepest = 32;                 // parentheses; the toolkit reads each one inside the other
constexpr std::size_t kMostRules = 5000;
constexpr std::ptrdiff_t kMostLetters = std::ptrdiff_t{128} << 10;  // beside comments, texts and pictures
constexpr std::size_t kLongestSelector = 1000;
constexpr std::string_view kBlanks = " \t\r\n";
constexpr std::string_view kDefine = "@define-color ";

constexpr std::array kColours{
    "title_top",   "title_bottom", "title_line", "title_ink", "menu_bg",  "bar_top",   "bar_bottom",
    "bar_line",    "desk",         "status_bg",  "ink",       "ink_soft", "ink_off",   "accent",
    "accent_deep", "accent_ink",   "hot",        "press",     "field",    "field_ink", "field_line",
    "card",        "card_top",     "card_line",  "sel_bg",    "sel_ink",  "focus",     "notice_bg",
    "notice_ink",  "danger",       "shadow",
};

[[noreturn]] void NoSkin(const std::string& why) {
  throw PlatformError(kInvalidCall, "not a skin file: " + why);
}

std::string_view Trimmed(std::string_view text) {
  const std::size_t first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) {
    return {};
  }
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

bool EndsWithUrl(std::string_view text) {
  constexpr std::string_view kUrl = "url(";
  return text.size() >= kUrl.size() &&
         g_ascii_strncasecmp(text.data() + (text.size() - kUrl.size()), kUrl.data(), kUrl.size()) == 0;
}

/// The text without its comments and without what stands in quotes. Comments and quotes are told apart as the
/// toolkit does it, or one could hide a rule in the other.
std::string Bare(std::string_view css) {
  std::string bare;
  bare.reserve(css.size());
  for (std::size_t at = 0; at < css.size(); ++at) {
    const char here = css[at];
    if (here == '\\') {
      NoSkin("an escaped character");  // a name could be spelled in other letters
    } else if (here == '/' && at + 1 < css.size() && css[at + 1] == '*') {
      const std::size_t close = css.find("*/", at + 2);
      if (close == std::string_view::npos) {
        NoSkin("a comment does not end");
      }
      bare.push_back(' ');
      at = close + 1;
    } else if (here == '"' || here == '\'') {
      const std::size_t close = css.find_first_of(here == '"' ? "\"\n\r\f\\" : "'\n\r\f\\", at + 1);
      if (close == std::string_view::npos || css[close] != here) {
        NoSkin("a text in quotes does not end");
      }
      if (EndsWithUrl(bare) && css.compare(at + 1, 5, "data:") != 0) {
        NoSkin("it names another file");
      }
      bare += "\"\"";
      at = close;
    } else {
      bare.push_back(here);
    }
  }
  return bare;
}

void CheckParentheses(std::string_view bare) {
  int depth = 0;
  for (std::size_t at = 0; at < bare.size(); ++at) {
    if (bare[at] == '(') {
      if (++depth > kDeepest) {
        NoSkin("too many parentheses inside each other");
      }
      if (EndsWithUrl(bare.substr(0, at + 1)) && bare.substr(at + 1, 1) != "\"") {
        NoSkin("it names another file");
      }
    } else if (bare[at] == ')') {
      depth = std::max(0, depth - 1);
    }
  }
}

/// The colours of a skin, and what each is made of.
class Colours {
 public:
  void Define(const std::string& name, const std::vector<std::string>& mentions) {
    Colour& colour = colours_[name];
    colour.mentions.insert(colour.mentions.end(), mentions.begin(), mentions.end());
    if (colours_.size() > kMostColours) {
      NoSkin("too many colours");
    }
  }

  void CheckKnown(const std::string& name) const {
    if (colours_.find(name) == colours_.end()) {
      NoSkin("the colour " + name + " is missing");
    }
  }

  /// The toolkit works a colour out anew wherever it is mentioned.
  void CheckMentions() {
    for (auto& [name, colour] : colours_) {
      Cost(colour);
    }
  }

 private:
  struct Colour {
    std::vector<std::string> mentions;
    std::size_t cost = 0;  // 0: not known yet
    bool underway = false;
  };

  std::size_t Cost(Colour& colour) {
    if (colour.cost != 0) {
      return colour.cost;
    }
    if (colour.underway) {
      NoSkin("a colour is made of itself");
    }
    colour.underway = true;
    std::size_t cost = 1;
    for (const std::string& mention : colour.mentions) {
      CheckKnown(mention);
      cost += Cost(colours_[mention]);
      if (cost > kMostMentions) {
        NoSkin("a colour is made of too many others");
      }
    }
    return colour.cost = cost;
  }

  std::map<std::string, Colour> colours_;
};

/// The name at the beginning of a text; only names of our own, which no other sheet has.
std::string OwnName(std::string_view text) {
  const auto end = std::find_if(text.begin(), text.end(),
                                [](char c) { return g_ascii_isalnum(c) == FALSE && c != '_' && c != '-'; });
  const std::string name(text.begin(), end);
  if (!name.starts_with("kv_")) {
    NoSkin("an unknown name behind @");
  }
  return name;
}

std::vector<std::string> Mentions(std::string_view text) {
  std::vector<std::string> names;
  for (std::size_t at = text.find('@'); at != std::string_view::npos; at = text.find('@', at + 1)) {
    names.push_back(OwnName(text.substr(at + 1)));
  }
  return names;
}

/// Every selector of a list hangs below the window's class.
void CheckSelectors(std::string_view list) {
  while (true) {
    const std::size_t comma = list.find(',');
    const std::string_view selector = Trimmed(list.substr(0, comma));
    if (!selector.starts_with(".kv-skin") && !selector.starts_with("window.kv-skin")) {
      NoSkin("a rule reaches beyond the window");
    }
    if (selector.size() > kLongestSelector) {
      NoSkin("a rule for too many widgets inside each other");
    }
    if (comma == std::string_view::npos) {
      return;
    }
    list.remove_prefix(comma + 1);
  }
}

/// A skin dresses its own windows and does nothing else.
void CheckSentences(std::string_view rest) {
  Colours colours;
  std::vector<std::string> mentioned;
  std::size_t rules = 0;
  for (rest = Trimmed(rest); !rest.empty();
       rest.remove_prefix(std::min(rest.find_first_not_of(kBlanks), rest.size()))) {
    if (rest.starts_with('@')) {
      const std::size_t end = rest.find(';');
      if (!rest.starts_with(kDefine) || end == std::string_view::npos) {
        NoSkin("an unknown @-rule, or a colour that does not end");
      }
      const std::string_view sentence = rest.substr(kDefine.size(), end - std::min(end, kDefine.size()));
      const std::string name = OwnName(sentence);
      colours.Define(name, Mentions(sentence.substr(name.size())));
      rest.remove_prefix(end + 1);
      continue;
    }
    const std::size_t open = rest.find('{');
    const std::size_t close = rest.find('}');
    if (open == std::string_view::npos || close == std::string_view::npos || close < open) {
      NoSkin("a rule does not end");
    }
    if (++rules > kMostRules) {
      NoSkin("too many rules");
    }
    CheckSelectors(rest.substr(0, open));
    for (auto& name : Mentions(rest.substr(open, close - open))) {
      mentioned.push_back(std::move(name));
    }
    rest.remove_prefix(close + 1);
  }
  for (const char* colour : kColours) {
    colours.CheckKnown("kv_" + std::string(colour));
  }
  for (const std::string& name : mentioned) {
    colours.CheckKnown(name);
  }
  colours.CheckMentions();
}

}  // namespace

void CheckSkin(const std::string& css) {
  if (g_utf8_validate(css.data(), static_cast<gssize>(css.size()), nullptr) == FALSE) {
    NoSkin("it is no text");
  }
  const std::string bare = Bare(css);
  if (std::count_if(bare.begin(), bare.end(),
                    [](char c) { return kBlanks.find(c) == std::string_view::npos; }) > kMostLetters) {
    NoSkin("too many rules");
  }
  CheckParentheses(bare);
  CheckSentences(bare);
}

}  // namespace kivandra::gtk
