// SPDX-License-Identifier: GPL-3.0-or-later
// Drop-downs of the bars: opening, walking, choosing; the search box; names and access keys.
#include <gmock/gmock.h>

#include <ctime>
#include <set>

#include "platform_gtk/bars_test.h"

namespace kivandra::gtk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class BarDropDownTest : public BarsFixture {
 protected:
  Gtk::Entry& SearchBox() { return *One<Gtk::Entry>("kv-joined"); }
  Gtk::Popover& PopoverOf(const std::string& band) {
    return *dynamic_cast<Gtk::Popover*>(WidgetOf(band, 0)->get_ancestor(GTK_TYPE_POPOVER));
  }
};

// Opening.

TEST_F(BarDropDownTest, OpensBelowItsToolWithRowsOfTheRightSize) {
  Show();
  Click("Tools");
  ASSERT_TRUE(Until([&] { return IsOpen("Tools") && WidgetOf("Tools", 0)->get_allocated_height() > 0; }));
  EXPECT_EQ(WidgetOf("Tools", 0)->get_allocated_height(), 34);
  EXPECT_EQ(WidgetOf("Tools", 2)->get_allocated_height(), 34);
  EXPECT_TRUE(Button("Tools")->has_css_class("kv-open"));
  std::vector<Gtk::Widget*> pictures;
  Collect(*WidgetOf("Tools", 0), pictures);
  EXPECT_TRUE(std::any_of(pictures.begin(), pictures.end(), [](Gtk::Widget* each) {
    return each->get_css_name() == "image" && each->get_width() == 24 && each->get_height() == 24;
  }));
}

TEST_F(BarDropDownTest, AMethodsDropDownHoldsTwoDrawnPillsWithTheirWordsAsNames) {
  Show();
  Open("SearchTheWeb");
  ASSERT_TRUE(Until([&] { return WidgetOf("SearchTheWeb", 2)->get_first_child()->get_width() > 0; }));
  for (const std::size_t place : {0U, 2U}) {
    Gtk::Widget* pill = WidgetOf("SearchTheWeb", place);
    EXPECT_TRUE(pill->has_css_class("kv-art"));
    EXPECT_EQ(pill->get_first_child()->get_width(), 184);
    EXPECT_EQ(pill->get_first_child()->get_height(), 36);
  }
  EXPECT_TRUE(IsNamed(*WidgetOf("SearchTheWeb", 0), "Search The Web"));
  EXPECT_TRUE(IsNamed(*WidgetOf("SearchTheWeb", 2), "How to Use?"));
}

TEST_F(BarDropDownTest, OpensFurtherOnesToTheRightAndOnlyOneAtATime) {
  Show();
  Open("SearchTheWeb");
  EXPECT_TRUE(IsOpen("SearchBy"));
  EXPECT_EQ(PopoverOf("SearchTheWeb").get_position(), Gtk::PositionType::RIGHT);
  Open("Dictionary?");
  EXPECT_TRUE(IsOpen("SearchBy"));
  EXPECT_FALSE(IsOpen("SearchTheWeb"));
  Open("Tools");
  EXPECT_FALSE(IsOpen("SearchBy"));
  EXPECT_FALSE(IsOpen("Dictionary?"));
}

TEST_F(BarDropDownTest, OffersNoRowForABandThatNothingOpens) {
  Show();
  Open("SearchBy");
  for (Gtk::Button* row : AllOf<Gtk::Button>()) {
    EXPECT_FALSE(IsNamed(*row, "Search by Groups"));
  }
}

TEST_F(BarDropDownTest, KeepsTwoBlanksInACaption) {
  Show();
  Open("SearchBy");
  EXPECT_TRUE(IsNamed(*WidgetOf("SearchBy", 3), "Stock  Quotes"));
  std::vector<Gtk::Label*> words;
  Collect(*WidgetOf("SearchBy", 3), words);
  ASSERT_FALSE(words.empty());
  EXPECT_EQ(words[0]->get_text(), "Stock  Quotes");
}

TEST_F(BarDropDownTest, OpensWithinABlinkOfAnEye) {
  Show();
  const std::clock_t before = std::clock();  // processor time: other programs do not count
  Click("Tools");
  EXPECT_TRUE(IsOpen("Tools"));
  EXPECT_LT(std::clock() - before, 3 * CLOCKS_PER_SEC / 10);
}

// Clicks.

TEST_F(BarDropDownTest, OpeningTellsTheHeaderOnceAfterTheDropDownStands) {
  Show();
  bool stood = false;
  Bars().OnToolClick([&](Tool& tool) {
    clicks.push_back(tool.Name());
    stood = IsOpen("Tools");
  });
  Click("Tools");
  EXPECT_TRUE(Until([&] { return !clicks.empty(); }));
  EXPECT_TRUE(stood);
  Click("Tools");
  Settle();
  EXPECT_THAT(clicks, ElementsAre("Tools"));
  EXPECT_TRUE(IsOpen("Tools"));
}

