// SPDX-License-Identifier: GPL-3.0-or-later
// The parental control panel as a window: its words, its way by keyboard, its size.
#include <cstdlib>

#include "platform/button.h"
#include "platform/calendar.h"
#include "platform/check_box.h"
#include "platform/combo_box.h"
#include "platform/label.h"
#include "platform/picture_box.h"
#include "platform/skin_form.h"
#include "platform/text_box.h"
#include "platform/timer.h"
#include "platform_gtk/control_test.h"

namespace kivandra::gtk {
namespace {

class OptionsFormTest : public ControlTest {
 protected:
  OptionsFormTest() {
    Show("frmOptions");
    for (const char* name : kBoxes) {
      form->Get<CheckBox>(name);
    }
    form->Get<ComboBox>("Combo1_0");
    form->Get<ComboBox>("Combo1_1");
    form->Get<Calendar>("Calendar1");
  }

  Gtk::Window& Window() { return WindowOf(WidgetOf(form->Get<Button>("cmdCancel"))); }
  /// The control that has the focus, by its name in the form file; "" for none of them.
  std::string Focus() {
    for (Gtk::Widget* each = Window().get_focus(); each != nullptr; each = each->get_parent()) {
      const char* name = gtk_buildable_get_buildable_id(GTK_BUILDABLE(each->gobj()));
      // "box" is the toolkit's own, inside a list field.
      if (name != nullptr && std::string(name).find("___") != 0 && std::string(name) != "box") {
        return name;
      }
    }
    return {};
  }
  /// Walks once around by the focus key.
  std::vector<std::string> Walk(Gtk::DirectionType direction) {
    Window().set_focus(*Gtk::make_managed<Gtk::Label>());
    gtk_window_set_focus(Window().gobj(), nullptr);
    std::vector<std::string> way;
    for (int step = 0; step < 60 && Window().get_child()->child_focus(direction); ++step) {
      const std::string at = Focus();
      if (way.empty() || way.back() != at) {
        way.push_back(at);
      }
    }
    return way;
  }

