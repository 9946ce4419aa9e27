// SPDX-License-Identifier: GPL-3.0-or-later
// The bars as a person meets them: sizes, drop-downs, keys, names.
#include "platform_gtk/bars_test.h"

#include <gmock/gmock.h>

namespace kivandra::gtk {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class BarsTest : public BarsFixture {};

// What is drawn.

TEST_F(BarsTest, LaysTheBarsInTheirRowsWhateverTheirOrderIsInTheData) {
  Show();
  const auto rows = AllOf<BarRow>();
  ASSERT_EQ(rows.size(), 2U);
  EXPECT_TRUE(rows[0]->has_css_class("kv-main"));
  EXPECT_TRUE(rows[1]->has_css_class("kv-bonus"));
  EXPECT_EQ(rows[0]->get_allocated_height(), 80);
  EXPECT_EQ(rows[1]->get_allocated_height(), 46);
}

TEST_F(BarsTest, AFixedToolHasItsRealWidthInTwips) {
  Show();
  for (const char* name : {"Back", "Stop"}) {
    EXPECT_EQ(ToolOf("MainBar", name).Width(), 15 * Button(name)->get_allocated_width()) << name;
  }
  EXPECT_EQ(ToolOf("Bonus Bar", "SearchCriteria").Width(), 193 * 15);
  EXPECT_EQ(One<Gtk::Entry>("kv-joined")->get_parent()->get_allocated_width(), 193);
}

TEST_F(BarsTest, TheSearchBoxKeepsItsWidthAtAnyFrameWidth) {
  Show(1366);
  const int wide = One<Gtk::Entry>("kv-joined")->get_allocated_width();
  EXPECT_NEAR(wide, 165, 2);
  Resize(820);
  EXPECT_EQ(One<Gtk::Entry>("kv-joined")->get_allocated_width(), wide);
  EXPECT_EQ(ToolOf("Bonus Bar", "SearchCriteria").Width(), 193 * 15);
}

TEST_F(BarsTest, AStretchyToolKeepsTheWidthThatWasSetEvenIfItIsNegative) {
  Show();
  for (const Twips width : {-500L, 0L, 7L, 30000L}) {
    ToolOf("Bonus Bar", "AddressBar").SetWidth(width);
    ToolOf("MainBar", "Spacer").SetWidth(width);
    Settle();
    EXPECT_EQ(ToolOf("Bonus Bar", "AddressBar").Width(), width);
    EXPECT_EQ(ToolOf("MainBar", "Spacer").Width(), width);
  }
  EXPECT_GE(dynamic_cast<WidgetControl&>(frame->Get<ComboBox>("TheAddress")).Widget().get_width(), 120);
}

TEST_F(BarsTest, TheBannerKeepsItsDesignedWidthInTheModelAndIsDrawnAsRoomAllows) {
  Show(1024);
  EXPECT_EQ(ToolOf("MainBar", "Banner").Width(), 887 * 15);
  Gtk::Widget& banner = dynamic_cast<WidgetControl&>(frame->Get<PictureBox>("picBannerBorder")).Widget();
  EXPECT_LT(banner.get_width(), 600);
  EXPECT_GT(banner.get_width(), 320);
  EXPECT_TRUE(banner.get_mapped());
  EXPECT_EQ(AllOf<BarRow>()[0]->get_allocated_height(), 80);
  Resize(1500);
  EXPECT_EQ(AllOf<BarRow>()[0]->get_allocated_height(), 101);
  Resize(800);
  EXPECT_FALSE(banner.get_mapped());
}

TEST_F(BarsTest, MakingTheFrameWiderWidensOnlyTheStretchyTools) {
  Show(1000);
  const auto before = FixedWidths();
  const int address = Address().get_width();
  Resize(1300);
  EXPECT_EQ(FixedWidths(), before);
  EXPECT_EQ(Address().get_width(), address + 300);
}

TEST_F(BarsTest, WordsBesidePicturesGoWhenTheAddressWouldGetTooSmallAndComeBack) {
  Show(1366);
  EXPECT_TRUE(Button("Tools")->get_allocated_width() > 60);
  Resize(640);
  EXPECT_TRUE(Until([&] { return Button("Tools")->get_allocated_width() < 60; }));
  EXPECT_EQ(Button("Tools")->get_tooltip_text(), "Tools");
  EXPECT_TRUE(IsNamed(*Button("Tools"), "Tools"));
  Resize(1366);
  EXPECT_TRUE(Until([&] { return Button("Tools")->get_allocated_width() > 60; }));
  EXPECT_EQ(Button("Tools")->get_tooltip_text(), "");
}

TEST_F(BarsTest, ABarThatIsTooNarrowMovesToTheToolThatHasTheKeyboard) {
  Show(420);
  Gtk::Button* help = Button("Help");
  BarRow* row = AllOf<BarRow>()[1];
  ASSERT_TRUE(Until([&] { return row->get_width() > 0 && LeftIn(*help, *row) > row->get_width(); }))
      << LeftIn(*help, *row);
  help->grab_focus();
  EXPECT_TRUE(Until([&] { return LeftIn(*help, *row) + help->get_width() <= row->get_width(); }));
  One<Gtk::Entry>("kv-joined")->grab_focus();
  EXPECT_TRUE(Until([&] { return LeftIn(*One<Gtk::Entry>("kv-joined"), *row) >= 0; }));
}

TEST_F(BarsTest, ACaptionOfAThousandCharactersIsCutAndToldInTheToolTip) {
  const std::string caption(1000, 'W');
  auto bands = Table();
  bands[1].tools[0].caption = caption;  // a row of a drop-down
  bands[0].tools[2].caption = caption;  // a tool of the bar
  Lay(bands);
  Show();
  Open("SearchBy");
  for (Gtk::Widget* tool : {WidgetOf("Bonus Bar", 2), WidgetOf("SearchBy", 0)}) {
    EXPECT_LT(tool->get_width(), 700);
    EXPECT_THAT(tool->get_tooltip_text(), HasSubstr(std::string(100, 'W')));
  }
  EXPECT_EQ(ToolOf("Bonus Bar", "Tools").Caption(), caption);
}

TEST_F(BarsTest, ADisabledToolCanNotBeClicked) {
  Show();
  EXPECT_FALSE(ToolOf("MainBar", "Lock").Enabled());
  EXPECT_FALSE(Button("Lock")->is_sensitive());
  gtk_widget_activate(GTK_WIDGET(Button("Lock")->gobj()));
  Click("Lock");
  EXPECT_TRUE(clicks.empty());
  ToolOf("MainBar", "Lock").SetEnabled(true);
  Click("Lock");
  EXPECT_THAT(clicks, ElementsAre("Lock"));
}

TEST_F(BarsTest, ADisabledRowCanNeitherBeChosenNorOpened) {
  Show();
  ToolOf("SearchBy", "Search The Web").SetEnabled(false);
  Open("SearchBy");
  Click("Search The Web");
  ToolOf("SearchBy", "Search The Web").SetEnabled(false);
  EXPECT_TRUE(clicks.empty());
  EXPECT_FALSE(IsOpen("SearchTheWeb"));
}

TEST_F(BarsTest, HoldsAnOrdinaryControlAndLetsItGo) {
  Show();
  auto& address = frame->Get<ComboBox>("TheAddress");
  EXPECT_TRUE(Address().get_mapped());
  ToolOf("Bonus Bar", "AddressBar").SetCustom(nullptr);
  Settle();
  EXPECT_FALSE(Address().get_mapped());
  ToolOf("Bonus Bar", "AddressBar").SetCustom(&address);
  EXPECT_TRUE(Until([&] { return Address().get_mapped(); }));
  EXPECT_THROW(ToolOf("MainBar", "Back").SetCustom(&address), PlatformError);
}

TEST_F(BarsTest, AnUnknownBandOrToolIsAnError) {
  EXPECT_THROW((void)Bars().Bands("Nowhere"), PlatformError);
  EXPECT_THROW((void)ToolOf("MainBar", "Nowhere"), PlatformError);
  EXPECT_THROW((void)ToolOf("SearchBy", "dogroups"), PlatformError);
}

// The side bar.

TEST_F(BarsTest, TheSideBarShowsTheTilesOfTheBandInsideIt) {
  Show();
  Band& side = Bars().Bands("SideBar");
  EXPECT_FALSE(side.Visible());
  side.SetVisible(true);
  EXPECT_TRUE(side.Visible());
  EXPECT_EQ(side.Width(), 121 * 15);
  Settle();
  EXPECT_TRUE(Until([&] { return Button("Math")->get_allocated_width() > 0; }));
  EXPECT_EQ(side.Width(), 121 * 15);
  EXPECT_EQ(side.Height(), 15 * SideScroller()->get_allocated_height());
  int top = 10;
  for (const char* name : {"Math", "Language", "Science", "Social Studies"}) {
    EXPECT_EQ(Button(name)->get_allocated_width(), 104) << name;
    EXPECT_EQ(Button(name)->get_allocated_height(), 92) << name;
    double x = 0;
    double y = 0;
    Button(name)->translate_coordinates(*SideScroller(), 0, 0, x, y);
    EXPECT_EQ(static_cast<int>(y) + 10, top) << name;
    top += 92 + 12;
  }
  Click("Science");
  EXPECT_THAT(clicks, ElementsAre("Science"));
}

TEST_F(BarsTest, ALowFrameScrollsTheSideBarToTheTileThatHasTheKeyboard) {
  Show(1000, 360);
  Bars().Bands("SideBar").SetVisible(true);
  ASSERT_TRUE(Until([&] { return Button("Social Studies")->get_height() > 0; }));
  auto* scroller = dynamic_cast<Gtk::ScrolledWindow*>(SideScroller());
  Button("Social Studies")->grab_focus();
  EXPECT_TRUE(Until([&] { return scroller->get_vadjustment()->get_value() > 0; }));
  EXPECT_FALSE(scroller->get_vscrollbar()->get_mapped());
}

// Clicks.

TEST_F(BarsTest, AClickTellsItsToolOnce) {
  Show();
  Click("Back");
  Click("Go");
  EXPECT_THAT(clicks, ElementsAre("Back", "btnGo"));
}

TEST_F(BarsTest, AClickHandlerMayUnloadTheForm) {
  Show();
  std::string after;
  Bars().OnToolClick([&](Tool& tool) {
    frame->Unload();
    frame.reset();
    Settle();  // the window goes while the handler still runs
    after = tool.Name();
    EXPECT_THROW((void)tool.Text(), PlatformError);
    EXPECT_THROW(tool.SetEnabled(true), PlatformError);
  });
  Click("Back");
  EXPECT_EQ(after, "Back");
  EXPECT_TRUE(forms.Loaded().empty());
}

TEST_F(BarsTest, ARowsClickHandlerMayUnloadTheForm) {
  Show();
  Open("Tools");
  Bars().OnToolClick([&](Tool& tool) {
    clicks.push_back(tool.Name());
    frame->Unload();
    frame.reset();
    Settle();
    clicks.push_back(tool.Name());
  });
  Click("Notepad");
  EXPECT_TRUE(Until([&] { return clicks.size() == 2; }));
}

TEST_F(BarsTest, AHeadersClickHandlerMayUnloadTheForm) {
  Show();
  Bars().OnToolClick([&](Tool& tool) {
    frame->Unload();
    frame.reset();
    Settle();
    clicks.push_back(tool.Name());
  });
  Click("Tools");
  EXPECT_TRUE(Until([&] { return !clicks.empty(); }));
}

TEST_F(BarsTest, TheFormMayGoWhileDropDownsAreOpenAndAClickWaits) {
  Show();
  Open("SearchBy");
  Open("SearchTheWeb");
  Gtk::Button* row = Button("Search The Web", 1);
  g_signal_emit_by_name(row->gobj(), "clicked");
  frame->Unload();
  frame.reset();
  Settle();
  EXPECT_TRUE(forms.Loaded().empty());
  EXPECT_EQ(std::count(clicks.begin(), clicks.end(), "doweb"), 0);
}

}  // namespace
}  // namespace kivandra::gtk