TEST_F(BarDropDownTest, EachNewOpeningTellsItsHeaderAgain) {
  Show();
  for (int i = 0; i < 3; ++i) {
    Click("Tools");
    Press(GDK_KEY_Escape);
    EXPECT_FALSE(IsOpen("Tools"));
  }
  Settle();
  EXPECT_THAT(clicks, ElementsAre("Tools", "Tools", "Tools"));
}

TEST_F(BarDropDownTest, TheHeaderOfTheSearchBoxIsToldUnderItsOwnName) {
  Show();
  Click("Search choices");
  EXPECT_TRUE(Until([&] { return !clicks.empty(); }));
  EXPECT_THAT(clicks, ElementsAre("SearchCriteria"));
  EXPECT_TRUE(IsOpen("SearchBy"));
}

TEST_F(BarDropDownTest, ARowThatOpensAFurtherOneIsToldWhenItIsClicked) {
  Show();
  Open("SearchTheWeb");
  EXPECT_THAT(clicks, IsEmpty());
  Click("Search The Web");
  EXPECT_TRUE(Until([&] { return !clicks.empty(); }));
  EXPECT_THAT(clicks, ElementsAre("Search The Web"));
  EXPECT_TRUE(IsOpen("SearchTheWeb"));
}

TEST_F(BarDropDownTest, ChoosingARowClosesAllDropDownsAndThenTellsIt) {
  Show();
  Open("SearchTheWeb");
  std::vector<bool> open;
  Bars().OnToolClick([&](Tool& tool) {
    clicks.push_back(tool.Name());
    open = {IsOpen("SearchBy"), IsOpen("SearchTheWeb")};
  });
  Gtk::Widget* row = WidgetOf("SearchTheWeb", 0);
  g_signal_emit_by_name(row->gobj(), "clicked");
  EXPECT_THAT(clicks, IsEmpty());
  EXPECT_TRUE(Until([&] { return !clicks.empty(); }));
  EXPECT_THAT(clicks, ElementsAre("doweb"));
  EXPECT_THAT(open, ElementsAre(false, false));
}

TEST_F(BarDropDownTest, StaysOpenAndUsableWhenTheClickOfItsHeaderOpensAPageWindow) {
  Show();
  Teller teller("page", journal);
  std::shared_ptr<Form> page;
  Bars().OnToolClick([&](Tool& tool) {
    clicks.push_back(tool.Name());
    page = LoadChild(teller);
    page->SetFocus();
  });
  Click("Search choices");
  ASSERT_TRUE(Until([&] { return page != nullptr; }));
  Settle();
  EXPECT_TRUE(IsOpen("SearchBy"));
  EXPECT_TRUE(Until([&] { return Focused() == "Search The Web"; }));
  page->Unload();
}

TEST_F(BarDropDownTest, KeepsTheKeyboardWhenAPageThatArrivesTakesIt) {
  Show();
  Open("Tools");
  Address().grab_focus();
  EXPECT_TRUE(Until([&] { return Focused() == "Highlight"; }));
  Press(GDK_KEY_Escape);
  EXPECT_FALSE(IsOpen("Tools"));
}

TEST_F(BarDropDownTest, ClosesWhenTheClickOfItsHeaderOpensABox) {
  Show();
  Gtk::Window box;
  Bars().OnToolClick([&](Tool& tool) {
    clicks.push_back(tool.Name());
    box.set_visible(true);
    EXPECT_FALSE(IsOpen("Tools"));
  });
  Click("Tools");
  EXPECT_TRUE(Until([&] { return !clicks.empty(); }));
  EXPECT_FALSE(IsOpen("Tools"));
}

// Keys.

TEST_F(BarDropDownTest, DownOpensAndTheArrowsWalkTheRowsRoundAndRound) {
  Show();
  Button("Tools")->grab_focus();
  EXPECT_TRUE(Press(GDK_KEY_Down));
  EXPECT_TRUE(IsOpen("Tools"));
  EXPECT_EQ(Focused(), "Highlight");
  const std::vector<std::pair<unsigned, std::string>> walk = {
      {GDK_KEY_Down, "Notepad"},  {GDK_KEY_Down, "Text Size"},        {GDK_KEY_Down, "Highlight"},
      {GDK_KEY_Up, "Text Size"},  {GDK_KEY_Home, "Highlight"},        {GDK_KEY_End, "Text Size"},
      {GDK_KEY_Tab, "Highlight"}, {GDK_KEY_ISO_Left_Tab, "Text Size"}};
  for (const auto& [key, name] : walk) {
    EXPECT_TRUE(Press(key));
    EXPECT_EQ(Focused(), name);
  }
}