  static constexpr const char* kBoxes[] = {
      "Filter_Check",     "Back_Button",      "Popup", "Disable_Email", "Sound", "Tip_OfDay", "Prevent_IE",
      "Prevent_Netscape", "Record_Navigation"};
};

TEST_F(OptionsFormTest, SaysItsWordsLetterByLetter) {
  const std::pair<const char*, const char*> kLabels[] = {
      {"SkinLabel1_0", "Filter Enabled"},
      {"SkinLabel1_1", "Record Navigation"},
      {"SkinLabel1_2", "Disable pop-ups"},
      {"SkinLabel1_3", "Disable email web link"},
      {"SkinLabel1_4", "Disable Sounds"},
      {"SkinLabel1_5", "Auto show Tip of Day at browser launch"},
      {"SkinLabel1_6", "Prevent Internet Explorer from launching"},
      {"SkinLabel1_7", "Prevent Netscape 6 from launching"},
      {"SkinLabel1_8", "Allowable Domains"},
      {"SkinLabel1_9", "Dis-allowed Domains"},
      {"SkinLabel2", "Do Not Filter on Back Button or Links Bar"},
      {"SkinLabel3", "Default HomePage"},
      {"SkinLabel4", "Choose any date to view recorded navigation"},
  };
  for (const auto& [name, words] : kLabels) {
    EXPECT_EQ(form->Get<Label>(name).Caption(), words);
  }
  const std::pair<const char*, const char*> kButtons[] = {
      {"Skinbutton1", "&Apply"},       {"SkinButton2", "Help"},
      {"SkinButton3", "Help"},         {"SkinButton4", "Help"},
      {"Command1", "Change Password"}, {"Command3", "&Online Help"},
      {"NewPasswordButton", "&Ok"},    {"DB", "Set Kivandra as Default Browser"},
      {"b_allowButton_0", "->"},       {"b_allowButton_1", "->"},
      {"cmdCancel", "&Close"},
  };
  for (const auto& [name, words] : kButtons) {
    EXPECT_EQ(form->Get<Button>(name).Caption(), words);
  }
  const std::string tip =
      "By choosing this option, the filter will not be used when the back button is used.  Side effects "
      "include \"occasional\" objectionable material";
  EXPECT_EQ(WidgetOf(form->Get<Label>("SkinLabel2")).get_tooltip_text().raw(), tip + ".");
  EXPECT_EQ(WidgetOf(form->Get<Label>("SkinLabel3")).get_tooltip_text().raw(),
            tip + " spawned from malicious popups.");
}

TEST_F(OptionsFormTest, HasEveryOtherControlInItsFirstState) {
  for (const char* name : {"NewPassword_0", "NewPassword_1"}) {
    EXPECT_FALSE(form->Get<TextBox>(name).Enabled());
    EXPECT_FALSE(dynamic_cast<Gtk::Entry&>(WidgetOf(form->Get<TextBox>(name))).get_visibility());
    EXPECT_EQ(dynamic_cast<Gtk::Entry&>(WidgetOf(form->Get<TextBox>(name))).get_invisible_char(), U'*');
  }
  EXPECT_FALSE(form->Get<Button>("NewPasswordButton").Enabled());
  EXPECT_FALSE(form->Get<ComboBox>("Combo1_0").Enabled());
  EXPECT_FALSE(form->Get<ComboBox>("Combo1_1").Enabled());
  EXPECT_EQ(form->Get<ComboBox>("Combo1_0").Text(), "Allowable Domains");
  EXPECT_EQ(form->Get<ComboBox>("Combo1_1").Text(), "Dis-allowed Domains");
  EXPECT_FALSE(form->Get<WebBrowser>("Help").Visible());
  EXPECT_TRUE(form->Get<PictureBox>("SkinPanel1").Visible());
  EXPECT_TRUE(form->Get<PictureBox>("SkinPanel2").Visible());
  EXPECT_NO_THROW(form->Get<Timer>("LogoAnimate"));
  EXPECT_NO_THROW(form->Get<SkinForm>("SkinForm1"));
  EXPECT_NO_THROW(form->Get<SkinForm>("SkinForm2"));
  for (const char* name : kBoxes) {
    EXPECT_EQ(form->Get<CheckBox>(name).Value(), 0) << name;
  }
}

TEST_F(OptionsFormTest, FitsASmallScreen) {
  Laid(*Window().get_child());
  EXPECT_LE(form->Width(), 984 * kTwipsPerPixel);
  EXPECT_LE(form->Height(), 545 * kTwipsPerPixel);
  form->Get<TextBox>("HomePage").SetText(std::string(10000, 'w'));
  form->Get<ComboBox>("Combo1_0").SetText(std::string(10000, 'w'));
  Settle();
  EXPECT_LE(Window().get_width(), 1024);
  EXPECT_LE(Window().get_height(), 700);
}

TEST_F(OptionsFormTest, StandsWhereItsOwnerSays) {
  form->SetLeft(200 * kTwipsPerPixel);
  form->SetTop(0);
  EXPECT_TRUE(Until([&] { return PlaceOf(Window()).left == 200; })) << PlaceOf(Window()).left;
  EXPECT_EQ(PlaceOf(Window()).top, 0);
  form->SetVisible(false);
  form->SetLeft(30 * kTwipsPerPixel);
  form->SetVisible(true);
  EXPECT_TRUE(Until([&] { return PlaceOf(Window()).left == 30; })) << PlaceOf(Window()).left;
}

TEST_F(OptionsFormTest, KnowsItsSizeBeforeItIsShown) {
  Laid(*Window().get_child());
  const Twips width = form->Width();
  const Twips height = form->Height();
  form->Unload();
  form = forms.Load("frmOptions");
  constexpr Twips kEdges = 2 * kTwipsPerPixel;
  EXPECT_LE(std::abs(form->Width() - width), kEdges);
  EXPECT_LE(std::abs(form->Height() - height), kEdges);
}

TEST_F(OptionsFormTest, AChangedCaptionIsReadOutOnce) {
  auto& button = form->Get<Button>("Command3");
  button.SetCaption("Close Help");
  EXPECT_EQ(gtk_test_accessible_has_property(GTK_ACCESSIBLE(WidgetOf(button).gobj()),
                                             GTK_ACCESSIBLE_PROPERTY_LABEL),
            FALSE);
}

TEST_F(OptionsFormTest, StaysInFrontWhenTheModalWindowThatOpenedItGoes) {
  const auto base = forms.Load("frmFirstLog");
  base->SetVisible(true);
  Gtk::Window& below = WindowOf(WidgetOf(base->Get<Button>("SkinButton1")));
  { Hands onBase(below); }
  form->SetVisible(false);
  const auto prompt = forms.Load("frmPassword");
  Glib::signal_timeout().connect_once(
      [&] {
        form->SetVisible(true);
        form->BringToFront();
        prompt->Unload();
      },
      50);
  prompt->ShowModal();
  Settle();
  EXPECT_GT(PlaceOf(Window()).height, PlaceOf(below).height);
}

TEST_F(OptionsFormTest, EveryControlIsReachedByTabInReadingOrder) {
  for (const char* name : {"Combo1_0", "Combo1_1", "NewPassword_0", "NewPassword_1"}) {
    WidgetOf(form->FindControl(name, name[0] == 'C' ? ControlKind::ComboBox : ControlKind::TextBox))
        .set_sensitive(true);
  }
  form->Get<Button>("NewPasswordButton").SetEnabled(true);
  std::vector<std::string> order{"Filter_Check",
                                 "Back_Button",
                                 "Popup",
                                 "Disable_Email",
                                 "Sound",
                                 "Tip_OfDay",
                                 "Prevent_IE",
                                 "Prevent_Netscape",
                                 "DB",
                                 "SkinButton4",
                                 "HomePage",
                                 "Skinbutton1",
                                 "Combo1_0",
                                 "b_allowButton_0",
                                 "Combo1_1",
                                 "b_allowButton_1",
                                 "SkinButton2",
                                 "Command1",
                                 "NewPassword_0",
                                 "NewPassword_1",
                                 "NewPasswordButton",
                                 "Record_Navigation",
                                 "Calendar1",
                                 "SkinButton3",
                                 "Command3",
                                 "cmdCancel"};
  Laid(*Window().get_child());
  EXPECT_EQ(Walk(Gtk::DirectionType::TAB_FORWARD), order);
  std::reverse(order.begin(), order.end());
  EXPECT_EQ(Walk(Gtk::DirectionType::TAB_BACKWARD), order);
}

TEST_F(OptionsFormTest, EverythingThatCanBeUsedHasAName) {
  const auto nameless = WidgetsBelow(Window(), [](Gtk::Widget& each) {
    if (auto* button = dynamic_cast<Gtk::Button*>(&each)) {
      return button->get_label().empty() && !HasName(each);
    }
    const bool field =
        dynamic_cast<Gtk::Entry*>(&each) != nullptr || dynamic_cast<Gtk::CheckButton*>(&each) != nullptr ||
        dynamic_cast<Gtk::Calendar*>(&each) != nullptr || dynamic_cast<Gtk::ComboBox*>(&each) != nullptr;
    return field && !HasName(each);
  });
  for (Gtk::Widget* each : nameless) {
    ADD_FAILURE() << G_OBJECT_TYPE_NAME(each->gobj()) << " in " << each->get_parent()->get_css_name();
  }
}

TEST_F(OptionsFormTest, WhatTheHelpPagesCoverIsOutOfReach) {
  Laid(*Window().get_child());
  form->Get<WebBrowser>("Help").SetVisible(true);
  Settle();
  const auto way = Walk(Gtk::DirectionType::TAB_FORWARD);
  EXPECT_EQ(std::count(way.begin(), way.end(), "HomePage"), 0);
  EXPECT_EQ(std::count(way.begin(), way.end(), "Calendar1"), 0);
  EXPECT_EQ(std::count(way.begin(), way.end(), "Help"), 1);
  EXPECT_EQ(std::count(way.begin(), way.end(), "Filter_Check"), 1);
  form->Get<WebBrowser>("Help").SetVisible(false);
  EXPECT_TRUE(form->Get<TextBox>("HomePage").Enabled());
  EXPECT_TRUE(WidgetOf(form->Get<TextBox>("HomePage")).is_sensitive());
}

TEST_F(OptionsFormTest, EscapeAsksToClose) {
  Teller teller("panel", journal);
  form->SetEvents(&teller);
  Press(Window(), {"Escape"});
  EXPECT_TRUE(Until([&] { return !form->Loaded(); }));
  EXPECT_EQ(std::count(journal.begin(), journal.end(), "panel asked 0"), 1);
}

class ListFieldTest : public OptionsFormTest {
 protected:
  ListFieldTest() {
    combo = &form->Get<ComboBox>("Combo1_0");
    combo->AddItem("otters.example.org", 0);
    combo->AddItem("seals.example.org", 1);
    combo->SetText("otters.example.org");
    combo->SetEnabled(true);
    combo->SetFocus();
    combo->OnKeyDown([this](int code) {
      keys.push_back(code);
      return code == kKeyReturn || code == kKeyDelete;
    });
  }

