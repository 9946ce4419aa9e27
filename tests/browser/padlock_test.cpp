// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "browser/browser_world.h"
#include "browser/frm_browser.h"

namespace kivandra {
namespace {

using fakes::BrowserWorld;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

const std::string kBlocked = "http://forbidden.example/page";

class SessionLock : public ::testing::Test, protected BrowserWorld {
 protected:
  SessionLock() : window(OpenWindow()) { BadWords[1] = "forbidden"; }

  void Block() {
    EngineOf(*window).Ask(kBlocked);
    ASSERT_EQ(BlockedURL, kBlocked);
    journal.Clear();
  }
  void Announce(MsgBoxResult answer, const std::string& address = kBlocked,
                std::function<void()> meanwhile = {}) {
    boxes.Expect("Allow " + address + " for this session?", 276, "Session Lock", answer,
                 std::move(meanwhile));
  }
  /// What the window for the password does after the right one.
  void GrantWhenAsked() {
    whilePasswordIsAsked = [] {
      AllowedDomains[AllowedDomains.FirstEmptyRow()] = BlockedURL;
      SessionAllowGranted = true;
    };
  }

  std::shared_ptr<frmBrowser> window;
};

TEST_F(SessionLock, AsksThenWantsThePasswordThenGoesThereMaximised) {
  Block();
  Announce(MsgBoxResult::Yes);
  GrantWhenAsked();
  window->Padlock();
  ASSERT_GE(journal.lines.size(), 4U);
  EXPECT_EQ(journal.lines[0], "MsgBox \"Allow " + kBlocked + " for this session?\"");
  EXPECT_EQ(journal.lines[1], "frmPassword.ShowModal");
  EXPECT_EQ(journal.lines[2], "frmBrowser#1.brwWebBrowser.Navigate \"" + kBlocked + "\"");
  EXPECT_TRUE(journal.Has("allow " + kBlocked));
  EXPECT_EQ(journal.lines.back(), "frmBrowser#1.WindowState = 2");
  EXPECT_FALSE(SessionAllowGranted);
}

TEST_F(SessionLock, ThePassingNavigationEndsTheBlockAndKeepsItsAddress) {
  Block();
  ASSERT_TRUE(SessionAllowPending);
  Announce(MsgBoxResult::Yes);
  GrantWhenAsked();
  window->Padlock();
  EXPECT_FALSE(SessionAllowPending);
  EXPECT_EQ(BlockedURL, kBlocked);
}

TEST_F(SessionLock, AnAnswerOfNoChangesNothing) {
  Block();
  Announce(MsgBoxResult::No);
  window->Padlock();
  EXPECT_EQ(journal.lines.size(), 1U);
  EXPECT_EQ(FormOf(*window).windowState, WindowState::Normal);
}

TEST_F(SessionLock, ACancelledPasswordNavigatesNowhere) {
  Block();
  Announce(MsgBoxResult::Yes);
  window->Padlock();
  EXPECT_THAT(journal.lines,
              ElementsAre("MsgBox \"Allow " + kBlocked + " for this session?\"", "frmPassword.ShowModal"));
}

TEST_F(SessionLock, BeforeAnyBlockItAsksAboutAnEmptyAddress) {
  Announce(MsgBoxResult::No, "");
  window->Padlock();
}

TEST_F(SessionLock, AGrantMadeInOneWindowCountsForAllAndForLongerAddresses) {
  const auto other = OpenWindow();
  Block();
  Announce(MsgBoxResult::Yes);
  GrantWhenAsked();
  window->Padlock();
  EXPECT_TRUE(EngineOf(*other).Ask(kBlocked + "?more")->Allowed());
  EXPECT_FALSE(EngineOf(*other).Ask("http://forbidden.example/other")->Allowed());
}

TEST_F(SessionLock, WithAFullTableItNavigatesAndIsBlockedAgain) {
  Block();
  for (std::size_t row = 1; row <= AllowedDomainsTable::kLastRow; ++row) {
    AllowedDomains[row] = "taken.example";
  }
  Announce(MsgBoxResult::Yes);
  whilePasswordIsAsked = [] { SessionAllowGranted = true; };
  window->Padlock();
  EXPECT_TRUE(journal.Has("frmBrowser#1.brwWebBrowser.Navigate \"" + kBlocked + "\""));
  EXPECT_TRUE(journal.Has("refuse " + kBlocked));
  EXPECT_TRUE(SessionAllowPending);
  EXPECT_FALSE(SessionAllowGranted);
}

TEST_F(SessionLock, MaximisesTheWindowWhateverItsState) {
  for (const auto state : {WindowState::Normal, WindowState::Minimized, WindowState::Maximized}) {
    FormOf(*window).windowState = state;
    AllowedDomains = {};
    Block();
    Announce(MsgBoxResult::Yes);
    GrantWhenAsked();
    window->Padlock();
    EXPECT_EQ(FormOf(*window).windowState, WindowState::Maximized);
  }
}

TEST_F(SessionLock, ABoxThatCannotBeShownGrantsNothing) {
  Block();
  SessionAllowGranted = true;  // left over from an earlier prompt
  journal.failAt = journal.calls + 1;
  window->Padlock();
  EXPECT_EQ(journal.lines.size(), 1U);
  EXPECT_EQ(journal.lines.front().rfind("FAILED MsgBox", 0), 0U);
}

TEST_F(SessionLock, APasswordWindowThatCannotBeShownGrantsNothing) {
  Block();
  Announce(MsgBoxResult::Yes);
  journal.failAt = journal.calls + 2;
  window->Padlock();
  EXPECT_THAT(journal.With("Navigate"), IsEmpty());
}

TEST_F(SessionLock, AFailingNavigationStillMaximisesAndEndsTheGrant) {
  Block();
  Announce(MsgBoxResult::Yes);
  GrantWhenAsked();
  journal.failAt = journal.calls + 3;
  window->Padlock();
  EXPECT_TRUE(journal.Has("FAILED frmBrowser#1.brwWebBrowser.Navigate \"" + kBlocked + "\""));
  EXPECT_EQ(FormOf(*window).windowState, WindowState::Maximized);
  EXPECT_FALSE(SessionAllowGranted);
}

TEST_F(SessionLock, TheAddressOfTheQuestionIsGrantedThoughAnotherPageIsBlockedMeanwhile) {
  const auto other = OpenWindow();
  Block();
  // A page in the other window gets an address blocked that stands in nearly every other.
  BadWords[2] = "s:";
  const auto blockAnother = [&] { EngineOf(*other).Ask("s:"); };
  Announce(MsgBoxResult::Yes, kBlocked, blockAnother);
  whilePasswordIsAsked = [&] {
    blockAnother();
    ASSERT_EQ(BlockedURL, "s:");
    ASSERT_EQ(AskedURL, kBlocked);
    AllowedDomains[1] = *AskedURL;
    SessionAllowGranted = true;
  };
  window->Padlock();
  EXPECT_TRUE(journal.Has("frmBrowser#1.brwWebBrowser.Navigate \"" + kBlocked + "\""));
  EXPECT_TRUE(journal.Has("allow " + kBlocked));
  EXPECT_EQ(AskedURL, std::nullopt);
  EXPECT_EQ(BlockedURL, "s:");
}

TEST_F(SessionLock, NoQuestionStandsAfterAnyEnd) {
  Block();
  Announce(MsgBoxResult::No);
  window->Padlock();
  EXPECT_EQ(AskedURL, std::nullopt);
  journal.failAt = journal.calls + 1;
  window->Padlock();
  EXPECT_EQ(AskedURL, std::nullopt);
}

TEST_F(SessionLock, TheWindowMayCloseWhileTheQuestionStands) {
  Block();
  Announce(MsgBoxResult::Yes, kBlocked, [this] {
    window->Window().Unload();
    window.reset();
  });
  GrantWhenAsked();
  const std::weak_ptr<frmBrowser> watched = window;
  window.get()->Padlock();
  EXPECT_TRUE(watched.expired());
  EXPECT_FALSE(SessionAllowGranted);
}

TEST_F(SessionLock, TheWindowMayCloseWhileThePasswordIsAsked) {
  Block();
  Announce(MsgBoxResult::Yes);
  whilePasswordIsAsked = [this] {
    SessionAllowGranted = true;
    window->Window().Unload();
    window.reset();
  };
  window.get()->Padlock();
  EXPECT_THAT(frame.windows, IsEmpty());
  EXPECT_FALSE(SessionAllowGranted);
}

}  // namespace
}  // namespace kivandra