TEST_F(BarDropDownTest, RightOpensAFurtherOneWithoutAClickAndLeftComesBack) {
  Show();
  Open("Tools");
  EXPECT_TRUE(Press(GDK_KEY_Right));
  EXPECT_TRUE(IsOpen("HILITE"));
  EXPECT_EQ(Focused(), "How to Use?");
  EXPECT_TRUE(Press(GDK_KEY_Left));
  EXPECT_FALSE(IsOpen("HILITE"));
  EXPECT_TRUE(IsOpen("Tools"));
  EXPECT_EQ(Focused(), "Highlight");
  Press(GDK_KEY_Down);
  EXPECT_TRUE(Press(GDK_KEY_Right));  // Notepad opens nothing
  EXPECT_EQ(Focused(), "Notepad");
  EXPECT_THAT(clicks, IsEmpty());
}

TEST_F(BarDropDownTest, EscapeClosesTheInnermostAndGivesTheKeyboardToItsOpener) {
  Show();
  Button("Tools")->grab_focus();
  Open("Text Size");
  EXPECT_EQ(Focused(), "Largest");
  EXPECT_TRUE(Press(GDK_KEY_Escape));
  EXPECT_EQ(Focused(), "Text Size");
  EXPECT_TRUE(Press(GDK_KEY_Escape));
  EXPECT_FALSE(IsOpen("Tools"));
  EXPECT_EQ(Focused(), "Tools");
  EXPECT_FALSE(Button("Tools")->has_css_class("kv-open"));
}

TEST_F(BarDropDownTest, ReturnAndSpaceChooseTheRowThatHasTheKeyboard) {
  Show();
  Open("Tools");
  Press(GDK_KEY_Down);
  gtk_widget_activate(GTK_WIDGET(window->get_focus()->gobj()));
  EXPECT_TRUE(Until([&] { return !clicks.empty(); }));
  EXPECT_THAT(clicks, ElementsAre("Notepad"));
  EXPECT_FALSE(IsOpen("Tools"));
}

TEST_F(BarDropDownTest, TabReachesEveryToolOfTheBars) {
  Show();
  Bars().Bands("SideBar").SetVisible(true);
  Settle();
  ToolOf("MainBar", "Lock").SetEnabled(true);
  std::set<std::string> met;
  window->set_focus(*Button("Back"));
  for (int i = 0; i < 40; ++i) {
    met.insert(Focused());
    gtk_widget_child_focus(GTK_WIDGET(window->gobj()), GTK_DIR_TAB_FORWARD);
  }
  for (const char* band : {"MainBar", "Bonus Bar", "Subjects"}) {
    for (const BandData& each : table) {
      for (const ToolData& tool : each.tools) {
        if (each.name == band && tool.kind == ToolKind::Button) {
          EXPECT_EQ(met.count(tool.name), 1U) << tool.name;
        }
      }
    }
  }
  EXPECT_EQ(met.count("search box"), 1U);
}

TEST_F(BarDropDownTest, ArrowsMoveBetweenTheToolsOfABar) {
  Show();
  Button("Back")->grab_focus();
  gtk_widget_child_focus(GTK_WIDGET(AllOf<BarRow>()[0]->gobj()), GTK_DIR_RIGHT);
  EXPECT_EQ(Focused(), "Forward");
  gtk_widget_child_focus(GTK_WIDGET(AllOf<BarRow>()[0]->gobj()), GTK_DIR_LEFT);
  EXPECT_EQ(Focused(), "Back");
}

TEST_F(BarDropDownTest, AnAccessKeyThatAMenuHasStaysWithTheMenu) {
  GMenu* menus = g_menu_new();
  for (const char* word : {"_Help", "_File"}) {
    GMenu* inside = g_menu_new();
    g_menu_append_submenu(menus, word, G_MENU_MODEL(inside));
    g_object_unref(inside);
  }
  GtkWidget* bar = gtk_popover_menu_bar_new_from_model(G_MENU_MODEL(menus));
  g_object_unref(menus);
  Lay(Table());
  auto& top = dynamic_cast<Gtk::Box&>(dynamic_cast<WidgetControl&>(Bars()).Widget());
  gtk_box_prepend(top.gobj(), bar);
  Show();
  std::map<std::string, unsigned> keys;
  for (const char* name : {"Back", "Forward", "Home"}) {
    std::vector<Gtk::Label*> words;
    Collect(*Button(name), words);
    keys[name] = words.at(0)->get_mnemonic_keyval();
    EXPECT_EQ(words[0]->get_text(), name);
  }
  EXPECT_EQ(keys["Back"], static_cast<unsigned>(GDK_KEY_B));
  EXPECT_EQ(keys["Forward"], static_cast<unsigned>(GDK_KEY_VoidSymbol));
  EXPECT_EQ(keys["Home"], static_cast<unsigned>(GDK_KEY_VoidSymbol));
}

