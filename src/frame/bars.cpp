// SPDX-License-Identifier: GPL-3.0-or-later
#include "frame/bars.h"

#include <utility>

namespace kivandra {

namespace {

constexpr Twips kTwipsPerPixel = 15;

ToolData ToolOf(ToolKind kind, ToolDisplay display, const char* name, const char* caption) {
  ToolData tool;
  tool.kind = kind;
  tool.display = display;
  tool.name = name;
  tool.caption = caption;
  return tool;
}

/// A button with its picture above its words.
ToolData Above(const char* name, const char* caption, int image, bool enabled = true) {
  ToolData tool = ToolOf(ToolKind::Button, ToolDisplay::ImageAboveText, name, caption);
  tool.image = image;
  tool.enabled = enabled;
  return tool;
}

/// A button with its picture beside its words.
ToolData Beside(const char* name, const char* caption, int image, const char* subBand = "",
                const char* toolTip = "") {
  ToolData tool = ToolOf(ToolKind::Button, ToolDisplay::ImageAndText, name, caption);
  tool.image = image;
  tool.subBand = subBand;
  tool.toolTip = toolTip;
  return tool;
}

/// A row of a drop-down whose caption is its name.
ToolData Row(const char* name, int image, const char* subBand = "", const char* toolTip = "") {
  return Beside(name, name, image, subBand, toolTip);
}

/// A button that shows its picture alone.
ToolData Picture(const char* name, const char* caption, int image, const char* toolTip = "",
                 int widthInPixels = -1) {
  ToolData tool = ToolOf(ToolKind::Button, ToolDisplay::Image, name, caption);
  tool.image = image;
  tool.toolTip = toolTip;
  tool.width = widthInPixels < 0 ? -1 : widthInPixels * kTwipsPerPixel;
  return tool;
}

/// A button that shows its words alone.
ToolData Words(const char* name) { return ToolOf(ToolKind::Button, ToolDisplay::Text, name, name); }

/// A box to type in, with a drop-down behind it.
ToolData Edit(const char* name, const char* caption, int widthInPixels, const char* subBand,
              const char* toolTip) {
  ToolData tool = ToolOf(ToolKind::Edit, ToolDisplay::Text, name, caption);
  tool.width = widthInPixels * kTwipsPerPixel;
  tool.subBand = subBand;
  tool.toolTip = toolTip;
  return tool;
}

/// A gap in which a control of the frame sits.
ToolData Hosted(const char* name, const char* caption) {
  return ToolOf(ToolKind::Hosted, ToolDisplay::Image, name, caption);
}

ToolData Separator(const char* name, int image = -1) {
  ToolData tool = ToolOf(ToolKind::Separator, ToolDisplay::Image, name, "");
  tool.image = image;
  return tool;
}

/// A blank gap; its caption, which nobody sees, is its name.
ToolData Spacer(const char* name) { return ToolOf(ToolKind::Spacer, ToolDisplay::Image, name, name); }

BandData BandOf(BandKind kind, const char* name, const char* caption, std::vector<ToolData> tools) {
  BandData band;
  band.kind = kind;
  band.name = name;
  band.caption = caption;
  band.tools = std::move(tools);
  return band;
}

BandData ToolBar(int row, const char* name, const char* caption, std::vector<ToolData> tools) {
  BandData band = BandOf(BandKind::ToolBar, name, caption, std::move(tools));
  band.row = row;
  return band;
}

BandData DropDown(const char* name, const char* caption, std::vector<ToolData> tools) {
  return BandOf(BandKind::DropDown, name, caption, std::move(tools));
}

BandData SideBar(const char* name, const char* caption, const char* childBand) {
  BandData band = BandOf(BandKind::SideBar, name, caption, {});
  band.childBand = childBand;
  return band;
}

// In MainBar the hosted tools take, in this order, TheSpacer, picBannerBorder (the banner) and Logo;
// AddressBar takes TheAddress. Nothing opens the band "Search by Groups?": kept on purpose, its command works
// all the same.
std::vector<BandData> AllBands() {
  return {
      ToolBar(2, "Bonus Bar", "Bonus Bar",
              {
                  Edit("SearchCriteria", "Search", 193, "SearchBy",
                       "Enter search word here and then choose method in adjoining dropdown box"),
                  Separator("sep1"),
                  Beside("Tools", "Tools", 44, "Tools"),
                  Separator("sep3"),
                  Beside("Find", "Find", 21),
                  Separator("sep2"),
                  Hosted("AddressBar", "Tool73"),
                  Picture("btnGo", "btnGo", 61),
                  Separator("sep4"),
                  Picture("Site Of The Month", "Site Of The Month", 50, "Site Of The Month", 120),
                  Separator("sep5"),
                  Beside("Help", "Help", 34, "Help_Expanded"),
              }),
      // The name and the caption of "Stock  Quotes" have two blanks, the band that it opens has one.
      DropDown("SearchBy", "SearchBy",
               {
                   Row("Search The Web", 25, "SearchTheWeb"),
                   Row("Search This Site", 26, "Search This Site?"),
                   Row("Search by Images", 28, "Search by Images?"),
                   Row("Dictionary", 32, "Dictionary?"),
                   Separator("Tool44"),
                   Row("Stock  Quotes", 29, "Stock Quotes"),
               }),
      DropDown("Stock Quotes", "Band3",
               {
                   Row("Yahoo! Quotes", 30),
                   Row("MSN Quotes", 31),
               }),
      DropDown("Tools", "Tools",
               {
                   Row("Highlight", 45, "HILITE",
                       "Enter a word in the search box and this feature will highlight it on the current "
                       "web page"),
                   Separator("Tool15"),
                   Row("Notepad", 40),
                   Row("Wordpad", 41),
                   Separator("Tool14"),
                   Row("Calculator", 39),
                   Row("Volume", 43),
                   Row("Text Size", 46, "Text Size"),
                   Row("Translation", 47, "Translation"),
               }),
      DropDown("Help_Expanded", "Help_Expanded",
               {
                   Row("How to Use", 35),
                   Row("On-Line Support", 37),
                   Separator("Tool7"),
                   Row("Advertise", 38),
                   Row("Banner Free Browser", 36),
               }),
      DropDown("Text Size", "Text Size",
               {
                   Words("Largest"),
                   Words("Larger"),
                   Words("Medium"),
                   Words("Smaller"),
                   Words("Smallest"),
               }),
      DropDown("Translation", "Translation",
               {
                   Row("World Lingo", 48),
                   Row("Systran", 49),
               }),
      ToolBar(1, "MainBar", "MainBar",
              {
                  Above("Back", "&Back", 51),
                  Above("Forward", "&Forward", 52),
                  Above("Refresh", "&Refresh", 53),
                  Above("Stop", "&Stop", 54),
                  Above("Home", "&Home", 55),
                  Above("Print", "&Print", 56),
                  Above("Lock", "&Lock", 58, /*enabled=*/false),
                  Separator("Tool68"),
                  Hosted("Spacer", "Spacer"),
                  Hosted("Banner", "Banner"),
                  Hosted("LogoBox", "LogoBox"),
              }),
      SideBar("SideBar", "SideBar", "Subjects"),
      BandOf(BandKind::ChildBand, "Subjects", "Subjects",
             {
                 Picture("Math", "", 114),
                 Spacer("Tool105"),
                 Picture("Language", "Language", 115),
                 Spacer("Tool106"),
                 Picture("Science", "Science", 116),
                 Spacer("Tool107"),
                 Picture("Social Studies", "Social Studies", 117),
             }),
      DropDown(
          "HILITE", "Band10",
          {Picture("How to Use?", "Tool121", 138, "Click here to learn how to use the Highlight feature")}),
      // The five ways to search: a picture that begins the search, a line, a picture that tells how to use
      // it.
      DropDown(
          "SearchTheWeb", "Band11",
          {Picture("doweb", "Tool139", 149), Separator("Tool138"), Picture("SearchTheWeb", "Tool122", 139)}),
      DropDown("Search This Site?", "Band12",
               {Picture("dosite", "Tool137", 148), Separator("Tool136"),
                Picture("SearchThisSite", "Tool124", 140)}),
      DropDown("Search by Groups?", "Band13",
               {Picture("dogroups", "Tool135", 147), Separator("Tool134"),
                Picture("SearchbyGroups", "Tool125", 141)}),
      DropDown("Search by Images?", "Band14",
               {Picture("doimages", "Tool132", 146), Separator("Tool131"),
                Picture("SearchbyImages", "Tool126", 142)}),
      DropDown("Dictionary?", "Band15",
               {Picture("dodictionary", "Tool130", 145), Separator("slash", 144),
                Picture("DictionaryHelp", "Tool127", 143)}),
  };
}

}  // namespace

const std::vector<BandData>& BonusBarData() {
  static const std::vector<BandData> bands = AllBands();
  return bands;
}

}  // namespace kivandra
