// SPDX-License-Identifier: GPL-3.0-or-later
// The menu bar: what a person does by mouse and keyboard, and what it raises.
#include "platform/menu_bar.h"
#include "platform/platform_error.h"
#include "platform_gtk/hands.h"
#include "platform_gtk/own_forms.h"

namespace kivandra::gtk {
namespace {

MenuData Entry(std::string name, std::string caption, std::string shortcut = {},
               std::vector<MenuData> entries = {}) {
  return {std::move(name), std::move(caption), std::move(shortcut), std::move(entries)};
}

std::vector<MenuData> Menus() {
  return {
      Entry("mnuFile", "&File", "",
            {Entry("mnuOpen", "&Open...", "Ctrl+O"), Entry("mnuPrint", "&Print...", "Ctrl+P"),
             Entry("sep1", ""), Entry("sep2", "-"), Entry("mnuExit", "E&xit", "Ctrl+Q")}),
      Entry("mnuEdit", "&Edit", "",
            {Entry("mnuCut", "Cu&t", "Ctrl+X"), Entry("mnuCopy", "&Copy", "Ctrl+C"),
             Entry("mnuPaste", "&Paste", "Ctrl+V"), Entry("sep3", "-"),
             Entry("mnuAll", "Select &All", "Ctrl+A"), Entry("mnuFind", "Find on this page...", "Ctrl+F")}),
      Entry("mnuView", "&View", "",
            {Entry("mnuSidebar", "&Side Toolbar"),
             Entry("mnuText", "Text Size", "", {Entry("mnuLarge", "Large"), Entry("mnuSmall", "Small")})}),
  };
}

class MenuTest : public WindowTest {
 protected:
  MenuTest() {
    own.Write("frmTest", "",
              "<child><object class='GtkBox' id='Menu'/></child>"
              "<child><object class='GtkEntry' id='Field'/></child>"
              "<child><object class='GtkDrawingArea' id='Page'><property name='focusable'>1</property>"
              "<property name='height-request'>300</property><property name='width-request'>600</property>"
              "</object></child>");
    form = loader.Load("frmTest");
    menu = &form->Get<MenuBar>("Menu");
    menu->Lay(Menus());
    menu->OnClick([this](const std::string& name) {
      clicks.push_back(name);
      menusOpenAtClick += OpenMenus();
      if (whenClicked) {
        whenClicked();
      }
    });
    form->SetVisible(true);
    window = ShownWindow("frmTest");
    page = WidgetsBelow(*window, [](auto& each) { return GTK_IS_DRAWING_AREA(each.gobj()); }).at(0);
    field = dynamic_cast<Gtk::Entry*>(
        WidgetsBelow(*window, [](auto& each) { return GTK_IS_ENTRY(each.gobj()); }).at(0));
    hands = std::make_unique<Hands>(*window);
    // A menu that opens below the pointer would put the keyboard on the row there.
    hands->MoveTo(*page, 590, 290);
    page->grab_focus();
  }
  ~MenuTest() override {
    if (form->Loaded()) {
      form->Unload();
    }
  }

  int OpenMenus() {
    return static_cast<int>(WidgetsBelow(*window, [](auto& each) {
                              return GTK_IS_POPOVER(each.gobj()) && each.get_mapped();
                            }).size());
  }
  bool Menu(int open) {
    return Until([&] { return OpenMenus() == open; });
  }
  /// Presses the keys; a menu opens or closes in its own time, so the number of open ones is waited for.
  void Press(const std::string& key, int menusThen) {
    hands->Press({key});
    ASSERT_TRUE(Menu(menusThen)) << key << ": " << OpenMenus() << " menus are open";
  }
  bool Clicked(const Journal& expected) {
    return Until([&] { return clicks == expected; });
  }
  /// Everything that was pressed so far has had its effect: a key of our own comes through behind it.
  void ExpectOnly(const Journal& expected) {
    Journal behind = expected;
    behind.push_back("mnuPrint");
    hands->Press({"ctrl+p"});
    EXPECT_TRUE(Clicked(behind)) << testing::PrintToString(clicks);
  }
  Gtk::Widget* Row(const std::string& text) {
    const auto rows = WidgetsBelow(*window, [&](auto& each) {
      auto* label = dynamic_cast<Gtk::Label*>(&each);
      return label != nullptr && label->get_mapped() && label->get_text().raw() == text;
    });
    return rows.empty() ? nullptr : rows[0];
  }

