// SPDX-License-Identifier: GPL-3.0-or-later
// Navigations whose page is on its way: several at once, and all the ways in which one can be cut off.
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "filter/gate_world.h"

namespace kivandra {
namespace {

using test::FakeGateWindow;
using test::GateWorld;

const std::string kA = "http://a.example/";
const std::string kB = "http://b.example/";
const std::string kForbidden = "http://porn.example/";
const std::string kCleanPage = "<p>Whales</p>";
const std::string kBadPage = "<p>porn</p>";
const std::string kMailBox = "Sorry, Mail has been dis-abled";

class HeldNavigation : public testing::Test, protected GateWorld {};

TEST_F(HeldNavigation, WaitsForItsPageAndIsThenAnswered) {
  const auto navigation = Ask(kA);
  EXPECT_TRUE(navigation->Pending());
  EXPECT_EQ(gate->HeldNavigations(), 1U);
  inet1.Answer(kA, kCleanPage);
  EXPECT_TRUE(navigation->Allowed());
  EXPECT_EQ(gate->HeldNavigations(), 0U);
}

TEST_F(HeldNavigation, IsKeptAliveByTheGateAlone) {
  const std::weak_ptr<fakes::FakeNavigation> navigation = Ask(kA);
  EXPECT_FALSE(navigation.expired());
  inet1.Answer(kA, kCleanPage);
  EXPECT_TRUE(journal.Has("allow " + kA));
  EXPECT_TRUE(navigation.expired());
}

TEST_F(HeldNavigation, IsBlockedByAnEmptyPage) {
  const auto navigation = Ask(kA);
  inet1.Answer(kA, "");
  EXPECT_FALSE(navigation->Allowed());
  EXPECT_EQ(BlockedURL, kA);
}

TEST_F(HeldNavigation, IsBlockedAtOnceIfTheFetchCannotEvenBegin) {
  journal.failAt = 6;
  const auto navigation = Ask(kA);
  ASSERT_TRUE(journal.Has("FAILED FetchPage \"" + kA + "\""));
  EXPECT_FALSE(navigation->Pending());
  EXPECT_EQ(BlockedURL, kA);
  EXPECT_EQ(gate->HeldNavigations(), 0U);
}

TEST_F(HeldNavigation, PassesWithoutAPageIfTheTableIsFullToTheLastScannedRow) {
  for (std::size_t row = 1; row <= 199; ++row) {
    BadWords[row] = "w" + std::to_string(row);
  }
  const auto navigation = Ask("x");
  inet1.Answer("x", "");
  EXPECT_TRUE(navigation->Allowed());
}

TEST_F(HeldNavigation, IsJudgedByAHugePageToItsLastWord) {
  std::string page(std::size_t{32} << 20, 'x');
  page += " porn";
  const auto bad = Ask(kA);
  inet1.Answer(kA, page);
  EXPECT_FALSE(bad->Allowed());
  page += "y";
  const auto clean = Ask(kB);
  inet1.Answer(kB, page);
  EXPECT_TRUE(clean->Allowed());
}

TEST_F(HeldNavigation, LetsOtherWindowsBeJudgedMeanwhile) {
  const auto other = std::make_shared<FakeGateWindow>("other", journal);
  const auto first = Ask(kA);
  const auto second = Ask(kB, other);
  EXPECT_FALSE(Ask(kForbidden, other)->Allowed());
  EXPECT_TRUE(first->Pending());
  EXPECT_TRUE(second->Pending());
  // The answers come the other way round, and each reaches its own address and window.
  inet1.Answer(kB, kCleanPage);
  EXPECT_TRUE(second->Allowed());
  EXPECT_EQ(other->addressText, kB);
  EXPECT_TRUE(first->Pending());
  inet1.Answer(kA, kBadPage);
  EXPECT_FALSE(first->Allowed());
  EXPECT_EQ(window->addressText, "");
  EXPECT_EQ(other->addressText, kB);
}

TEST_F(HeldNavigation, KeepsTwoFramesOfTheSameAddressApart) {
  const auto first = Ask(kA);
  const auto second = Ask(kA);
  inet1.Answer(kA, kCleanPage);
  EXPECT_TRUE(first->Allowed());
  EXPECT_TRUE(second->Pending());
  inet1.Answer(kA, kBadPage);
  EXPECT_FALSE(second->Allowed());
}

TEST_F(HeldNavigation, IsRefusedWithNoEffectIfItsWindowHasGone) {
  const auto navigation = Ask(kA);
  window.reset();
  journal.Clear();
  inet1.Answer(kA, kBadPage);
  EXPECT_EQ(journal.lines, std::vector<std::string>{"refuse " + kA});
  EXPECT_FALSE(navigation->Allowed());
  EXPECT_FALSE(SessionAllowPending);
  EXPECT_EQ(BlockedURL, "");
}

TEST_F(HeldNavigation, IsRefusedByAGoneWindowEvenIfItsPageIsClean) {
  const auto navigation = Ask(kA);
  window.reset();
  inet1.Answer(kA, kCleanPage);
  EXPECT_FALSE(navigation->Pending());
  EXPECT_FALSE(navigation->Allowed());
}

TEST_F(HeldNavigation, DoesNotKeepItsWindowAlive) {
  const std::weak_ptr<FakeGateWindow> weak = window;
  Ask(kA);
  window.reset();
  EXPECT_TRUE(weak.expired());
}

TEST_F(HeldNavigation, DropsItsFetchWhenTheEngineGivesTheQuestionUp) {
  const auto navigation = Ask(kA);
  navigation->Drop();
  EXPECT_EQ(gate->HeldNavigations(), 0U);
  EXPECT_FALSE(inet1.Waits(kA));
  journal.Clear();
  EXPECT_FALSE(inet1.Answer(kA, kBadPage));
  EXPECT_TRUE(journal.lines.empty());
  EXPECT_FALSE(SessionAllowPending);
}

TEST_F(HeldNavigation, HasNoEffectIfItWasAnsweredByAnother) {
  const auto navigation = Ask(kA);
  navigation->Refuse();
  journal.Clear();
  inet1.Answer(kA, kCleanPage);
  EXPECT_TRUE(journal.lines.empty());
  EXPECT_FALSE(navigation->Allowed());
}

TEST_F(HeldNavigation, IsRefusedWhenTheGateEnds) {
  const auto navigation = Ask(kA);
  gate.reset();
  EXPECT_FALSE(navigation->Pending());
  EXPECT_FALSE(navigation->Allowed());
  EXPECT_FALSE(inet1.Waits(kA));
  navigation->Drop();
}

TEST_F(HeldNavigation, CanBeDroppedByTheGateThatHasEnded) {
  // A navigation that lives longer than the gate and is given up later reaches nobody.
  const auto navigation = std::make_shared<fakes::FakeNavigation>(kA, journal);
  gate->BeforeNavigate2(window, navigation);
  gate.reset();
  navigation->Drop();
  EXPECT_FALSE(navigation->Allowed());
}

TEST_F(HeldNavigation, IsDroppedByTheStopOfABlockInItsWindow) {
  const auto page = Ask(kA);
  const auto frameOfThePage = Ask(kB);
  window->whenStopped = [&] {
    page->Drop();
    frameOfThePage->Drop();
  };
  inet1.Answer(kA, kBadPage);
  EXPECT_FALSE(page->Allowed());
  EXPECT_FALSE(frameOfThePage->Allowed());
  EXPECT_EQ(gate->HeldNavigations(), 0U);
  EXPECT_FALSE(inet1.Waits(kB));
  EXPECT_EQ(journal.Count("w.Stop"), 1);
  EXPECT_EQ(BlockedURL, kA);
}

TEST_F(HeldNavigation, OfAnotherWindowSurvivesABlock) {
  const auto other = std::make_shared<FakeGateWindow>("other", journal);
  const auto waiting = Ask(kB, other);
  Ask(kForbidden);
  EXPECT_TRUE(waiting->Pending());
  inet1.Answer(kB, kCleanPage);
  EXPECT_TRUE(waiting->Allowed());
}

TEST_F(HeldNavigation, CountsAWordThatIsAddedWhileThePageIsOnItsWay) {
  const auto navigation = Ask(kA);
  BadWords[3] = "whales";
  inet1.Answer(kA, kCleanPage);
  EXPECT_FALSE(navigation->Allowed());
}

TEST_F(HeldNavigation, IsNotTouchedByTheFilterBeingSwitchedOffMeanwhile) {
  const auto navigation = Ask(kA);
  registry.PutSetting("F_C", "0");
  frame.startUp = true;
  BackBypass = true;
  AllowedDomains[1] = kA;
  inet1.Answer(kA, kBadPage);
  EXPECT_FALSE(navigation->Allowed());
}

TEST_F(HeldNavigation, OfAFrameMakesALaterBlockLookLikeAnyOther) {
  const auto navigation = Ask(kA);
  EXPECT_FALSE(frame.lockEnabled);
  inet1.Answer(kA, kBadPage);
  EXPECT_TRUE(frame.lockEnabled);
  EXPECT_TRUE(SessionAllowPending);
}

TEST_F(HeldNavigation, IsJudgedWhileTheBoxOfARefusedMailLinkStandsOpen) {
  const auto waiting = Ask(kA);
  registry.PutSetting("D_EM", "1");
  boxes.Expect(kMailBox, kMsgOkOnly, "", MsgBoxResult::Ok, [&] {
    inet1.Answer(kA, kCleanPage);
    EXPECT_FALSE(Ask(kForbidden)->Allowed());
  });
  const auto mail = Ask("mailto:a@b");
  EXPECT_FALSE(mail->Allowed());
  EXPECT_TRUE(waiting->Allowed());
  EXPECT_EQ(BlockedURL, kForbidden);
}

TEST_F(HeldNavigation, IsRefusedWhenTheGateEndsInsideTheBoxOfARefusedMailLink) {
  const auto waiting = Ask(kA);
  registry.PutSetting("D_EM", "1");
  boxes.Expect(kMailBox, kMsgOkOnly, "", MsgBoxResult::Ok, [&] { gate.reset(); });
  const auto mail = std::make_shared<fakes::FakeNavigation>("mailto:a@b", journal);
  gate->BeforeNavigate2(window, mail);
  EXPECT_FALSE(mail->Allowed());
  EXPECT_FALSE(mail->Pending());
  EXPECT_FALSE(waiting->Pending());
  EXPECT_FALSE(waiting->Allowed());
}

TEST_F(HeldNavigation, IsRefusedByTheNextBoxIfItIsAMailLinkInsideTheBoxOfAnother) {
  constexpr int kLinks = 500;
  registry.PutSetting("D_EM", "1");
  int open = 0;
  std::vector<std::shared_ptr<fakes::FakeNavigation>> inside;
  boxes.Expect(kMailBox, kMsgOkOnly, "", MsgBoxResult::Ok, [&] {
    ++open;
    for (int link = 1; link < kLinks; ++link) {
      inside.push_back(Ask("mailto:a@b"));
      EXPECT_TRUE(inside.back()->Pending()) << "it waits for its box";
    }
    --open;
  });
  for (int link = 1; link < kLinks; ++link) {
    boxes.Expect(kMailBox, kMsgOkOnly, "", MsgBoxResult::Ok, [&] { EXPECT_EQ(open, 0) << "boxes pile up"; });
  }
  const auto first = Ask("mailto:a@b");
  EXPECT_FALSE(first->Allowed());
  for (const auto& link : inside) {
    EXPECT_FALSE(link->Pending());
    EXPECT_FALSE(link->Allowed());
  }
  // Each box closes before its link is refused and before the next one opens.
  const auto boxLines = journal.With("MsgBox");
  ASSERT_EQ(boxLines.size(), std::size_t{kLinks});
  const std::vector<std::string> end(journal.lines.end() - 4, journal.lines.end());
  EXPECT_EQ(end,
            (std::vector<std::string>{boxLines[0], "refuse mailto:a@b", boxLines[0], "refuse mailto:a@b"}));
}

TEST_F(HeldNavigation, GetsNoBoxIfItIsAMailLinkThatIsGivenUpBeforeItsBoxOpens) {
  registry.PutSetting("D_EM", "1");
  boxes.Expect(kMailBox, kMsgOkOnly, "", MsgBoxResult::Ok, [&] { Ask("mailto:c@d")->Drop(); });
  Ask("mailto:a@b");
  EXPECT_EQ(journal.With("MsgBox").size(), 1U);
}

TEST_F(HeldNavigation, IsRefusedWithoutItsBoxIfTheGateEndsInsideTheBoxOfAnotherMailLink) {
  registry.PutSetting("D_EM", "1");
  std::shared_ptr<fakes::FakeNavigation> inside;
  boxes.Expect(kMailBox, kMsgOkOnly, "", MsgBoxResult::Ok, [&] {
    inside = Ask("mailto:c@d");
    gate.reset();
  });
  const auto first = Ask("mailto:a@b");
  EXPECT_FALSE(first->Pending());
  EXPECT_FALSE(first->Allowed());
  EXPECT_FALSE(inside->Pending());
  EXPECT_FALSE(inside->Allowed());
}

TEST_F(HeldNavigation, LeavesNoMailLinkWaitingWhenTheProgramItselfFailsInABox) {
  registry.PutSetting("D_EM", "1");
  std::shared_ptr<fakes::FakeNavigation> inside;
  boxes.Expect(kMailBox, kMsgOkOnly, "", MsgBoxResult::Ok, [&] {
    inside = Ask("mailto:c@d");
    throw std::logic_error("a fault");
  });
  EXPECT_THROW(Ask("mailto:a@b"), std::logic_error);
  EXPECT_FALSE(inside->Pending());
  EXPECT_FALSE(inside->Allowed());
  boxes.Expect(kMailBox);
  EXPECT_FALSE(Ask("mailto:e@f")->Pending()) << "the next link has its box again";
}

TEST_F(HeldNavigation, OutlivesItsWindowsLastOwnerInsideTheHandler) {
  // The window closes while the gate asks the frame; the handler holds it until it returns.
  const std::weak_ptr<FakeGateWindow> weak = window;
  frame.whenAskedForTheTimer = [&] { window.reset(); };
  const auto navigation = std::make_shared<fakes::FakeNavigation>(kForbidden, journal);
  gate->BeforeNavigate2(window, navigation);
  EXPECT_FALSE(navigation->Allowed());
  EXPECT_EQ(journal.Count("w.Stop"), 1);
  EXPECT_TRUE(weak.expired());
}

TEST_F(HeldNavigation, IsRefusedWhenTheProgramItselfFailsWhileJudging) {
  frame.whenAskedForTheTimer = [] { throw std::logic_error("a fault"); };
  const auto navigation = std::make_shared<fakes::FakeNavigation>(kA, journal);
  EXPECT_THROW(gate->BeforeNavigate2(window, navigation), std::logic_error);
  EXPECT_FALSE(navigation->Pending());
  EXPECT_FALSE(navigation->Allowed());
  EXPECT_EQ(gate->HeldNavigations(), 0U);
}

TEST_F(HeldNavigation, IsRefusedWhenTheProgramItselfFailsInAnEffect) {
  window->whenStopped = [] { throw std::logic_error("a fault"); };
  const auto navigation = Ask(kA);
  EXPECT_THROW((void)inet1.Answer(kA, kBadPage), std::logic_error);
  EXPECT_FALSE(navigation->Pending());
  EXPECT_FALSE(navigation->Allowed());
}

TEST_F(HeldNavigation, StaysWithItsOwnAddressAmongTwoHundred) {
  std::vector<std::shared_ptr<FakeGateWindow>> windows;
  for (int i = 0; i < 10; ++i) {
    windows.push_back(std::make_shared<FakeGateWindow>("w" + std::to_string(i), journal));
  }
  std::vector<std::shared_ptr<fakes::FakeNavigation>> navigations;
  const auto address = [](int i) { return "http://site" + std::to_string(i) + ".example/"; };
  for (int i = 0; i < 200; ++i) {
    navigations.push_back(Ask(address(i), windows[static_cast<std::size_t>(i % 10)]));
  }
  EXPECT_EQ(gate->HeldNavigations(), 200U);
  // Every seventh is given up, window 3 closes, the rest comes in an order of its own.
  for (int i = 0; i < 200; i += 7) {
    navigations[static_cast<std::size_t>(i)]->Drop();
  }
  windows[3].reset();
  for (int n = 0; n < 200; ++n) {
    const int i = n * 37 % 200;
    inet1.Answer(address(i), i % 2 == 0 ? kCleanPage : kBadPage);
  }
  EXPECT_EQ(gate->HeldNavigations(), 0U);
  for (int i = 0; i < 200; ++i) {
    const bool lives = i % 7 != 0 && i % 10 != 3;
    EXPECT_EQ(navigations[static_cast<std::size_t>(i)]->Allowed(), lives && i % 2 == 0) << i;
    EXPECT_FALSE(navigations[static_cast<std::size_t>(i)]->Pending()) << i;
  }
}

}  // namespace
}  // namespace kivandra
