// SPDX-License-Identifier: GPL-3.0-or-later
// The calendar: choosing a day is told, looking around is not.
#include "platform/calendar.h"

#include "platform_gtk/control_test.h"

namespace kivandra::gtk {
namespace {

class CalendarTest : public ControlTest {
 protected:
  CalendarTest() {
    Show("frmOptions");
    calendar = &form->Get<Calendar>("Calendar1");
    calendar->OnClick([this] { chosen.push_back(Date()); });
    Days().select_day(Glib::DateTime::create_local(2002, 1, 24, 12, 0, 0));
    Settle();
  }

  Gtk::Calendar& Days() { return dynamic_cast<Gtk::Calendar&>(WidgetOf(*calendar)); }
  [[nodiscard]] std::string Date() const {
    return std::to_string(calendar->Day()) + "/" + std::to_string(calendar->Month()) + "/" +
           std::to_string(calendar->Year());
  }
  /// The day's label in the month on show, or of a neighbour's.
  Gtk::Widget& DayLabel(const std::string& day, bool otherMonth = false) {
    const auto found = WidgetsBelow(Days(), [&](Gtk::Widget& each) {
      const auto* label = dynamic_cast<Gtk::Label*>(&each);
      return label != nullptr && each.has_css_class("day-number") &&
             each.has_css_class("other-month") == otherMonth && label->get_text().raw() == day;
    });
    return *found.at(0);
  }
  std::vector<Gtk::Widget*> Buttons() {
    return WidgetsBelow(Days(),
                        [](Gtk::Widget& each) { return dynamic_cast<Gtk::Button*>(&each) != nullptr; });
  }

  Calendar* calendar = nullptr;
  Journal chosen;
};

TEST_F(CalendarTest, CountsDaysAndMonthsFromOne) { EXPECT_EQ(Date(), "24/1/2002"); }

TEST_F(CalendarTest, TodayIsChosenWithoutAnEvent) {
  const auto before = Glib::DateTime::create_now_local();
  calendar->Today();
  const auto after = Glib::DateTime::create_now_local();
  EXPECT_TRUE(Date() == before.format("%-d/%-m/%Y").raw() || Date() == after.format("%-d/%-m/%Y").raw());
  EXPECT_TRUE(chosen.empty());
}

TEST_F(CalendarTest, AClickChoosesADay) {
  Click(DayLabel("15"));
  EXPECT_TRUE(Until([&] { return chosen == Journal{"15/1/2002"}; }));
}

TEST_F(CalendarTest, AClickOnTheChosenDayIsToldToo) {
  Click(DayLabel("24"));
  Click(DayLabel("24"));
  EXPECT_TRUE(Until([&] { return chosen == (Journal{"24/1/2002", "24/1/2002"}); }));
}

TEST_F(CalendarTest, ADayOfTheNextMonthCanBeClicked) {
  Click(DayLabel("2", true));
  EXPECT_TRUE(Until([&] { return chosen == Journal{"2/2/2002"}; }));
}

TEST_F(CalendarTest, ARightClickChoosesNothing) {
  Click(DayLabel("15"), 3);
  EXPECT_TRUE(chosen.empty());
}

TEST_F(CalendarTest, TurningMonthsAndYearsTellsNothing) {
  for (Gtk::Widget* button : Buttons()) {
    Click(*button);
  }
  EXPECT_EQ(Date(), "24/1/2002");  // there and back again, twice
  Click(*Buttons().at(0));
  EXPECT_TRUE(Until([&] { return Date() == "24/12/2001"; }));
  EXPECT_TRUE(chosen.empty());
}

TEST_F(CalendarTest, WalkingByKeysTellsNothing) {
  const struct {
    const char* key;
    const char* date;
  } kSteps[] = {
      {"Right", "25/1/2002"},     {"Down", "1/2/2002"},      {"Left", "31/1/2002"},  {"Up", "24/1/2002"},
      {"Next", "24/2/2002"},      {"End", "28/2/2002"},      {"Home", "1/2/2002"},   {"Prior", "1/1/2002"},
      {"ctrl+Prior", "1/1/2001"}, {"ctrl+Next", "1/1/2002"}, {"Left", "31/12/2001"},
  };
  calendar->SetFocus();
  for (const auto& step : kSteps) {
    Press(Days(), {step.key});
    EXPECT_TRUE(Until([&] { return Date() == step.date; })) << step.key << " leads to " << Date();
  }
  EXPECT_TRUE(chosen.empty());
}

TEST_F(CalendarTest, EnterAndTheSpaceBarChooseTheDay) {
  calendar->SetFocus();
  Press(Days(), {"Right", "Return", "Right", "space", "KP_Enter"});
  EXPECT_TRUE(Until([&] { return chosen.size() >= 3; }));
  EXPECT_EQ(chosen, (Journal{"25/1/2002", "26/1/2002", "26/1/2002"}));
}

TEST_F(CalendarTest, EnterOnAnArrowButtonTurnsTheMonthAlone) {
  Gtk::Widget& next = *Buttons().at(1);
  next.grab_focus();
  Press(next, {"Return"});
  EXPECT_TRUE(Until([&] { return Date() == "24/2/2002"; }));
  EXPECT_TRUE(chosen.empty());
}

TEST_F(CalendarTest, ItsButtonsHaveNames) {
  const auto buttons = Buttons();
  ASSERT_EQ(buttons.size(), 4U);
  EXPECT_TRUE(IsNamed(*buttons[0], "Previous month"));
  EXPECT_TRUE(IsNamed(*buttons[1], "Next month"));
  EXPECT_TRUE(IsNamed(*buttons[2], "Previous year"));
  EXPECT_TRUE(IsNamed(*buttons[3], "Next year"));
}

TEST_F(CalendarTest, ItsWindowMayCloseInItsClick) {
  calendar->OnClick([this] { form->Unload(); });
  Click(DayLabel("15"));
  EXPECT_TRUE(Until([&] { return !form->Loaded(); }));
  EXPECT_THROW((void)calendar->Day(), PlatformError);
}

}  // namespace
}  // namespace kivandra::gtk