// The search box.

TEST_F(BarDropDownTest, GoingIntoTheSearchBoxIsToldOnceForEachGoingIn) {
  Show();
  Button("Back")->grab_focus();
  SearchBox().grab_focus();
  EXPECT_THAT(entered, ElementsAre("SearchCriteria"));
  SearchBox().grab_focus();
  EXPECT_EQ(entered.size(), 1U);
  Button("Back")->grab_focus();
  EXPECT_EQ(entered.size(), 1U);
  SearchBox().grab_focus();
  EXPECT_EQ(entered.size(), 2U);
}

TEST_F(BarDropDownTest, ComingBackFromItsOwnDropDownIsNoGoingIn) {
  Show();
  SearchBox().grab_focus();
  ToolOf("Bonus Bar", "SearchCriteria").SetText("volcano");
  Press(GDK_KEY_Down);
  EXPECT_EQ(Focused(), "Search The Web");
  Press(GDK_KEY_Escape);
  EXPECT_EQ(Focused(), "search box");
  EXPECT_EQ(entered.size(), 1U);
  EXPECT_EQ(ToolOf("Bonus Bar", "SearchCriteria").Text(), "volcano");
}

TEST_F(BarDropDownTest, AChosenMethodStillFindsTheTextInTheBox) {
  Show();
  Bars().OnToolEntered([&](Tool& tool) { tool.SetText(""); });
  std::string text;
  Bars().OnToolClick([&](Tool& tool) {
    clicks.push_back(tool.Name());
    text = ToolOf("Bonus Bar", "SearchCriteria").Text();
  });
  SearchBox().grab_focus();
  SearchBox().set_text("a b");
  Open("SearchTheWeb");
  g_signal_emit_by_name(WidgetOf("SearchTheWeb", 0)->gobj(), "clicked");
  EXPECT_TRUE(Until([&] { return !clicks.empty(); }));
  EXPECT_EQ(text, "a b");
}

TEST_F(BarDropDownTest, ReturnInTheSearchBoxOpensTheMethodsWithoutAClick) {
  Show();
  SearchBox().grab_focus();
  g_signal_emit_by_name(SearchBox().gobj(), "activate");
  Settle();
  EXPECT_TRUE(IsOpen("SearchBy"));
  EXPECT_EQ(Focused(), "Search The Web");
  EXPECT_THAT(clicks, IsEmpty());
}

TEST_F(BarDropDownTest, AnEmptySearchBoxShowsItsCaptionAsAHint) {
  Show();
  EXPECT_EQ(SearchBox().get_placeholder_text(), "Search");
  EXPECT_EQ(ToolOf("Bonus Bar", "SearchCriteria").Text(), "");
}

TEST_F(BarDropDownTest, TheSearchBoxTakesBadAndLongTexts) {
  Show();
  Tool& tool = ToolOf("Bonus Bar", "SearchCriteria");
  for (const std::string& text : {std::string("\"%&+ \xc3\xb1 \xe4\xb8\xad"), std::string(10000, 'x')}) {
    tool.SetText(text);
    EXPECT_EQ(tool.Text(), text);
  }
  tool.SetText("\xff");
  EXPECT_EQ(tool.Text(), "\xef\xbf\xbd");
}

// Names.

TEST_F(BarDropDownTest, EveryButtonOfEveryBandHasANameAndEveryToolTipIsThere) {
  Show();
  Bars().Bands("SideBar").SetVisible(true);
  for (const BandData& band : table) {
    if (band.kind == BandKind::DropDown) {
      Open(band.name);
    }
  }
  int buttons = 0;
  std::vector<Gtk::Widget*> all;
  Collect(*AllOf<BarRow>()[0]->get_parent(), all);
  Collect(*SideScroller(), all);
  for (Gtk::Widget* each : all) {
    if (dynamic_cast<Gtk::Button*>(each) != nullptr || dynamic_cast<Gtk::Entry*>(each) != nullptr) {
      ++buttons;
      GtkAccessible* node = GTK_ACCESSIBLE(each->gobj());
      EXPECT_TRUE(gtk_test_accessible_has_property(node, GTK_ACCESSIBLE_PROPERTY_LABEL))
          << each->get_css_name();
      EXPECT_FALSE(IsNamed(*each, "")) << each->get_css_name();
      EXPECT_FALSE(gtk_test_accessible_has_relation(node, GTK_ACCESSIBLE_RELATION_LABELLED_BY))
          << "a name that is read out twice";
    }
  }
  EXPECT_GT(buttons, 30);
  EXPECT_EQ(SearchBox().get_parent()->get_tooltip_text(), "Enter a word");
}

}  // namespace
}  // namespace kivandra::gtk
