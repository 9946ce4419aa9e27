// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/keyboard_events.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "fakes/fake_keyboard_hook.h"
#include "fakes/journal.h"

namespace kivandra {
namespace {

using fakes::FakeKeyboardHook;
using fakes::Journal;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class KeyboardEventsTest : public ::testing::Test {
 protected:
  KeyboardEventsTest() {
    EXPECT_EQ(mKeyboardHooks::KeyboardHookUsers, 0) << "an earlier test left an object behind";
    EXPECT_EQ(mKeyboardHooks::KeyboardHookHandle, 0U);
  }
  ~KeyboardEventsTest() override {
    EXPECT_FALSE(mKeyboardHooks::KeyboardHookBusy);
    EXPECT_THAT(mKeyboardHooks::KeyboardEventObjects, IsEmpty());
  }

  /// An object that writes down what it hears.
  std::unique_ptr<KeyboardEvents> Listener(const std::string& name) {
    auto made = std::make_unique<KeyboardEvents>(hook);
    made->KeyDown = [this, name](std::int16_t& key, std::int16_t& shift) {
      Hear(name + " down", key, shift);
    };
    made->KeyUp = [this, name](std::int16_t& key, std::int16_t& shift) { Hear(name + " up", key, shift); };
    return made;
  }
  void Hear(const std::string& what, std::int16_t key, std::int16_t shift) {
    heard.push_back(what + " " + std::to_string(key) + "/" + std::to_string(shift));
  }

  Journal journal;
  FakeKeyboardHook hook{journal};
  std::vector<std::string> heard;
};

TEST_F(KeyboardEventsTest, TheFirstObjectInstallsTheHookAndTheLastOneTakesItAway) {
  auto first = Listener("first");
  auto second = Listener("second");
  EXPECT_THAT(journal.lines, ElementsAre("Install hook"));
  EXPECT_EQ(mKeyboardHooks::KeyboardHookUsers, 2);
  first.reset();
  EXPECT_TRUE(hook.Installed());
  second.reset();
  EXPECT_THAT(journal.lines, ElementsAre("Install hook", "Remove hook 1"));
  EXPECT_FALSE(hook.Installed());
  EXPECT_EQ(mKeyboardHooks::KeyboardHookHandle, 0U);
}

TEST_F(KeyboardEventsTest, ANewObjectAfterTheLastHasEndedInstallsTheHookAgain) {
  Listener("first").reset();
  auto second = Listener("second");
  EXPECT_THAT(journal.lines, ElementsAre("Install hook", "Remove hook 1", "Install hook"));
  hook.Press(65);
  EXPECT_THAT(heard, ElementsAre("second down 65/0"));
}

TEST_F(KeyboardEventsTest, AHookThatCannotBeInstalledIsTriedAgainOnlyWhenNoObjectIsLeft) {
  hook.broken = true;
  auto first = Listener("first");
  EXPECT_EQ(mKeyboardHooks::KeyboardHookHandle, 0U);
  hook.broken = false;
  auto second = Listener("second");
  EXPECT_EQ(journal.Count("Install hook"), 1);
  EXPECT_FALSE(hook.Press(65));
  EXPECT_THAT(heard, IsEmpty());
  first.reset();
  second.reset();
  auto third = Listener("third");
  EXPECT_EQ(journal.Count("Install hook"), 2);
  EXPECT_TRUE(hook.Installed());
}

TEST_F(KeyboardEventsTest, EveryWindowHearsAKeyInTheOrderInWhichTheyWereMade) {
  auto first = Listener("first");
  auto second = Listener("second");
  auto third = Listener("third");
  EXPECT_FALSE(hook.Press(112, 5));
  EXPECT_THAT(heard, ElementsAre("first down 112/5", "second down 112/5", "third down 112/5"));
}

TEST_F(KeyboardEventsTest, AReleasedKeyComesAsKeyUp) {
  auto only = Listener("only");
  hook.Press(112);
  hook.Press(112, 2, /*up=*/true);
  EXPECT_THAT(heard, ElementsAre("only down 112/0", "only up 112/2"));
}

TEST_F(KeyboardEventsTest, AWindowWithoutAHandlerIsPassedOver) {
  KeyboardEvents silent(hook);
  auto only = Listener("only");
  EXPECT_FALSE(hook.Press(112));
  EXPECT_FALSE(hook.Press(112, 0, /*up=*/true));
  EXPECT_THAT(heard, ElementsAre("only down 112/0", "only up 112/0"));
}

TEST_F(KeyboardEventsTest, AKeyThatIsOnlyLookedAtIsNotHandled) {
  auto only = Listener("only");
  only->KeyDown = [](std::int16_t& key, std::int16_t&) { key = 0; };
  EXPECT_FALSE(hook.Press(112, 0, false, /*code=*/3));
  EXPECT_FALSE(hook.Press(112, 0, false, /*code=*/-1));
  EXPECT_TRUE(hook.Press(112, 0, false, /*code=*/0));
}

TEST_F(KeyboardEventsTest, ALaterWindowSeesWhatAnEarlierOneHasChanged) {
  auto first = Listener("first");
  auto second = Listener("second");
  first->KeyDown = [](std::int16_t& key, std::int16_t& shift) {
    key = 66;
    shift = 4;
  };
  EXPECT_FALSE(hook.Press(65));
  EXPECT_THAT(heard, ElementsAre("second down 66/4"));
}

TEST_F(KeyboardEventsTest, AKeySetToNothingIsTakenAwayFromTheSystemAfterAllHaveHeard) {
  auto first = Listener("first");
  auto second = Listener("second");
  first->KeyDown = [](std::int16_t& key, std::int16_t&) { key = 0; };
  EXPECT_TRUE(hook.Press(65));
  EXPECT_THAT(heard, ElementsAre("second down 0/0"));
  EXPECT_FALSE(hook.Press(65, 0, /*up=*/true));
}

TEST_F(KeyboardEventsTest, AKeyThatALaterWindowGivesBackGoesOn) {
  auto first = Listener("first");
  auto second = Listener("second");
  first->KeyDown = [](std::int16_t& key, std::int16_t&) { key = 0; };
  second->KeyDown = [](std::int16_t& key, std::int16_t&) { key = 65; };
  EXPECT_FALSE(hook.Press(65));
}

TEST_F(KeyboardEventsTest, AKeyThatComesWhileAHandlerRunsEventsGoesStraightOn) {
  auto first = Listener("first");
  auto second = Listener("second");
  first->KeyDown = [this](std::int16_t& key, std::int16_t& shift) {
    Hear("first down", key, shift);
    EXPECT_FALSE(hook.Press(70));
    EXPECT_TRUE(mKeyboardHooks::KeyboardHookBusy) << "the inner key must leave the guard as it is";
  };
  hook.Press(65);
  EXPECT_THAT(heard, ElementsAre("first down 65/0", "second down 65/0"));
  EXPECT_FALSE(mKeyboardHooks::KeyboardHookBusy);
}

TEST_F(KeyboardEventsTest, AWindowMayEndItselfInItsHandler) {
  auto first = Listener("first");
  auto second = Listener("second");
  const std::string kept = "still there";
  first->KeyDown = [&first, kept, this](std::int16_t&, std::int16_t&) {
    first.reset();
    heard.push_back(kept);
  };
  hook.Press(65);
  EXPECT_THAT(heard, ElementsAre("still there", "second down 65/0"));
}

TEST_F(KeyboardEventsTest, AWindowMayEndOthersInItsHandler) {
  auto first = Listener("first");
  auto second = Listener("second");
  auto third = Listener("third");
  auto fourth = Listener("fourth");
  second->KeyDown = [&](std::int16_t&, std::int16_t&) {
    first.reset();
    third.reset();
  };
  hook.Press(65);
  EXPECT_THAT(heard, ElementsAre("first down 65/0", "fourth down 65/0"));
}

TEST_F(KeyboardEventsTest, AWindowMadeInAHandlerHearsTheKeyLast) {
  auto first = Listener("first");
  auto second = Listener("second");
  std::unique_ptr<KeyboardEvents> third;
  first->KeyDown = [&](std::int16_t&, std::int16_t&) { third = Listener("third"); };
  hook.Press(65);
  EXPECT_THAT(heard, ElementsAre("second down 65/0", "third down 65/0"));
}

TEST_F(KeyboardEventsTest, TheLastWindowMayEndInItsHandlerAndTakesTheHookAway) {
  auto only = Listener("only");
  only->KeyDown = [&only](std::int16_t& key, std::int16_t&) {
    key = 0;
    only.reset();
  };
  EXPECT_TRUE(hook.Press(65));
  EXPECT_THAT(journal.lines, ElementsAre("Install hook", "Remove hook 1"));
  EXPECT_FALSE(mKeyboardHooks::KeyboardHookBusy);
}

}  // namespace
}  // namespace kivandra
