// SPDX-License-Identifier: GPL-3.0-or-later
// The tools that lead to one site each. The first eight have no tool on the bars: kept on purpose, ready for
// one of that name. The last four are the side bar's subjects.
#include <array>
#include <string_view>

#include "core/site_page.h"
#include "frame/frm_main.h"
#include "support/attempt.h"

namespace kivandra {
namespace {

struct LinkRow {
  std::string_view name;
  std::string_view host;
  std::string_view path;
};

constexpr std::array<LinkRow, 12> kLinks = {{
    {"News", hosts::kYahooligansHost, "/content/news/"},
    {"Yahooligans", hosts::kYahooligansHost, ""},
    {"Homework", hosts::kHomeworkHost, "/"},
    {"Fun Stuff", hosts::kBeritsHost, "/"},
    {"Shrek", hosts::kShrekHost, "/"},
    {"Barney", hosts::kBarneyHost, "/"},
    {"Disney", hosts::kDisneyHost, "/"},
    {"Sesame Street", hosts::kSesameStreetHost, "/"},
    {"Math", hosts::kMathHost, "/"},
    {"Social Studies", hosts::kSocialStudiesHost, ""},
    {"Science", hosts::kScienceHost, ""},
    {"Language", hosts::kLanguageHost, ""},
}};

}  // namespace

bool frmMain::ToolLink(const std::string& name) {
  for (const LinkRow& row : kLinks) {
    if (name == row.name) {
      // Nothing guards these commands: what fails is told.
      try {
        LoadHTML(PageOf(row.host, row.path));
      } catch (const PlatformError& error) {
        attempt([&] { TellError(error); });
      }
      return true;
    }
  }
  return false;
}

}  // namespace kivandra
