// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/file_calls.h"

#include <gtest/gtest.h>

#include <filesystem>

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

}  // namespace
}  // namespace kivandra::linux_impl
