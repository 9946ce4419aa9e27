// SPDX-License-Identifier: GPL-3.0-or-later
// The tools that tell how to use a feature.
#include <array>
#include <string_view>

#include "frame/frm_main.h"
#include "support/attempt.h"

namespace kivandra {
namespace {

struct HelpRow {
  std::string_view name;
  std::string_view text;
};

constexpr std::array<HelpRow, 6> kHelp = {{
    {"How to Use?",
     "Enter a search criteria in the SEARCH box first then use this feature to highlight all occurances of "
     "that item in the current web page"},
    {"DictionaryHelp",
     "This option will render a dictionary definition of the word entered in the Toolbar search box.  This "
     "feature works more effectively with the parental filter OFF"},
    {"SearchTheWeb",
     "This option will search the entire Internet for the search criteria entered in the Toolbar search box"},
    {"SearchbyGroups",
     "This option will search Internet user groups for the search criteria entered in the Toolbar search "
     "box"},
    {"SearchbyImages",
     "This option will search the entire Internet for images based on the search criteria entered in the "
     "Toolbar search box"},
    {"SearchThisSite",
     "This option will search the CURRENT SITE for the search criteria entered in the Toolbar search box.  "
     "Great way to easily find what you are looking for on a site without clicking through all of the "
     "pages!"},
}};

}  // namespace

bool frmMain::ToolHelp(const std::string& name) {
  for (const HelpRow& row : kHelp) {
    if (name == row.name) {
      attempt([&] { services_.boxes.MsgBox(std::string(row.text)); });
      return true;
    }
  }
  return false;
}

}  // namespace kivandra
