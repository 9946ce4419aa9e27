// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/flat_combo_box.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>

#include "fakes/fake_controls.h"
#include "fakes/fake_subclass.h"
#include "support/attempt.h"

namespace kivandra {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;

constexpr std::uint32_t kHighlight = 0x80000014;
constexpr std::uint32_t kShadow = 0x80000010;
constexpr std::uint32_t kFace = 0x8000000F;
constexpr WindowHandle kBox = fakes::FakeSubclassCalls::kBox;
constexpr WindowHandle kEdit = fakes::FakeSubclassCalls::kEdit;

class FakeNamedControl : public fakes::FakeControl, public NamedControl {
 public:
  FakeNamedControl(std::string typeName, fakes::Journal& journal)
      : FakeControl("lst", journal), typeName_(std::move(typeName)) {}
  [[nodiscard]] std::string TypeName() const override { return typeName_; }

 private:
  std::string typeName_;
};

class FlatComboBoxTest : public ::testing::Test {
 protected:
  void Attach() { flat->Attach(combo); }
  int Send(unsigned message) { return calls.Send(kBox, message); }
  void PutCursorInside() { calls.cursor = {150, 210}; }
  void PutCursorOutside() { calls.cursor = {99, 210}; }
  [[nodiscard]] std::uint32_t At(long x, long y) const { return calls.pixels.at({x, y}); }
  void ExpectHot() {
    EXPECT_EQ(At(0, 0), kHighlight);
    EXPECT_EQ(At(0, 10), kHighlight);
    EXPECT_EQ(At(79, 10), kShadow);
    EXPECT_EQ(At(40, 19), kShadow);
    EXPECT_EQ(At(1, 1), kFace);
  }
  void ExpectIdle() { EXPECT_THAT(calls.Colors(), ElementsAre(kFace)); }