  /// Waits until the keyboard stands on a row: a menu that is open may not have taken it yet.
  bool StandsOn(const std::string& text) {
    return Until([&] {
      Gtk::Widget* focus = window->get_focus();
      Gtk::Widget* row = Row(text);
      return focus != nullptr && row != nullptr && row->is_ancestor(*focus);
    });
  }

  /// Opens a menu by its access key and waits until it has taken the keyboard.
  void OpenMenu(const std::string& key, const std::string& firstRow) {
    Press(key, 1);
    ASSERT_TRUE(StandsOn(firstRow)) << key;
  }

  OwnForms own;
  FormLoader loader{own.Folder(), pages};
  std::shared_ptr<Form> form;
  MenuBar* menu = nullptr;
  Gtk::Window* window = nullptr;
  Gtk::Widget* page = nullptr;
  Gtk::Entry* field = nullptr;
  std::unique_ptr<Hands> hands;
  Journal clicks;
  int menusOpenAtClick = 0;
  std::function<void()> whenClicked;
};

TEST_F(MenuTest, AnAccessKeyOpensAMenuAndLettersChooseAnEntry) {
  OpenMenu("alt+f", "Open...");
  Press("x", 0);
  EXPECT_TRUE(Clicked({"mnuExit"}));
  EXPECT_EQ(menusOpenAtClick, 0) << "the menu is closed when the click comes";
  ExpectOnly({"mnuExit"});
}

TEST_F(MenuTest, TheKeyboardWalksTheMenusAndEscapeLeavesThem) {
  Press("F10", 1);
  EXPECT_NE(Row("Exit"), nullptr);
  ASSERT_TRUE(StandsOn("Open..."));
  Press("Right", 1);
  ASSERT_TRUE(StandsOn("Cut"));
  Press("Right", 1);
  ASSERT_TRUE(StandsOn("Side Toolbar"));
  Press("Down", 1);
  ASSERT_TRUE(StandsOn("Text Size"));
  Press("Right", 2);
  EXPECT_NE(Row("Large"), nullptr);
  Press("Escape", 0);
  ASSERT_TRUE(Until([&] { return page->has_focus(); })) << "the page has the keyboard again";
  ExpectOnly({});
}

TEST_F(MenuTest, ReturnChoosesInASubMenu) {
  OpenMenu("alt+v", "Side Toolbar");
  Press("Down", 1);
  ASSERT_TRUE(StandsOn("Text Size"));
  Press("Right", 2);
  ASSERT_TRUE(StandsOn("Large"));
  Press("Down", 2);
  ASSERT_TRUE(StandsOn("Small"));
  Press("Return", 0);
  EXPECT_TRUE(Clicked({"mnuSmall"})) << testing::PrintToString(clicks);
}

TEST_F(MenuTest, TheMouseOpensAMenuAndChooses) {
  hands->Click(*Row("Edit"));
  ASSERT_TRUE(Menu(1));
  ASSERT_TRUE(Until([&] { return Row("Find on this page...") != nullptr; }));
  EXPECT_NE(Row("Ctrl+F"), nullptr) << "the accelerator stands beside the entry";
}

TEST_F(MenuTest, ThePointerOnTheBarLeavesTheKeyboardWhereItIs) {
  field->grab_focus();
  hands->MoveTo(*page);
  hands->MoveTo(*Row("View"));
  ASSERT_TRUE(Until([&] {
    return (Row("View")->get_parent()->get_state_flags() & Gtk::StateFlags::PRELIGHT) ==
           Gtk::StateFlags::PRELIGHT;
  }));
  hands->Press({"k", "i", "v"});
  EXPECT_TRUE(Until([&] { return field->get_text() == "kiv"; }));
}

TEST_F(MenuTest, EachAcceleratorClicksOnceWhereverTheKeyboardIs) {
  hands->Press({"ctrl+o"});
  EXPECT_TRUE(Clicked({"mnuOpen"}));
  field->grab_focus();
  hands->Press({"ctrl+f"});
  EXPECT_TRUE(Clicked({"mnuOpen", "mnuFind"}));
  hands->Press({"ctrl+shift+o", "o", "alt+o", "shift+o"});
  ExpectOnly({"mnuOpen", "mnuFind"});
}

TEST_F(MenuTest, OnAPageTheEditingKeysClickTheirEntries) {
  for (const char* key : {"ctrl+x", "ctrl+c", "ctrl+v", "ctrl+a"}) {
    hands->Press({key});
  }
  ExpectOnly({"mnuCut", "mnuCopy", "mnuPaste", "mnuAll"});
}

TEST_F(MenuTest, InATextFieldTheEditingKeysAreTheFields) {
  field->grab_focus();
  field->set_text("words");
  hands->Press({"ctrl+a", "ctrl+x"});
  EXPECT_TRUE(Until([&] { return field->get_text().empty(); }));
  hands->Press({"ctrl+v", "ctrl+v"});
  EXPECT_TRUE(Until([&] { return field->get_text() == "wordswords"; }));
  ExpectOnly({});
}

TEST_F(MenuTest, TheEditMenuActsOnTheFieldThatHadTheKeyboard) {
  field->grab_focus();
  field->set_text("words");
  OpenMenu("alt+e", "Cut");
  Press("a", 0);
  ASSERT_TRUE(Until([&] {
    int from = 0;
    int to = 0;
    return field->get_selection_bounds(from, to) && from == 0 && to == 5;
  }));
  OpenMenu("alt+e", "Cut");
  Press("t", 0);
  EXPECT_TRUE(Until([&] { return field->get_text().empty(); }));
  page->grab_focus();
  OpenMenu("alt+e", "Cut");
  Press("p", 0);
  EXPECT_TRUE(Clicked({"mnuPaste"}));
  EXPECT_EQ(field->get_text(), "");
}

TEST_F(MenuTest, ACheckMarkStandsUntilItIsTakenAway) {
  EXPECT_FALSE(menu->Checked("mnuSidebar"));
  menu->SetChecked("mnuSidebar", true);
  EXPECT_TRUE(menu->Checked("mnuSidebar"));
  OpenMenu("alt+v", "Side Toolbar");
  const auto marks = [&] {
    return WidgetsBelow(*window,
                        [](auto& each) {
                          return each.get_mapped() && each.get_css_name() == "check" &&
                                 (each.get_state_flags() & Gtk::StateFlags::CHECKED) ==
                                     Gtk::StateFlags::CHECKED;
                        })
        .size();
  };
  EXPECT_EQ(marks(), 1U);
  Press("s", 0);
  EXPECT_TRUE(Clicked({"mnuSidebar"}));
  EXPECT_TRUE(menu->Checked("mnuSidebar")) << "a click alone changes no mark";
  menu->SetChecked("mnuSidebar", false);
  OpenMenu("alt+v", "Side Toolbar");
  EXPECT_EQ(marks(), 0U);
}

TEST_F(MenuTest, AnUnknownEntryIsAnError) {
  EXPECT_THROW(static_cast<void>(menu->Checked("mnuNone")), PlatformError);
  EXPECT_THROW(menu->SetChecked("mnuNone", true), PlatformError);
}

TEST_F(MenuTest, AHandlerMayCloseTheWindow) {
  whenClicked = [this] { form->Unload(); };
  hands->Press({"ctrl+q"});
  EXPECT_TRUE(Clicked({"mnuExit"}));
  Settle();
  EXPECT_THROW(static_cast<void>(menu->Checked("mnuSidebar")), PlatformError);
}

TEST_F(MenuTest, EveryMenuAndEntryHasItsWordsAndAnAccessibleRole) {
  const auto items =
      WidgetsBelow(*window, [](auto& each) { return each.get_css_name() == "item" && each.get_mapped(); });
  ASSERT_EQ(items.size(), 3U);
  for (Gtk::Widget* item : items) {
    EXPECT_EQ(gtk_accessible_get_accessible_role(GTK_ACCESSIBLE(item->gobj())),
              GTK_ACCESSIBLE_ROLE_MENU_ITEM);
  }
  OpenMenu("alt+v", "Side Toolbar");
  const auto rows = WidgetsBelow(
      *window, [](auto& each) { return each.get_css_name() == "modelbutton" && each.get_mapped(); });
  EXPECT_EQ(rows.size(), 2U);
  for (Gtk::Widget* row : rows) {
    EXPECT_EQ(gtk_accessible_get_accessible_role(GTK_ACCESSIBLE(row->gobj())), GTK_ACCESSIBLE_ROLE_MENU_ITEM);
  }
}

}  // namespace
}  // namespace kivandra::gtk
