// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gtk/web/web_pages.h"

#include <glib.h>

#include <string_view>

#include "platform/gtk/web/web_address.h"

namespace kivandra::gtk {
namespace {

constexpr char kPlainFrame[] =
    "<!DOCTYPE html><html lang=\"en\"><head><meta charset=\"utf-8\"><title>{{title}}</title></head><body>"
    "<h1>{{title}}</h1><p>{{address}}</p><ul>{{advice}}</ul>{{buttons}}</body></html>";

/// Longest address that is shown.
constexpr std::size_t kShownAddress = 300;

struct Words {
  const char* title;
  const char* advice;
};

Words WordsFor(WebPages::Trouble trouble) {
  switch (trouble) {
    case WebPages::Trouble::NotOpened:
      return {"This page could not be opened",
              "<li>Look at the address: is every letter right?</li>"
              "<li>The page may be asleep. Try again in a little while.</li>"
              "<li>If no page opens at all, ask a grown-up to look at the internet connection.</li>"};
    case WebPages::Trouble::NotTrusted:
      return {"This page is not safe to open",
              "<li>The site could not prove that it is the one it says it is.</li>"
              "<li>Look at the address: is every letter right?</li>"
              "<li>Ask a grown-up if the clock of this computer is right, and choose another page.</li>"};
    case WebPages::Trouble::Stopped:
      return {"This page has stopped",
              "<li>Something on the page went wrong. You did nothing wrong.</li>"
              "<li>Press \"Try again\" to open it once more.</li>"
              "<li>If it stops again, choose another page.</li>"};
    case WebPages::Trouble::NotShown:
      return {"This is not a page",
              "<li>There is a file at this address, and Kivandra doesn't keep files.</li>"
              "<li>Go back and choose something else.</li>"
              "<li>If you need the file, ask a grown-up.</li>"};
  }
  return {"", ""};
}

std::string Escaped(std::string_view text) {
  char* valid = g_utf8_make_valid(text.data(), static_cast<gssize>(text.size()));
  char* escaped = g_markup_escape_text(valid, -1);
  std::string result = escaped;
  g_free(escaped);
  g_free(valid);
  return result;
}

/// The frame with each {{field}} replaced by what `valueOf` gives for its name; what a value holds is never
/// taken for a field.
template <typename ValueOf>
std::string Expand(std::string_view frame, const ValueOf& valueOf) {
  std::string page;
  for (std::size_t open = frame.find("{{"); open != std::string_view::npos; open = frame.find("{{")) {
    const std::size_t close = frame.find("}}", open);
    if (close == std::string_view::npos) break;
    page += frame.substr(0, open);
    page += valueOf(frame.substr(open + 2, close - open - 2));
    frame.remove_prefix(close + 2);
  }
  page += frame;
  return page;
}

}  // namespace

WebPages::WebPages(const std::string& folder) : frame_(kPlainFrame) {
  char* path = g_build_filename(folder.c_str(), "error.html", nullptr);
  char* text = nullptr;
  if (g_file_get_contents(path, &text, nullptr, nullptr) != FALSE) {
    frame_ = text;
    g_free(text);
  }
  g_free(path);
}

std::string WebPages::Page(Trouble trouble, const std::string& address, const std::string& home) const {
  const Words words = WordsFor(trouble);
  std::string buttons;
  // The page stands at the address that failed; a link to it without its fragment is a fresh try, judged like
  // any other.
  if (trouble != Trouble::NotShown && PageMayLoad(address)) {
    buttons +=
        "<a class=\"btn\" href=\"" + Escaped(address.substr(0, address.find('#'))) + "\">Try again</a>";
  }
  if (!home.empty() && PageMayLoad(home)) {
    buttons += "<a class=\"btn quiet\" href=\"" + Escaped(home) + "\">Go home</a>";
  }
  std::string shown = Escaped(std::string_view(address).substr(0, kShownAddress));
  if (address.size() > kShownAddress) shown += "…";

  return Expand(frame_, [&](std::string_view field) -> std::string {
    if (field == "title") return words.title;
    if (field == "advice") return words.advice;
    if (field == "address") return shown;
    if (field == "buttons") return buttons;
    return {};
  });
}

}  // namespace kivandra::gtk