  fakes::Journal journal;
  fakes::FakeSubclassCalls calls{journal};
  fakes::FakeComboBox combo{"cbo", journal};
  std::unique_ptr<cboFlat> flat = std::make_unique<cboFlat>(calls, "kivandra");
};

TEST_F(FlatComboBoxTest, HearsTheMessagesOfTheBoxAndTheMouseOnItsField) {
  Attach();
  EXPECT_THAT(calls.attached, ElementsAre(Pair(kBox, 15U), Pair(kBox, 275U), Pair(kBox, 512U),
                                          Pair(kBox, 513U), Pair(kBox, 514U), Pair(kEdit, 512U)));
}

TEST_F(FlatComboBoxTest, ABoxWithoutAFieldHasNoChildToHear) {
  calls.style = 3;
  Attach();
  EXPECT_EQ(calls.attached.size(), 5U);
  EXPECT_FALSE(journal.Has("FirstChild"));
}

TEST_F(FlatComboBoxTest, AnOwnerDrawnListIsTakenByItsTypeName) {
  FakeNamedControl list("OwnerDrawComboList", journal);
  flat->Attach(list);
  EXPECT_FALSE(calls.attached.empty());
}

TEST_F(FlatComboBoxTest, ATextBoxRaisesTheError) {
  fakes::FakeTextBox text("txt", journal);
  try {
    flat->Attach(text);
    FAIL() << "nothing was raised";
  } catch (const PlatformError& error) {
    EXPECT_EQ(static_cast<std::uint32_t>(error.Number()), 0x80040419U);
    EXPECT_STREQ(error.what(),
                 "Incorrect control type passed to 'Attach' parameter - must be of type ComboBox.");
    EXPECT_EQ(error.Source(), "kivandra.cFlatComboBox");
  }
  EXPECT_THAT(calls.attached, IsEmpty());
}

TEST_F(FlatComboBoxTest, AnotherTypeNameRaisesTheErrorAndLeavesTheBoxAttached) {
  Attach();
  FakeNamedControl list("ownerdrawcombolist", journal);
  EXPECT_THROW(flat->Attach(list), PlatformError);
  EXPECT_EQ(calls.attached.size(), 6U);
}

TEST_F(FlatComboBoxTest, DestroyStopsTheSubclassingAndSoDoesTheObjectsEnd) {
  Attach();
  flat->Destroy();
  EXPECT_THAT(calls.attached, IsEmpty());
  const long calledSoFar = journal.calls;
  flat->Destroy();
  flat->OnPaint();
  EXPECT_EQ(journal.calls, calledSoFar);
  Attach();
  PutCursorInside();
  Send(WM_MOUSEMOVE);
  flat.reset();
  EXPECT_THAT(calls.attached, IsEmpty());
  EXPECT_FALSE(calls.timer);
}

TEST_F(FlatComboBoxTest, OnlyPaintingIsAnsweredByTwo) {
  Attach();
  EXPECT_EQ(Send(WM_PAINT), 2);
  for (const unsigned message : {WM_MOUSEMOVE, 513U, 514U, WM_TIMER}) {
    EXPECT_EQ(Send(message), 1) << message;
    EXPECT_EQ(calls.lastResult, 0) << message;
  }
  EXPECT_EQ(flat->ISubclass_MsgResponse(), 1);
  EXPECT_EQ(flat->ISubclass_WindowProc(kBox, 9999, 1, 2), 0);
}

TEST_F(FlatComboBoxTest, TheMouseOnBoxOrFieldStartsTheTimerOnTheBox) {
  Attach();
  for (const WindowHandle window : {kBox, kEdit}) {
    journal.Clear();
    calls.Send(window, WM_MOUSEMOVE);
    EXPECT_THAT(journal.lines, ElementsAre("SetTimer 7, 1, 10"));
  }
}

TEST_F(FlatComboBoxTest, UnderTheMouseItRises) {
  Attach();
  PutCursorInside();
  Send(WM_MOUSEMOVE);
  Send(WM_TIMER);
  ExpectHot();
  EXPECT_TRUE(calls.timer);
}

TEST_F(FlatComboBoxTest, MovingTheMouseOffEndsTheTimerAndLeavesItFlat) {
  Attach();
  PutCursorInside();
  Send(WM_MOUSEMOVE);
  Send(WM_TIMER);
  PutCursorOutside();
  Send(WM_TIMER);
  EXPECT_FALSE(calls.timer);
  ExpectIdle();
}

TEST_F(FlatComboBoxTest, TheEdgesOfTheBoxAreCountedOnce) {
  Attach();
  for (const auto& [cursor, inside] : std::vector<std::pair<Point, bool>>{{{100, 200}, true},
                                                                          {{179, 219}, true},
                                                                          {{180, 210}, false},
                                                                          {{150, 220}, false},
                                                                          {{150, 199}, false}}) {
    calls.cursor = cursor;
    calls.timer = true;
    Send(WM_TIMER);
    EXPECT_EQ(calls.timer, inside) << cursor.x << "," << cursor.y;
  }
}

TEST_F(FlatComboBoxTest, APressTurnsTheHoverTestOffForGood) {
  Attach();
  PutCursorInside();
  Send(WM_MOUSEMOVE);
  Send(513U);
  Send(514U);
  journal.Clear();
  PutCursorOutside();
  Send(WM_TIMER);
  EXPECT_THAT(journal.lines, IsEmpty());
  EXPECT_TRUE(calls.timer);
}

TEST_F(FlatComboBoxTest, ReleasingTheButtonPaintsTheBoxAnew) {
  Attach();
  journal.Clear();
  Send(514U);
  EXPECT_THAT(journal.lines, ElementsAre("InvalidateRect 7, erase"));
}

TEST_F(FlatComboBoxTest, PaintsFlatWhenIdleAndRaisedWithMouseOrFocus) {
  Attach();
  PutCursorOutside();
  Send(WM_PAINT);
  ExpectIdle();
  for (const WindowHandle focus : {kBox, kEdit}) {
    calls.focus = focus;
    calls.pixels.clear();
    Send(WM_PAINT);
    ExpectHot();
  }
  calls.focus = 99;
  Send(WM_PAINT);
  ExpectIdle();
  PutCursorInside();
  flat->OnPaint();
  ExpectHot();
}

TEST_F(FlatComboBoxTest, ABoxThatIsSwitchedOffNeverRises) {
  Attach();
  calls.enabled = false;
  PutCursorInside();
  Send(WM_TIMER);
  ExpectIdle();
}

TEST_F(FlatComboBoxTest, TheRingsLieInsideOfTheBox) {
  Attach();
  for (const Rect& size :
       {Rect{0, 0, 80, 20}, Rect{0, 0, 5, 5}, Rect{0, 0, 2, 2}, Rect{0, 0, 1, 1}, Rect{}}) {
    calls.client = size;
    calls.pixels.clear();
    Send(WM_PAINT);
    for (const auto& [place, color] : calls.pixels) {
      EXPECT_TRUE(place.first >= 0 && place.second >= 0 && place.first < size.right &&
                  place.second < size.bottom);
    }
  }
}

TEST_F(FlatComboBoxTest, TellsWhetherTheListIsOpen) {
  EXPECT_FALSE(flat->DroppedDown());
  calls.dropped = true;
  EXPECT_FALSE(flat->DroppedDown());
  Attach();
  EXPECT_TRUE(flat->DroppedDown());
}

TEST_F(FlatComboBoxTest, AnyCallMayFailAndNothingIsLeftBehind) {
  const auto use = [&] {
    attempt([&] { Attach(); });
    PutCursorInside();
    for (const unsigned message : {WM_PAINT, WM_MOUSEMOVE, WM_TIMER, 514U, 513U}) {
      Send(message);
    }
    (void)flat->DroppedDown();
  };
  use();
  const long count = journal.calls;
  ASSERT_GT(count, 40);
  for (long call = 1; call <= count; ++call) {
    SCOPED_TRACE(call);
    flat = std::make_unique<cboFlat>(calls, "kivandra");
    journal.calls = 0;
    journal.failAt = call;
    use();
    EXPECT_EQ(calls.drawings, 0);
    EXPECT_THAT(calls.pens, IsEmpty());
    journal.failAt = 0;
    flat.reset();
    EXPECT_THAT(calls.attached, IsEmpty());
  }
}

}  // namespace
}  // namespace kivandra
