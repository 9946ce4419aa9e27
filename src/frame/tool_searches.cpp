// SPDX-License-Identifier: GPL-3.0-or-later
// The tools that send the text of the search box to a service. Nothing is encoded: the text goes out as it
// was typed.
#include <array>
#include <string_view>

#include "core/site_page.h"
#include "frame/frm_main.h"
#include "frame/site_address.h"
#include "support/attempt.h"

namespace kivandra {
namespace {

enum class Key { Name, Caption };

/// A service's address: what stands before the text, and what stands behind it.
struct SearchRow {
  Key key;
  std::string_view tool;
  std::string_view host;
  std::string_view before;
  std::string_view behind;
};

constexpr std::string_view kSearchThisSite = "dosite";

constexpr std::array<SearchRow, 7> kSearches = {{
    {Key::Name, "doweb", hosts::kWebSearchHost, "/search?q=", ""},
    {Key::Name, kSearchThisSite, hosts::kWebSearchHost, "/search?q=site:", ""},
    {Key::Name, "dogroups", hosts::kGroupsSearchHost, "/groups?q=", ""},
    // The gate stands in front of every page, so the service's own filter is not asked for.
    {Key::Name, "doimages", hosts::kImageSearchHost, "/images?hl=en&safe=off&q=", "&site=images"},
    {Key::Caption, "Yahoo! Quotes", hosts::kYahooQuotesHost, "/q?s=", "&d=v1"},
    {Key::Caption, "MSN Quotes", hosts::kMsnQuotesHost, "/scripts/webquote.dll?ipage=qd&symbol=", ""},
    {Key::Name, "dodictionary", hosts::kDictionaryHost, "/cgi-bin/dict.pl?term=", "&db=*"},
}};

std::string SearchURL(const SearchRow& row, const std::string& text) {
  return PageOf(row.host, row.before) + text + std::string(row.behind);
}

}  // namespace

std::string SiteAddress(std::string_view url) {
  constexpr std::size_t kEndingLength = 4;
  if (const std::size_t at = url.find(".com"); at != std::string_view::npos) {
    return std::string(url.substr(0, at + kEndingLength));
  }
  if (const std::size_t at = url.find(".net"); at != std::string_view::npos) {
    return std::string(url.substr(0, at + kEndingLength + 1));
  }
  // An ending that is not there stands, so to speak, just before the first character.
  const std::size_t at = url.find(".org");
  return std::string(url.substr(0, at == std::string_view::npos ? kEndingLength : at + kEndingLength + 1));
}

std::string frmMain::SearchText() const {
  return BonusBar().Bands("Bonus Bar").Tools("SearchCriteria").Text();
}

void frmMain::ToolSearch(const std::string& name, const std::string& caption) {
  std::string text;
  if (!attempt([&] { text = SearchText(); }) || text.empty()) {
    return;
  }
  for (const SearchRow& row : kSearches) {
    if ((row.key == Key::Name ? name : caption) != row.tool) {
      continue;
    }
    if (row.tool == kSearchThisSite) {
      SearchThisSite(SearchURL(row, ""), text);
    } else {
      SearchInNewWindow(SearchURL(row, text));
    }
    return;
  }
  // kept on purpose: any other click, with something in the search box, opens the sponsor's page.
  attempt([&] { AdvertiseInNewWindow(); });
}

void frmMain::SearchInNewWindow(const std::string& url) {
  attempt([&] { mnuFileNew_Click(); });
  attempt([&] { LoadHTML(url); });
}

void frmMain::SearchThisSite(const std::string& prefix, const std::string& text) {
  const bool done = attempt([&] {
    const std::string site = SiteAddress(HeldChild()->brwWebBrowser().LocationURL());
    mnuFileNew_Click();
    LoadHTML(prefix + site + "+" + text);
  });
  if (!done) {
    attempt([&] { services_.boxes.MsgBox("You must have a website displayed before using this feature."); });
  }
}

}  // namespace kivandra
