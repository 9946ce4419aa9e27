// SPDX-License-Identifier: GPL-3.0-or-later
// Folders: listing, making, moving and deleting them.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "linux/temporary_folder.h"
#include "platform/linux/file_calls.h"
#include "platform/platform_error.h"

namespace kivandra::linux_impl {
namespace {

std::vector<std::string> Sorted(std::vector<std::string> names) {
  std::sort(names.begin(), names.end());
  return names;
}

/// The names of the folders in a listing, a link marked by "@".
std::vector<std::string> FoldersOf(const FolderListing& listing) {
  std::vector<std::string> names;
  for (const auto& folder : listing.folders) {
    names.push_back(folder.name + (folder.link ? "@" : ""));
  }
  return Sorted(names);
}

TEST(FolderCalls, AListingPartsFoldersFromFiles) {
  const tests::TemporaryFolder folder;
  folder.Write("a.url", "");
  folder.Write(".hidden", "");
  folder.Write("inner/b.url", "");
  const FolderListing listing = LinuxFileCalls().ListFolder(folder.Path());
  EXPECT_EQ(Sorted(listing.files), (std::vector<std::string>{".hidden", "a.url"}));
  EXPECT_EQ(FoldersOf(listing), std::vector<std::string>{"inner"});
}

TEST(FolderCalls, AListingMarksLinksToFolders) {
  const tests::TemporaryFolder folder;
  folder.Write("a.url", "");
  std::filesystem::create_symlink(folder.Path(), folder.Path("ring"));
  std::filesystem::create_symlink(folder.Path("a.url"), folder.Path("b.url"));
  const FolderListing listing = LinuxFileCalls().ListFolder(folder.Path());
  EXPECT_EQ(FoldersOf(listing), std::vector<std::string>{"ring@"});
  EXPECT_EQ(Sorted(listing.files), (std::vector<std::string>{"a.url", "b.url"}));
}

TEST(FolderCalls, AListingLeavesOutWhatIsNeitherFileNorFolder) {
  const tests::TemporaryFolder folder;
  std::filesystem::create_symlink(folder.Path("nothing"), folder.Path("dangling.url"));
  std::filesystem::create_symlink(folder.Path("self"), folder.Path("self"));
  ASSERT_EQ(mkfifo(folder.Path("pipe.url").c_str(), 0600), 0);
  const FolderListing listing = LinuxFileCalls().ListFolder(folder.Path());
  EXPECT_TRUE(listing.files.empty());
  EXPECT_TRUE(listing.folders.empty());
}

TEST(FolderCalls, AFolderThatIsNotThereCannotBeListed) {
  const tests::TemporaryFolder folder;
  folder.Write("file", "");
  EXPECT_THROW((void)LinuxFileCalls().ListFolder(folder.Path("nothing")), PlatformError);
  EXPECT_THROW((void)LinuxFileCalls().ListFolder(folder.Path("file")), PlatformError);
}

TEST(FolderCalls, TenThousandFilesAreListedAndRead) {
  const tests::TemporaryFolder folder;
  for (int file = 0; file < 10000; ++file) {
    folder.Write("page " + std::to_string(file) + ".url", "[InternetShortcut]\r\nURL=http://x/\r\n");
  }
  const LinuxFileCalls files;
  std::size_t bytes = 0;
  for (const std::string& name : files.ListFolder(folder.Path()).files) {
    bytes += files.ReadFile(folder.Path(name)).size();
  }
  EXPECT_EQ(bytes, 10000U * 35U);
}

TEST(FolderCalls, MakesAFolderWithThoseAboveItForThisUserAlone) {
  const tests::TemporaryFolder folder;
  LinuxFileCalls().MakeFolder(folder.Path("one/two"));
  EXPECT_EQ(std::filesystem::status(folder.Path("one/two")).permissions(), std::filesystem::perms::owner_all);
  folder.Write("one/two/kept", "");
  LinuxFileCalls().MakeFolder(folder.Path("one/two"));
  EXPECT_TRUE(std::filesystem::exists(folder.Path("one/two/kept")));
}

TEST(FolderCalls, NoFolderIsMadeInTheWayOfAFile) {
  const tests::TemporaryFolder folder;
  folder.Write("file", "");
  EXPECT_THROW(LinuxFileCalls().MakeFolder(folder.Path("file")), PlatformError);
  EXPECT_THROW(LinuxFileCalls().MakeFolder(folder.Path("file/inner")), PlatformError);
}

TEST(FolderCalls, AFolderMovesWithAllThatItHolds) {
  const tests::TemporaryFolder folder;
  folder.Write("from/a.url", "kept");
  std::filesystem::create_directory(folder.Path("into"));
  LinuxFileCalls().Name(folder.Path("from"), folder.Path("into/from"));
  EXPECT_EQ(LinuxFileCalls().ReadFile(folder.Path("into/from/a.url")), "kept");
  EXPECT_FALSE(std::filesystem::exists(folder.Path("from")));
}

TEST(FolderCalls, AFolderDoesNotMoveIntoItselfNorOntoAnother) {
  const tests::TemporaryFolder folder;
  folder.Write("from/a.url", "kept");
  std::filesystem::create_directory(folder.Path("other"));
  EXPECT_THROW(LinuxFileCalls().Name(folder.Path("from"), folder.Path("from/inner")), PlatformError);
  EXPECT_THROW(LinuxFileCalls().Name(folder.Path("from"), folder.Path("other")), PlatformError);
  EXPECT_EQ(LinuxFileCalls().ReadFile(folder.Path("from/a.url")), "kept");
}

TEST(FolderCalls, AFolderIsDeletedWithAllThatItHoldsAndNothingBehindALink) {
  const tests::TemporaryFolder folder;
  folder.Write("outside/kept", "");
  folder.Write("gone/inner/a.url", "");
  std::filesystem::create_symlink(folder.Path("outside"), folder.Path("gone/link"));
  LinuxFileCalls().DeleteFolder(folder.Path("gone"));
  EXPECT_FALSE(std::filesystem::exists(folder.Path("gone")));
  EXPECT_TRUE(std::filesystem::exists(folder.Path("outside/kept")));
}

TEST(FolderCalls, OfALinkToAFolderOnlyTheLinkIsDeleted) {
  const tests::TemporaryFolder folder;
  folder.Write("outside/kept", "");
  std::filesystem::create_symlink(folder.Path("outside"), folder.Path("link"));
  LinuxFileCalls().DeleteFolder(folder.Path("link"));
  EXPECT_FALSE(std::filesystem::exists(std::filesystem::symlink_status(folder.Path("link"))));
  EXPECT_TRUE(std::filesystem::exists(folder.Path("outside/kept")));
}

TEST(FolderCalls, DeletingAFolderTakesNoFileAndNothingThatIsMissing) {
  const tests::TemporaryFolder folder;
  folder.Write("file", "");
  EXPECT_THROW(LinuxFileCalls().DeleteFolder(folder.Path("file")), PlatformError);
  EXPECT_THROW(LinuxFileCalls().DeleteFolder(folder.Path("nothing")), PlatformError);
  EXPECT_TRUE(std::filesystem::exists(folder.Path("file")));
}

}  // namespace
}  // namespace kivandra::linux_impl
