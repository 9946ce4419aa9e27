// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gtk/controls/skin_sheet.h"

#include <array>
#include <fstream>
#include <map>
#include <string_view>

#include "platform/platform_error.h"

namespace kivandra::gtk {
namespace {

constexpr std::size_t kLargestSheet = std::size_t{4} << 20U;
// A child window lies in a skinned window and yet looks its own way, so the fixed sheet has the last word.
constexpr unsigned kDefaultPriority = GTK_STYLE_PROVIDER_PRIORITY_APPLICATION;
constexpr unsigned kSkinPriority = kDefaultPriority + 1;
constexpr unsigned kFixedPriority = kSkinPriority + 1;

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

std::string WithoutComments(const std::string& css) {
  std::string bare;
  bare.reserve(css.size());
  std::size_t from = 0;
  for (std::size_t open = css.find("/*"); open != std::string::npos; open = css.find("/*", from)) {
    bare.append(css, from, open - from).push_back(' ');
    const std::size_t close = css.find("*/", open + 2);
    if (close == std::string::npos) {
      NoSkin("a comment does not end");
    }
    from = close + 2;
  }
  return bare.append(css, from);
}

std::string_view Trimmed(std::string_view text) {
  const std::size_t first = text.find_first_not_of(" \t\r\n");
  if (first == std::string_view::npos) {
    return {};
  }
  return text.substr(first, text.find_last_not_of(" \t\r\n") - first + 1);
}

/// Every selector of a list hangs below the window's class.
void CheckSelectors(std::string_view list) {
  while (true) {
    const std::size_t comma = list.find(',');
    const std::string_view selector = Trimmed(list.substr(0, comma));
    if (!selector.starts_with(".kv-skin") && !selector.starts_with("window.kv-skin")) {
      NoSkin("a rule reaches beyond the window");
    }
    if (comma == std::string_view::npos) {
      return;
    }
    list.remove_prefix(comma + 1);
  }
}

/// A skin dresses its own windows and does nothing else.
void CheckHarmless(const std::string& bare) {
  std::size_t at = 0;
  while (!Trimmed(std::string_view(bare).substr(at)).empty()) {
    at = bare.find_first_not_of(" \t\r\n", at);
    if (bare[at] == '@') {
      if (bare.compare(at, 14, "@define-color ") != 0) {
        NoSkin("an unknown @-rule");
      }
      at = bare.find(';', at);
      if (at == std::string::npos) {
        NoSkin("a colour does not end");
      }
      ++at;
      continue;
    }
    const std::size_t open = bare.find('{', at);
    const std::size_t close = bare.find('}', at);
    if (open == std::string::npos || close == std::string::npos || close < open) {
      NoSkin("a rule does not end");
    }
    CheckSelectors(std::string_view(bare).substr(at, open - at));
    at = close + 1;
  }
  for (std::size_t url = bare.find("url("); url != std::string::npos; url = bare.find("url(", url + 1)) {
    if (bare.compare(url, 10, "url(\"data:") != 0) {
      NoSkin("it names another file");
    }
  }
}

void CheckSkin(const std::string& css) {
  if (!g_utf8_validate(css.data(), static_cast<gssize>(css.size()), nullptr)) {
    NoSkin("it is no text");
  }
  const std::string bare = WithoutComments(css);
  CheckHarmless(bare);
  for (const char* colour : kColours) {
    if (bare.find("@define-color kv_" + std::string(colour) + " ") == std::string::npos) {
      NoSkin("the colour " + std::string(colour) + " is missing");
    }
  }
}

std::string Replaced(std::string text, std::string_view what, std::string_view with) {
  for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + with.size())) {
    text.replace(at, what.size(), with);
  }
  return text;
}

/// Gives class and colours of a sheet the number of their dress. A `data:` address can't hold either word by
/// chance: its base64 has neither "-" nor "_".
std::string Numbered(std::string css, const std::string& number) {
  css = Replaced(std::move(css), "kv-skin", "kv-skin-" + number);
  css = Replaced(std::move(css), "@kv_", "@kv" + number + "_");
  return Replaced(std::move(css), "@define-color kv_", "@define-color kv" + number + "_");
}

/// A provider for the text; throws PlatformError at its first error.
Glib::RefPtr<Gtk::CssProvider> Parsed(const std::string& css) {
  auto provider = Gtk::CssProvider::create();
  std::string error;
  auto connection = provider->signal_parsing_error().connect(
      [&error](const Glib::RefPtr<const Gtk::CssSection>&, const Glib::Error& what) {
        if (error.empty()) {
          error = what.what();
        }
      });
  provider->load_from_data(css);
  connection.disconnect();
  if (!error.empty()) {
    throw PlatformError(kInvalidCall, "broken style sheet: " + error);
  }
  return provider;
}

std::map<std::string, std::weak_ptr<SkinSheet>>& Worn() {
  static std::map<std::string, std::weak_ptr<SkinSheet>> worn;  // by the skin file's content
  return worn;
}

}  // namespace

std::string ReadSheet(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::string text(kLargestSheet + 1, '\0');
  if (!file.read(text.data(), static_cast<std::streamsize>(text.size())) && !file.eof()) {
    throw PlatformError(53, "can't read " + path);
  }
  text.resize(static_cast<std::size_t>(file.gcount()));
  if (text.size() > kLargestSheet) {
    throw PlatformError(kInvalidCall, "too large for a style sheet: " + path);
  }
  return text;
}

void LoadProgramSheet(const std::string& path, ProgramSheet kind) {
  Gtk::StyleContext::add_provider_for_display(
      Gdk::Display::get_default(), Parsed(ReadSheet(path)),
      kind == ProgramSheet::Fixed ? kFixedPriority : kDefaultPriority);
}

std::shared_ptr<SkinSheet> SkinSheet::Load(const std::string& skinFile, const std::string& structure) {
  const std::string skin = ReadSheet(skinFile);
  std::erase_if(Worn(), [](const auto& each) { return each.second.expired(); });
  if (const auto found = Worn().find(skin); found != Worn().end()) {
    return found->second.lock();
  }
  CheckSkin(skin);
  std::shared_ptr<SkinSheet> sheet(new SkinSheet(skin, structure));
  Worn()[skin] = sheet;
  return sheet;
}

SkinSheet::SkinSheet(const std::string& skin, const std::string& structure) {
  static int count = 0;
  const std::string number = std::to_string(++count);
  provider_ = Parsed(Numbered(structure + "\n" + skin, number));
  cssClass_ = "kv-skin-" + number;
  Gtk::StyleContext::add_provider_for_display(Gdk::Display::get_default(), provider_, kSkinPriority);
}

SkinSheet::~SkinSheet() {
  if (const auto display = Gdk::Display::get_default()) {
    Gtk::StyleContext::remove_provider_for_display(display, provider_);
  }
}

}  // namespace kivandra::gtk
