// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/file_calls.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "linux/temporary_folder.h"
#include "platform/platform_error.h"

namespace kivandra::linux_impl {
namespace {

long NumberOfFailure(const std::string& path) {
  try {
    LinuxFileCalls().Kill(path);
  } catch (const PlatformError& error) {
    return error.Number();
  }
  return 0;
}

TEST(FileCalls, DeletesAFile) {
  const tests::TemporaryFolder folder;
  folder.Write("browser_update.exe", "old");
  LinuxFileCalls().Kill(folder.Path("browser_update.exe"));
  EXPECT_FALSE(std::filesystem::exists(folder.Path("browser_update.exe")));
}

TEST(FileCalls, AMissingFileIsAnError) {
  const tests::TemporaryFolder folder;
  EXPECT_EQ(NumberOfFailure(folder.Path("nothing")), 53);
}

TEST(FileCalls, AFolderIsNeverDeleted) {
  const tests::TemporaryFolder folder;
  std::filesystem::create_directory(folder.Path("kept"));
  EXPECT_EQ(NumberOfFailure(folder.Path("kept")), 75);
  EXPECT_TRUE(std::filesystem::exists(folder.Path("kept")));
}

TEST(FileCalls, OfALinkOnlyTheLinkGoes) {
  const tests::TemporaryFolder folder;
  folder.Write("target", "kept");
  std::filesystem::create_symlink(folder.Path("target"), folder.Path("link"));
  LinuxFileCalls().Kill(folder.Path("link"));
  EXPECT_TRUE(std::filesystem::exists(folder.Path("target")));
  EXPECT_FALSE(std::filesystem::exists(std::filesystem::symlink_status(folder.Path("link"))));
}

std::string Contents(const std::string& path) {
  std::stringstream text;
  text << std::ifstream(path, std::ios::binary).rdbuf();
  return text.str();
}

TEST(FileCalls, ReadsAFileWhole) {
  const tests::TemporaryFolder folder;
  const std::string bytes("a\0b\r\n\xFF", 6);
  folder.Write("day.rtf", bytes);
  folder.Write("empty.rtf", "");
  EXPECT_EQ(LinuxFileCalls().ReadFile(folder.Path("day.rtf")), bytes);
  EXPECT_EQ(LinuxFileCalls().ReadFile(folder.Path("empty.rtf")), "");
}

TEST(FileCalls, WhatIsNoFileCannotBeReadAndHoldsNothingUp) {
  const tests::TemporaryFolder folder;
  std::filesystem::create_directory(folder.Path("folder"));
  ASSERT_EQ(mkfifo(folder.Path("pipe").c_str(), 0600), 0);
  for (const char* name : {"missing", "folder", "pipe"}) {
    EXPECT_THROW((void)LinuxFileCalls().ReadFile(folder.Path(name)), PlatformError) << name;
  }
}

TEST(FileCalls, AFileThatMemoryMayNotHoldIsNotReadAtAll) {
  const tests::TemporaryFolder folder;
  folder.Write("huge", "");
  std::filesystem::resize_file(folder.Path("huge"), 100'000'000'000);  // takes no room on the disk
  EXPECT_THROW((void)LinuxFileCalls().ReadFile(folder.Path("huge")), PlatformError);
}

TEST(FileCalls, WritesAFileWholeForItsOwnerAlone) {
  const tests::TemporaryFolder folder;
  const std::string day = folder.Path("day.rtf");
  LinuxFileCalls().WriteFile(day, std::string(100000, 'x'));
  LinuxFileCalls().WriteFile(day, std::string("short\0", 6));
  EXPECT_EQ(Contents(day), std::string("short\0", 6));
  EXPECT_EQ(std::filesystem::status(day).permissions(),
            std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
  EXPECT_FALSE(std::filesystem::exists(day + ".new"));
}

TEST(FileCalls, MakesNoFolderToWriteIn) {
  const tests::TemporaryFolder folder;
  EXPECT_THROW(LinuxFileCalls().WriteFile(folder.Path("21/day.rtf"), "x"), PlatformError);
  EXPECT_FALSE(std::filesystem::exists(folder.Path("21")));
}

/// Writes a file in a process of its own that may write no more than a few bytes; how that process ended.
int WriteWithoutRoom(const std::string& path, bool dies) {
  const pid_t child = fork();
  if (child == 0) {
    const rlimit few{4096, 4096};
    setrlimit(RLIMIT_FSIZE, &few);
    std::signal(SIGXFSZ, dies ? SIG_DFL : SIG_IGN);  // sent in the middle of the write
    try {
      LinuxFileCalls().WriteFile(path, std::string(100000, 'x'));
    } catch (const PlatformError&) {
      _exit(1);
    }
    _exit(0);
  }
  int status = 0;
  waitpid(child, &status, 0);
  return status;
}

TEST(FileCalls, WithoutRoomTheFileStaysAsItWas) {
  const tests::TemporaryFolder folder;
  folder.Write("day.rtf", "so far");
  const int status = WriteWithoutRoom(folder.Path("day.rtf"), false);
  EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 1);
  EXPECT_EQ(Contents(folder.Path("day.rtf")), "so far");
  EXPECT_FALSE(std::filesystem::exists(folder.Path("day.rtf.new")));
}

TEST(FileCalls, AProcessThatDiesInTheMiddleLosesNothingAndIsInNobodysWay) {
  const tests::TemporaryFolder folder;
  folder.Write("day.rtf", "so far");
  EXPECT_TRUE(WIFSIGNALED(WriteWithoutRoom(folder.Path("day.rtf"), true)));
  EXPECT_EQ(Contents(folder.Path("day.rtf")), "so far");
  LinuxFileCalls().WriteFile(folder.Path("day.rtf"), "more");
  EXPECT_EQ(Contents(folder.Path("day.rtf")), "more");
}

TEST(FileCalls, FollowsNoLinkThatStandsWhereTheNewFileComes) {
  const tests::TemporaryFolder folder;
  folder.Write("day.rtf", "so far");
  folder.Write("target", "kept");
  std::filesystem::create_symlink(folder.Path("target"), folder.Path("day.rtf.new"));
  EXPECT_THROW(LinuxFileCalls().WriteFile(folder.Path("day.rtf"), "x"), PlatformError);
  EXPECT_EQ(Contents(folder.Path("target")), "kept");
  EXPECT_EQ(Contents(folder.Path("day.rtf")), "so far");
}

TEST(FileCalls, RenamesAFileAndTakesNobodysPlace) {
  const tests::TemporaryFolder folder;
  folder.Write("a", "first");
  folder.Write("b", "second");
  EXPECT_THROW(LinuxFileCalls().Name(folder.Path("a"), folder.Path("b")), PlatformError);
  EXPECT_THROW(LinuxFileCalls().Name(folder.Path("missing"), folder.Path("c")), PlatformError);
  EXPECT_THROW(LinuxFileCalls().Name(folder.Path("a"), ""), PlatformError) << "no name is no place";
  EXPECT_EQ(Contents(folder.Path("b")), "second");
  LinuxFileCalls().Name(folder.Path("a"), folder.Path("c"));
  EXPECT_EQ(Contents(folder.Path("c")), "first");
  EXPECT_EQ(LinuxFileCalls().Dir(folder.Path("a")), "");
  EXPECT_EQ(LinuxFileCalls().Dir(folder.Path("c")), "c");
  EXPECT_EQ(LinuxFileCalls().Dir(folder.Path()), "");
}

}  // namespace
}  // namespace kivandra::linux_impl
