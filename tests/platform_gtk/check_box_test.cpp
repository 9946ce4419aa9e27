// SPDX-License-Identifier: GPL-3.0-or-later
// Check boxes: what ticks them, and what they tell.
#include "platform/check_box.h"

#include "platform/label.h"
#include "platform_gtk/control_test.h"

namespace kivandra::gtk {
namespace {

class CheckBoxTest : public ControlTest {
 protected:
  CheckBoxTest() {
    Show("frmOptions");
    box = &form->Get<CheckBox>("Popup");
    box->OnClick([this] { values.push_back(box->Value()); });
  }

  CheckBox* box = nullptr;
  std::vector<int> values;  // at each click
};

using Values = std::vector<int>;

TEST_F(CheckBoxTest, AChangeByTheProgramIsToldAtOnce) {
  EXPECT_EQ(box->Value(), 0);
  box->SetValue(1);
  EXPECT_EQ(values, (Values{1}));
  box->SetValue(0);
  EXPECT_EQ(values, (Values{1, 0}));
}

TEST_F(CheckBoxTest, TheSameValueAgainIsNoChange) {
  box->SetValue(0);
  EXPECT_TRUE(values.empty());
  box->SetValue(7);
  EXPECT_EQ(box->Value(), 1);
  box->SetValue(-1);
  EXPECT_EQ(values, (Values{1}));
}

TEST_F(CheckBoxTest, AClickOnTheBoxTicksIt) {
  Click(WidgetOf(*box));
  EXPECT_TRUE(Until([&] { return values == Values{1}; }));
}

TEST_F(CheckBoxTest, AClickOnTheWordsBesideItTicksItToo) {
  Click(WidgetOf(form->Get<Label>("SkinLabel1_2")));
  EXPECT_TRUE(Until([&] { return values == Values{1}; }));
  Click(WidgetOf(form->Get<Label>("SkinLabel1_2")));
  EXPECT_TRUE(Until([&] { return values == (Values{1, 0}); }));
}

TEST_F(CheckBoxTest, TheSpaceBarTicksIt) {
  box->SetFocus();
  Press(WidgetOf(*box), {"space"});
  EXPECT_TRUE(Until([&] { return values == Values{1}; }));
}

TEST_F(CheckBoxTest, IsNamedAfterTheWordsBesideIt) {
  EXPECT_TRUE(IsNamed(WidgetOf(*box), "Disable pop-ups"));
  EXPECT_TRUE(
      IsNamed(WidgetOf(form->Get<CheckBox>("Back_Button")), "Do Not Filter on Back Button or Links Bar"));
}

TEST_F(CheckBoxTest, ItsWindowMayCloseInItsClick) {
  box->OnClick([this] { form->Unload(); });
  box->SetValue(1);
  EXPECT_THROW((void)box->Value(), PlatformError);
  EXPECT_THROW(box->SetValue(0), PlatformError);
}

}  // namespace
}  // namespace kivandra::gtk