  ComboBox* combo = nullptr;
  std::vector<int> keys;
};

TEST_F(ListFieldTest, OffersEnterAndDeleteAlsoWithTextInTheField) {
  Press(WidgetOf(*combo), {"Home", "Delete", "KP_Delete", "Return", "KP_Enter"});
  EXPECT_TRUE(Until([&] { return keys.size() >= 5; }));
  EXPECT_EQ(keys, (std::vector<int>{36, 46, 46, 13, 13}));
  EXPECT_EQ(combo->Text(), "otters.example.org");
  EXPECT_TRUE(form->Loaded());
}

TEST_F(ListFieldTest, EnterInTheListChoosesAnItemAndIsNotOffered) {
  dynamic_cast<Gtk::ComboBoxText&>(WidgetOf(*combo)).popup();
  Settle();
  Press(WidgetOf(*combo), {"Down", "Return"});
  EXPECT_TRUE(Until([&] { return combo->Text() == "seals.example.org"; })) << combo->Text();
  EXPECT_EQ(std::count(keys.begin(), keys.end(), 13), 0);
  EXPECT_TRUE(form->Loaded());
}

TEST_F(ListFieldTest, AVeryLongEntryDoesNotSpreadTheList) {
  combo->AddItem(std::string(10000, 'w'), 2);
  dynamic_cast<Gtk::ComboBoxText&>(WidgetOf(*combo)).popup();
  Settle();
  const auto lists = WidgetsBelow(
      WidgetOf(*combo), [](Gtk::Widget& each) { return dynamic_cast<Gtk::Popover*>(&each) != nullptr; });
  ASSERT_EQ(lists.size(), 1U);
  EXPECT_LT(lists[0]->get_width(), 700);
  EXPECT_EQ(combo->List(2).size(), 10000U);
}

}  // namespace
}  // namespace kivandra::gtk
