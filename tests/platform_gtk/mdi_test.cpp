// SPDX-License-Identifier: GPL-3.0-or-later
// Child windows in their area.
#include <algorithm>

#include "platform/gtk/mdi/mdi_layout.h"
#include "platform_gtk/window_test.h"

namespace kivandra::gtk {
namespace {

class MdiTest : public WindowTest {
 protected:
  MdiTest() {
    frame = LoadFrame();
    frame->SetVisible(true);
    first = LoadChild(one);
    second = LoadChild(two);
    third = LoadChild(three);
    journal.clear();
  }

  Teller one{"one", journal};
  Teller two{"two", journal};
  Teller three{"three", journal};
  std::shared_ptr<Form> frame;
  std::shared_ptr<Form> first;
  std::shared_ptr<Form> second;
  std::shared_ptr<Form> third;
};

TEST_F(MdiTest, TheLastShownChildIsTheActiveOne) { EXPECT_EQ(area->ActiveForm(), third.get()); }

TEST_F(MdiTest, TellsTheOldOneThenTheNewOne) {
  first->BringToFront();
  EXPECT_EQ(journal, (Journal{"three deactivated", "one activated"}));
  EXPECT_EQ(area->ActiveForm(), first.get());
  first->BringToFront();
  EXPECT_EQ(journal.size(), 2U);
}

TEST_F(MdiTest, ClosingActivatesTheOneBehind) {
  first->BringToFront();
  journal.clear();
  first->Unload();
  EXPECT_EQ(journal, (Journal{"one asked 1", "one unloaded", "three activated"}));
  EXPECT_EQ(area->ActiveForm(), third.get());
}

TEST_F(MdiTest, AHiddenChildIsNeverActive) {
  third->SetVisible(false);
  EXPECT_EQ(journal, (Journal{"three deactivated", "two activated"}));
  third->BringToFront();
  EXPECT_EQ(area->ActiveForm(), second.get());
  second->SetVisible(false);
  first->SetVisible(false);
  EXPECT_EQ(area->ActiveForm(), nullptr);
}

TEST_F(MdiTest, AMinimisedChildIsActiveOnlyIfThereIsNoOther) {
  third->SetWindowState(WindowState::Minimized);
  EXPECT_EQ(area->ActiveForm(), second.get());
  second->Unload();
  EXPECT_EQ(area->ActiveForm(), first.get());
  first->SetWindowState(WindowState::Minimized);
  EXPECT_EQ(area->ActiveForm(), third.get());
}

TEST_F(MdiTest, MinimisingAChildBehindChangesNobodyElse) {
  first->SetWindowState(WindowState::Minimized);
  EXPECT_TRUE(journal.empty());
  EXPECT_EQ(area->ActiveForm(), third.get());
}

TEST_F(MdiTest, AChildMayCloseInsideAnyOfItsEvents) {
  struct Closes : FormEvents {
    Form* form = nullptr;
    void Form_Deactivate() override { form->Unload(); }
  } closes;
  closes.form = third.get();
  third->SetEvents(&closes);
  first->BringToFront();
  Settle();
  EXPECT_FALSE(third->Loaded());
  EXPECT_EQ(area->ActiveForm(), first.get());
}

TEST_F(MdiTest, TakesItsPlaceInTwips) {
  first->SetLeft(100);
  first->SetTop(100);
  first->SetWidth(9000);
  first->SetHeight(6000);
  EXPECT_EQ(first->Left(), 90);  // whole pixels
  EXPECT_EQ(first->Width(), 9000);
  EXPECT_EQ(first->Height(), 6000);
  EXPECT_EQ(one.resizes, 2);
}

TEST_F(MdiTest, RefusesPlacesWhileItIsMaximisedOrMinimised) {
  for (const auto state : {WindowState::Maximized, WindowState::Minimized}) {
    first->SetWindowState(state);
    EXPECT_THROW(first->SetWidth(9000), PlatformError);
    EXPECT_THROW(first->SetTop(0), PlatformError);
  }
  first->SetWindowState(WindowState::Normal);
  EXPECT_NO_THROW(first->SetWidth(9000));
}

TEST_F(MdiTest, AMaximisedChildFillsTheAreaAtEverySize) {
  first->SetWindowState(WindowState::Maximized);
  Settle();
  EXPECT_EQ(first->Width(), frame->ScaleWidth());
  EXPECT_EQ(first->Height(), frame->ScaleHeight());
  const Twips before = frame->ScaleWidth();
  one.resizes = 0;
  frame->SetWidth(frame->Width() - 3000);
  EXPECT_TRUE(Until([&] { return frame->ScaleWidth() < before - 2000 && one.resizes > 0; }));
  EXPECT_EQ(first->Width(), frame->ScaleWidth());
}

TEST_F(MdiTest, CascadingRestoresAndStepsTheFrontOneLast) {
  first->SetWindowState(WindowState::Maximized);
  area->SendMessageA(WM_MDICASCADE, 0, 0);
  EXPECT_EQ(first->WindowState(), WindowState::Normal);
  EXPECT_EQ(area->ActiveForm(), first.get());
  EXPECT_EQ(first->Left() - third->Left(), 32 * kTwipsPerPixel);
  EXPECT_EQ(first->Top() - third->Top(), 36 * kTwipsPerPixel);
}

TEST_F(MdiTest, TilingLeavesMinimisedChildrenAlone) {
  second->SetWindowState(WindowState::Minimized);
  area->SendMessageA(WM_MDITILE, 1, 1);
  EXPECT_EQ(second->WindowState(), WindowState::Minimized);
  EXPECT_EQ(first->Width(), frame->ScaleWidth());
  EXPECT_EQ(third->Top(), 0);
  EXPECT_EQ(first->Top(), third->Height());
}

TEST_F(MdiTest, KnowsItsRoomBeforeTheFrameIsShown) {
  frame->Unload();
  const auto later = LoadFrame();
  EXPECT_GT(later->ScaleWidth(), 900 * kTwipsPerPixel);
  EXPECT_GT(later->ScaleHeight(), 500 * kTwipsPerPixel);
}

TEST(MdiLayoutTest, TilesFillTheAreaWithoutGapsOrOverlaps) {
  for (const bool horizontal : {false, true}) {
    for (int count = 1; count <= 12; ++count) {
      long covered = 0;
      const auto places = mdi::Tiles(1001, 701, count, horizontal);
      ASSERT_EQ(places.size(), static_cast<std::size_t>(count));
      for (const auto& place : places) {
        covered += long{place.get_width()} * place.get_height();
        EXPECT_TRUE(place.has_zero_area() == false && place.get_x() >= 0 && place.get_y() >= 0);
        for (const auto& other : places) {
          EXPECT_TRUE(&place == &other || !place.intersects(other)) << count;
        }
      }
      EXPECT_EQ(covered, 1001L * 701) << count << (horizontal ? " horizontally" : " vertically");
    }
  }
}

TEST(MdiLayoutTest, TitlesOfMinimisedChildrenFillRowsFromTheFoot) {
  EXPECT_EQ(mdi::IconPlace(1000, 600, 0).get_x(), 4);
  EXPECT_EQ(mdi::IconPlace(1000, 600, 3).get_y(), mdi::IconPlace(1000, 600, 0).get_y());
  EXPECT_LT(mdi::IconPlace(1000, 600, 4).get_y(), mdi::IconPlace(1000, 600, 0).get_y());
  EXPECT_EQ(mdi::IconPlace(100, 600, 1).get_x(), 4);  // an area narrower than one title
}

TEST(MdiLayoutTest, ACascadeBeginsAnewBeforeItLeavesTheArea) {
  for (int number = 0; number < 20; ++number) {
    const auto place = mdi::CascadePlace(1200, 560, number);
    EXPECT_LE(place.get_x() + place.get_width(), 1200) << number;
    EXPECT_LE(place.get_y() + place.get_height(), 560) << number;
  }
}

}  // namespace
}  // namespace kivandra::gtk
