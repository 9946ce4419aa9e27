// SPDX-License-Identifier: GPL-3.0-or-later
#include "frame/bars.h"

namespace kivandra {

namespace {

ToolData Above(const char* name, const char* caption, int image, bool enabled = true) {
  return {.name = name,
          .caption = caption,
          .toolTip = {},
          .subBand = {},
          .kind = ToolKind::Button,
          .display = ToolDisplay::ImageAboveText,
          .image = image,
          .enabled = enabled};
}

ToolData Hosted(const char* name, const char* caption) {
  return {.name = name, .caption = caption, .toolTip = {}, .subBand = {}, .kind = ToolKind::Hosted};
}

ToolData Separator(const char* name) {
  return {.name = name, .caption = {}, .toolTip = {}, .subBand = {}, .kind = ToolKind::Separator};
}

}  // namespace

const std::vector<BandData>& BonusBarData() {
  static const std::vector<BandData> bands = {
      {.name = "Bonus Bar",
       .caption = "Bonus Bar",
       .kind = BandKind::ToolBar,
       .childBand = {},
       .tools = {Hosted("AddressBar", "Tool73"),
                 {.name = "btnGo",
                  .caption = "btnGo",
                  .toolTip = {},
                  .subBand = {},
                  .kind = ToolKind::Button,
                  .display = ToolDisplay::Image,
                  .image = 61}},
       .row = 2},
      {.name = "MainBar",
       .caption = "MainBar",
       .kind = BandKind::ToolBar,
       .childBand = {},
       .tools = {Above("Back", "&Back", 51), Above("Forward", "&Forward", 52),
                 Above("Refresh", "&Refresh", 53), Above("Stop", "&Stop", 54), Above("Home", "&Home", 55),
                 Above("Print", "&Print", 56), Above("Lock", "&Lock", 58, false), Separator("Tool68"),
                 Hosted("Spacer", "Spacer"), Hosted("Banner", "Banner"), Hosted("LogoBox", "LogoBox")},
       .row = 1},
      {.name = "SideBar",
       .caption = "SideBar",
       .kind = BandKind::SideBar,
       .childBand = "Subjects",
       .tools = {}},
  };
  return bands;
}

}  // namespace kivandra
