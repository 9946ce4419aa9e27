// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/hand_over.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <string>

#include "linux/private_bus.h"
#include "platform/linux/automation_names.h"
#include "platform/linux/automation_server.h"
#include "platform/linux/instance_calls.h"
#include "platform/linux/instance_lock.h"

namespace kivandra::linux_impl {
namespace {

using tests::Environment;
using tests::PrivateBus;
using tests::TemporaryFolder;

TEST(AddressOf, AnAddressStaysAsItIs) {
  for (const std::string word : {"http://example.org/a b", "https://x/%20#y", "javascript:1", "kivandra.org",
                                 "", "file:///a/b.html", "-x"}) {
    EXPECT_EQ(AddressOf(word), word);
  }
}

TEST(AddressOf, BytesThatAreNoTextAreEscaped) {
  EXPECT_EQ(AddressOf("http://x/ä"), "http://x/ä");
  EXPECT_EQ(AddressOf("http://x/a\xE4?b=%20"), "http://x/a%E4?b=%20");
  EXPECT_EQ(AddressOf("/a\xE4.html"), "file:///a%E4.html");
}

TEST(AddressOf, APathOfAFileBecomesAFileAddress) {
  const TemporaryFolder folder;
  folder.Write("two words#1%.html", "");
  EXPECT_EQ(AddressOf(folder.Path("two words#1%.html")),
            "file://" + folder.Path() + "/two%20words%231%25.html");
  EXPECT_EQ(AddressOf("/not/there.html"), "file:///not/there.html");
  const auto before = std::filesystem::current_path();
  std::filesystem::current_path(folder.Path());
  folder.Write("page.html", "");
  EXPECT_EQ(AddressOf("page.html"), "file://" + std::filesystem::current_path().string() + "/page.html");
  std::filesystem::current_path(before);
}

TEST(InstanceLock, TellsWhetherAProgramHoldsTheMutexAndTakesNothing) {
  const TemporaryFolder folder;
  const Environment runtime("XDG_RUNTIME_DIR", folder.Path());
  EXPECT_FALSE(MutexIsHeld("A mutex"));
  LinuxInstanceCalls calls;
  const Handle handle = calls.CreateMutexA("A mutex", true);
  EXPECT_TRUE(MutexIsHeld("A mutex"));
  EXPECT_FALSE(MutexIsHeld("Another"));
  calls.CloseHandle(handle);
  EXPECT_FALSE(MutexIsHeld("A mutex"));
}

TEST(InstanceLock, FindsTheMutexInTheDataFolderToo) {
  const TemporaryFolder folder;
  const Environment runtime("XDG_RUNTIME_DIR", std::nullopt);
  const Environment data("XDG_DATA_HOME", folder.Path());
  LinuxInstanceCalls calls;
  const Handle handle = calls.CreateMutexA("A mutex", true);
  EXPECT_TRUE(MutexIsHeld("A mutex"));
  calls.CloseHandle(handle);
}

/// The command where no program answers; what it would start is a script.
class HandOverTest : public testing::Test {
 protected:
  std::string Open(const std::string& script, const std::string& address = "http://example.org/") {
    folder.Write("kivandra", "#!/bin/sh\necho started >> " + folder.Path("starts") + "\n" + script + "\n");
    std::filesystem::permissions(folder.Path("kivandra"), std::filesystem::perms::owner_all);
    return HandOver(address, {folder.Path("kivandra"), [this] { return others-- > 0; }, mostForAnother});
  }
  [[nodiscard]] int Starts() const {
    std::ifstream file(folder.Path("starts"));
    int lines = 0;
    for (std::string line; std::getline(file, line);) {
      ++lines;
    }
    return lines;
  }

  TemporaryFolder folder;
  int others = 0;  ///< so often another instance is found running
  std::chrono::milliseconds mostForAnother = kMostForAnotherInstance;
};

TEST_F(HandOverTest, AProgramThatFailsEndsTheWaiting) {
  const PrivateBus bus;
  EXPECT_EQ(Open("exit 1"), "The program has ended before it could open the address.");
  EXPECT_EQ(Starts(), 1);
}

TEST_F(HandOverTest, AProgramThatIsClosedEndsTheWaiting) {
  const PrivateBus bus;
  EXPECT_EQ(Open("exit 0"), "The program was closed before it could open the address.");
  EXPECT_EQ(Starts(), 1);
}

TEST_F(HandOverTest, WhileAnotherInstanceStartsNoneIsStartedAndAfterItsEndOne) {
  const PrivateBus bus;
  others = 3;
  EXPECT_EQ(Open("exit 0"), "The program was closed before it could open the address.");
  EXPECT_EQ(Starts(), 1);
  EXPECT_LT(others, 0);
}

TEST_F(HandOverTest, AnotherInstanceThatStaysOffTheBusIsGivenUpInTheEndAndNoneIsStarted) {
  const PrivateBus bus;
  others = 1'000'000;
  mostForAnother = std::chrono::milliseconds(1200);
  const auto began = std::chrono::steady_clock::now();
  EXPECT_EQ(Open("exit 0"), "The running program can't be reached on this session bus.");
  EXPECT_GE(std::chrono::steady_clock::now() - began, mostForAnother);
  EXPECT_EQ(Starts(), 0);
  EXPECT_GT(others, 0);
}

TEST_F(HandOverTest, AProgramThatThisCommandHasStartedIsWaitedForWithoutEnd) {
  const PrivateBus bus;
  mostForAnother = std::chrono::milliseconds(1);
  EXPECT_EQ(Open("sleep 2; exit 0"), "The program was closed before it could open the address.");
  EXPECT_EQ(Starts(), 1);
}

TEST_F(HandOverTest, AProgramThatIsNotThereIsTold) {
  const PrivateBus bus;
  EXPECT_NE(HandOver("http://example.org/", {folder.Path("none"), [] { return false; }}).find("none"),
            std::string::npos);
}

TEST_F(HandOverTest, WithoutABusTheProgramIsStartedAllTheSame) {
  const Environment nowhere("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nowhere/bus");
  EXPECT_EQ(Open("exit 0"), "There is no session bus, so the address can't be handed over.");
  EXPECT_TRUE(tests::Until([&] { return Starts() == 1; }));
  EXPECT_EQ(Open("exit 0", ""), "") << "nothing was to be handed over";
  EXPECT_TRUE(tests::Until([&] { return Starts() == 2; }));
}

}  // namespace
}  // namespace kivandra::linux_impl
