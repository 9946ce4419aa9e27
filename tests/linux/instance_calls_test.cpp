// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/instance_calls.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <filesystem>
#include <functional>

#include "linux/temporary_folder.h"

namespace kivandra::linux_impl {
namespace {

using tests::Environment;
using tests::TemporaryFolder;

constexpr const char* kMutex = "KVDBROWSERAPP_APPLICATION_MUTEX";

/// Another process that takes the mutex and holds it until it is killed.
class Holder {
 public:
  /// `then` runs in that process once it has the mutex.
  explicit Holder(const std::function<void()>& then = [] {}) {
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) {
      return;
    }
    child_ = fork();
    if (child_ == 0) {
      LinuxInstanceCalls calls;
      const Handle handle = calls.CreateMutexA(kMutex, true);
      then();
      const char word = handle != 0 && calls.GetLastError() == 0 ? 'h' : 'n';
      if (write(ends[1], &word, 1) == 1) {
        for (;;) {
          pause();
        }
      }
      _exit(1);
    }
    close(ends[1]);
    char word = 'n';
    holds_ = read(ends[0], &word, 1) == 1 && word == 'h';
    close(ends[0]);
  }
  ~Holder() { Kill(); }
  Holder(const Holder&) = delete;
  Holder& operator=(const Holder&) = delete;

  [[nodiscard]] bool Holds() const { return holds_; }
  void Kill() {
    if (child_ > 0) {
      kill(child_, SIGKILL);
      waitpid(child_, nullptr, 0);
      child_ = -1;
    }
  }

 private:
  pid_t child_ = -1;
  bool holds_ = false;
};

class InstanceMutexTest : public testing::Test {
 protected:
  TemporaryFolder folder_;
  Environment runtime_{"XDG_RUNTIME_DIR", folder_.Path()};
  Environment data_{"XDG_DATA_HOME", folder_.Path("data")};
  LinuxInstanceCalls calls_;
};

TEST_F(InstanceMutexTest, TheFirstProcessGetsTheMutex) {
  EXPECT_NE(calls_.CreateMutexA(kMutex, true), 0U);
  EXPECT_EQ(calls_.GetLastError(), 0U);
}

TEST_F(InstanceMutexTest, ASecondProcessIsToldThatTheMutexExists) {
  const Holder first;
  ASSERT_TRUE(first.Holds());
  const Handle handle = calls_.CreateMutexA(kMutex, true);
  EXPECT_NE(handle, 0U);
  EXPECT_EQ(calls_.GetLastError(), ERROR_ALREADY_EXISTS);
  calls_.CloseHandle(handle);
  // Closing that handle takes nothing from the first process.
  EXPECT_NE(calls_.CreateMutexA(kMutex, true), 0U);
  EXPECT_EQ(calls_.GetLastError(), ERROR_ALREADY_EXISTS);
}

TEST_F(InstanceMutexTest, AKilledProcessLeavesTheMutexFree) {
  Holder first;
  ASSERT_TRUE(first.Holds());
  first.Kill();
  EXPECT_NE(calls_.CreateMutexA(kMutex, true), 0U);
  EXPECT_EQ(calls_.GetLastError(), 0U);
}

TEST_F(InstanceMutexTest, AProgramStartedByTheFirstOneDoesNotKeepTheMutex) {
  std::array<int, 2> life{};
  ASSERT_EQ(pipe(life.data()), 0);
  // The started program reads from a pipe that stays open, so it outlives its parent until the end of this
  // test.
  Holder first([&] {
    if (fork() == 0) {
      dup2(life[0], STDIN_FILENO);
      close(life[1]);
      execlp("cat", "cat", nullptr);
      _exit(1);
    }
  });
  close(life[0]);
  ASSERT_TRUE(first.Holds());
  first.Kill();
  // The started program may still stand between its fork and its exec; the lock is free when the exec is
  // through.
  unsigned long error = ERROR_ALREADY_EXISTS;
  for (int turn = 0; turn < 500 && error == ERROR_ALREADY_EXISTS; ++turn) {
    calls_.CloseHandle(calls_.CreateMutexA(kMutex, true));
    error = calls_.GetLastError();
    usleep(10'000);
  }
  EXPECT_EQ(error, 0U);
  close(life[1]);
}

TEST_F(InstanceMutexTest, AClosedMutexCanBeTakenAgain) {
  calls_.CloseHandle(calls_.CreateMutexA(kMutex, true));
  const Holder next;
  EXPECT_TRUE(next.Holds());
}

TEST_F(InstanceMutexTest, MutexesOfOtherNamesDoNotMeet) {
  calls_.CreateMutexA(kMutex, true);
  EXPECT_NE(calls_.CreateMutexA("KVDBROWSERAPP_OTHER", true), 0U);
  EXPECT_EQ(calls_.GetLastError(), 0U);
}

TEST_F(InstanceMutexTest, ANameCannotLeaveTheFolder) {
  EXPECT_NE(calls_.CreateMutexA("../outside/x", true), 0U);
  EXPECT_EQ(calls_.GetLastError(), 0U);
  EXPECT_TRUE(std::filesystem::exists(folder_.Path("..%2Foutside%2Fx.lock")));
}

TEST_F(InstanceMutexTest, WithoutARuntimeFolderTheMutexLiesInTheDataFolder) {
  const Environment none("XDG_RUNTIME_DIR", std::nullopt);
  EXPECT_NE(calls_.CreateMutexA(kMutex, true), 0U);
  EXPECT_TRUE(std::filesystem::exists(folder_.Path("data/kivandra/" + std::string(kMutex) + ".lock")));
  const LinuxInstanceCalls other;
  EXPECT_EQ(other.GetLastError(), 0U);
}

TEST_F(InstanceMutexTest, AnUnusableRuntimeFolderIsPassedOver) {
  const Environment gone("XDG_RUNTIME_DIR", folder_.Path("not-there"));
  EXPECT_NE(calls_.CreateMutexA(kMutex, true), 0U);
  EXPECT_TRUE(std::filesystem::exists(folder_.Path("data/kivandra/" + std::string(kMutex) + ".lock")));
}

TEST_F(InstanceMutexTest, WhereNoFileCanBeMadeThereIsNoMutexAndNoEarlierInstance) {
  folder_.Write("file", "");
  const Environment runtime("XDG_RUNTIME_DIR", folder_.Path("file"));
  const Environment data("XDG_DATA_HOME", folder_.Path("file"));
  EXPECT_EQ(calls_.CreateMutexA(kMutex, true), 0U);
  EXPECT_NE(calls_.GetLastError(), 0U);
  EXPECT_NE(calls_.GetLastError(), ERROR_ALREADY_EXISTS);
}

TEST(InstanceWindows, NoWindowOfAnotherProgramIsEverFound) {
  LinuxInstanceCalls calls;
  int windows = 0;
  calls.EnumWindows([&](Handle) {
    ++windows;
    return true;
  });
  EXPECT_EQ(windows, 0);
  EXPECT_FALSE(calls.PrevInstance());
}

}  // namespace
}  // namespace kivandra::linux_impl
