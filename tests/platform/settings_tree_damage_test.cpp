// SPDX-License-Identifier: GPL-3.0-or-later
// A store that can't be used is told to the parent, left as it is, and never taken for a first start.
#include <gtest/gtest.h>
#include <sqlite3.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <map>
#include <optional>
#include <string>

#include "fakes/child_process.h"
#include "fakes/temporary_folder.h"
#include "platform/linux/settings_tree.h"
#include "platform/platform_error.h"

namespace kivandra {
namespace {

namespace fs = std::filesystem;
using fakes::ChildProcess;
using fakes::TemporaryFolder;
using linux_impl::SettingsTree;

constexpr const char* kSettings = "IXPR\\Drivers\\settings";

std::string BytesOf(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

void Overwrite(const std::string& path, const std::string& bytes) {
  std::ofstream(path, std::ios::binary | std::ios::trunc) << bytes;
}

/// Everything in a folder: names and the bytes of files.
std::map<std::string, std::string> Contents(const fs::path& folder) {
  std::map<std::string, std::string> contents;
  for (const auto& entry : fs::recursive_directory_iterator(folder)) {
    contents[entry.path().string()] = entry.is_regular_file() ? BytesOf(entry.path().string()) : "(no file)";
  }
  return contents;
}

void RunSql(const std::string& path, const std::string& sql) {
  sqlite3* connection = nullptr;
  ASSERT_EQ(sqlite3_open(path.c_str(), &connection), SQLITE_OK);
  ASSERT_EQ(sqlite3_exec(connection, sql.c_str(), nullptr, nullptr, nullptr), SQLITE_OK)
      << sqlite3_errmsg(connection);
  sqlite3_close(connection);
}

void WritePassword(RegistryCalls& tree, const std::string& password) {
  HKEY key = 0;
  std::uint32_t disposition = 0;
  ASSERT_EQ(tree.RegCreateKeyExA(HKEY_CLASSES_ROOT, kSettings, KEY_ALL_SIX, key, disposition), 0);
  ASSERT_EQ(tree.RegSetValueExA(key, "T_PW", REG_SZ, Bytes(password.begin(), password.end())), 0);
}

/// The error of the first use, if there is one.
std::optional<PlatformError> FirstUse(RegistryCalls& tree) {
  try {
    HKEY key = 0;
    tree.RegOpenKeyExA(HKEY_CLASSES_ROOT, kSettings, KEY_QUERY_VALUE, key);
  } catch (const PlatformError& error) {
    return error;
  }
  return std::nullopt;
}

class SettingsTreeDamage : public ::testing::Test {
 protected:
  TemporaryFolder folder_;
  const std::string path_ = folder_.File("registry.db");

  /// A store with a password and enough besides to fill some pages.
  void MakeStore() {
    SettingsTree tree(path_);
    WritePassword(tree, "secret");
    HKEY key = 0;
    std::uint32_t disposition = 0;
    tree.RegCreateKeyExA(HKEY_CLASSES_ROOT, "IXPR\\Drivers\\allowed", KEY_ALL_SIX, key, disposition);
    RegistryBatch batch(tree);
    for (int i = 0; i < 100; ++i) tree.RegSetValueExA(key, std::to_string(i), REG_SZ, Bytes(200, 'x'));
    batch.Commit();
  }
  /// Every use ends in an error that says `trouble` and names the file, and nothing in the folder changes.
  void ExpectRefused(const std::string& trouble) {
    const auto before = Contents(folder_.Path());
    SettingsTree tree(path_);
    for (int use = 0; use < 2; ++use) {
      const auto error = FirstUse(tree);
      ASSERT_TRUE(error) << "taken for a first start";
      EXPECT_NE(std::string(error->what()).find(trouble), std::string::npos) << error->what();
      EXPECT_NE(std::string(error->what()).find(path_), std::string::npos) << error->what();
      EXPECT_NE(error->Number(), 0);
      EXPECT_THROW(WritePassword(tree, "new"), PlatformError);
      EXPECT_THROW(RegistryBatch batch(tree), PlatformError);
    }
    EXPECT_EQ(Contents(folder_.Path()), before);
  }
};

TEST_F(SettingsTreeDamage, AMissingFileIsAFirstStartAndLeavesOneFileForThisUserAlone) {
  const std::string path = folder_.File("share/kivandra/registry.db");
  SettingsTree tree(path);
  EXPECT_FALSE(fs::exists(folder_.File("share"))) << "nothing is made before the first use";
  EXPECT_FALSE(FirstUse(tree));
  WritePassword(tree, "secret");
  EXPECT_EQ(Contents(folder_.Path()).size(), 3U) << "two folders and a file";
  struct stat status {};
  ASSERT_EQ(::stat(path.c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 07777U, 0600U);
  ASSERT_EQ(::stat(folder_.File("share").c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 07777U, 0700U);
}

TEST_F(SettingsTreeDamage, AStoreIsFoundAgain) {
  MakeStore();
  SettingsTree tree(path_);
  HKEY key = 0;
  EXPECT_EQ(tree.RegOpenKeyExA(HKEY_CLASSES_ROOT, kSettings, KEY_QUERY_VALUE, key), ERROR_SUCCESS);
}

TEST_F(SettingsTreeDamage, AFailedUseCanBeTriedAgainWhenTheFileIsMended) {
  MakeStore();
  const std::string good = BytesOf(path_);
  Overwrite(path_, "junk");
  SettingsTree tree(path_);
  EXPECT_TRUE(FirstUse(tree));
  Overwrite(path_, good);
  EXPECT_FALSE(FirstUse(tree));
}

TEST_F(SettingsTreeDamage, AnEmptyFileIsDamaged) {
  Overwrite(path_, "");
  ExpectRefused("is damaged");
}

TEST_F(SettingsTreeDamage, AFileOfSomethingElseIsDamaged) {
  for (const std::string& bytes : {std::string("x"), std::string("Hello"), std::string(99, '\0'),
                                   std::string(100000, '\0'), std::string(100000, 'x')}) {
    Overwrite(path_, bytes);
    ExpectRefused("is damaged");
  }
}

TEST_F(SettingsTreeDamage, AStoreCutOffAnywhereIsDamaged) {
  MakeStore();
  const std::string whole = BytesOf(path_);
  ASSERT_GT(whole.size(), 20000U);
  for (std::size_t size = 1; size < whole.size(); size += size < 300 ? 7 : 1021) {
    Overwrite(path_, whole.substr(0, size));
    ExpectRefused("is damaged");
  }
}

TEST_F(SettingsTreeDamage, AFreshStoreCutOffIsDamaged) {
  {
    SettingsTree tree(path_);
    EXPECT_FALSE(FirstUse(tree));
  }
  const std::string whole = BytesOf(path_);
  for (std::size_t size = 512; size < whole.size(); size += 512) {
    Overwrite(path_, whole.substr(0, size));
    ExpectRefused("is damaged");
  }
}

TEST_F(SettingsTreeDamage, AStoreWithAPageOfZerosIsDamaged) {
  MakeStore();
  const std::string whole = BytesOf(path_);
  constexpr std::size_t kPage = 4096;
  for (std::size_t page = 0; page < whole.size(); page += kPage) {
    std::string holed = whole;
    holed.replace(page, kPage, kPage, '\0');
    Overwrite(path_, holed);
    ExpectRefused("is damaged");
  }
}

TEST_F(SettingsTreeDamage, FlippedBitsNeverCrashAndNeverMakeAFirstStart) {
  MakeStore();
  const std::string whole = BytesOf(path_);
  int refused = 0;
  for (std::size_t at = 0; at < whole.size(); at += 37) {
    std::string flipped = whole;
    flipped[at] = static_cast<char>(flipped[at] ^ (1 << (at % 8)));
    Overwrite(path_, flipped);
    SettingsTree tree(path_);
    if (FirstUse(tree)) {
      ++refused;
      EXPECT_EQ(BytesOf(path_), flipped);
      continue;
    }
    // A bit of a value's bytes or of unused room: the password's place is there all the same.
    HKEY key = 0;
    ASSERT_EQ(tree.RegOpenKeyExA(HKEY_CLASSES_ROOT, kSettings, KEY_QUERY_VALUE, key), ERROR_SUCCESS) << at;
    std::uint32_t type = 0;
    std::size_t size = 0;
    ASSERT_EQ(tree.RegQueryValueExA(key, "T_PW", type, nullptr, size), ERROR_SUCCESS) << at;
    EXPECT_EQ(size, 6U) << at;
  }
  EXPECT_GT(refused, 20);
}

TEST_F(SettingsTreeDamage, ADatabaseOfAnotherProgramIsDamaged) {
  RunSql(path_, "CREATE TABLE key(id); INSERT INTO key VALUES(1)");
  ExpectRefused("is damaged");
}

TEST_F(SettingsTreeDamage, AStoreWithOtherTablesOrContentsIsDamaged) {
  struct Row {
    const char* name;
    const char* sql;
  };
  for (const Row& row : {
           Row{"a table is gone", "PRAGMA foreign_keys=OFF; DROP TABLE value"},
           Row{"a table is too many", "CREATE TABLE more(x)"},
           Row{"a trigger", "CREATE TRIGGER t AFTER INSERT ON value BEGIN DELETE FROM value; END"},
           Row{"another column", "ALTER TABLE value ADD COLUMN more TEXT"},
           Row{"a fixed key is gone", "PRAGMA foreign_keys=OFF; DELETE FROM key WHERE id = 6"},
           Row{"a fixed key is elsewhere", "UPDATE key SET parent = 1 WHERE id = 6"},
           Row{"a value without a key",
               "PRAGMA foreign_keys=OFF; UPDATE value SET key = 99 WHERE folded = 't_pw'"},
           Row{"a key in the air", "UPDATE key SET parent = 99 WHERE folded = 'ixpr'"},
           Row{"a value that its name can't find", "UPDATE value SET folded = 'T_PW' WHERE folded = 't_pw'"},
           Row{"a key that its name can't find", "UPDATE key SET folded = 'ixpq' WHERE folded = 'ixpr'"},
           Row{"another program's mark", "PRAGMA application_id=1"},
           Row{"an older form", "PRAGMA user_version=0"},
           Row{"another kind of journal", "PRAGMA journal_mode=WAL"},
       }) {
    SCOPED_TRACE(row.name);
    fs::remove(path_);
    MakeStore();
    RunSql(path_, row.sql);
    ExpectRefused("is damaged");
  }
}

TEST_F(SettingsTreeDamage, AStoreOfANewerVersionIsLeftToThatVersion) {
  MakeStore();
  RunSql(path_, "PRAGMA user_version=2");
  ExpectRefused("newer version");
}

TEST_F(SettingsTreeDamage, AFolderOrAPipeInItsPlaceIsDamaged) {
  fs::create_directory(path_);
  ExpectRefused("is damaged");
  fs::remove(path_);
  ASSERT_EQ(::mkfifo(path_.c_str(), 0600), 0);
  ExpectRefused("is damaged");
}

TEST_F(SettingsTreeDamage, ALinkThatLeadsNowhereIsDamagedAndOneThatLeadsToAStoreIsGood) {
  const std::string elsewhere = folder_.File("elsewhere.db");
  fs::create_symlink(elsewhere, path_);
  {
    SettingsTree tree(path_);
    EXPECT_TRUE(FirstUse(tree));
    EXPECT_FALSE(fs::exists(elsewhere));
  }
  {
    SettingsTree tree(elsewhere);
    EXPECT_FALSE(FirstUse(tree));
  }
  SettingsTree tree(path_);
  EXPECT_FALSE(FirstUse(tree));
}

TEST_F(SettingsTreeDamage, AFileInPlaceOfTheFolderIsRefused) {
  Overwrite(folder_.File("file"), "x");
  SettingsTree tree(folder_.File("file/registry.db"));
  const auto error = FirstUse(tree);
  ASSERT_TRUE(error);
  EXPECT_NE(std::string(error->what()).find("can't be opened"), std::string::npos) << error->what();
}

TEST_F(SettingsTreeDamage, TheJournalOfAStoreThatIsGoneIsNoFirstStart) {
  Overwrite(path_ + "-journal", "left behind");
  ExpectRefused("is missing");
}

TEST_F(SettingsTreeDamage, AnEmptyJournalIsNothing) {
  Overwrite(path_ + "-journal", "");
  SettingsTree tree(path_);
  EXPECT_FALSE(FirstUse(tree));
  WritePassword(tree, "secret");
}

/// Rights bind everyone but root, so the use is made by a user without any.
class SettingsTreeRights : public SettingsTreeDamage {
 protected:
  /// Number of the error that a plain user's first use ends in, 0 for none.
  int FirstUseByPlainUser() {
    ::chown(folder_.Path().c_str(), kUser, kUser);
    if (fs::exists(path_)) ::chown(path_.c_str(), kUser, kUser);
    ChildProcess child([this] {
      if (::geteuid() == 0 && (::setgid(kUser) != 0 || ::setuid(kUser) != 0)) return 103;
      SettingsTree tree(path_);
      const auto error = FirstUse(tree);
      if (!error) return 0;
      return std::string(error->what()).find("can't be opened") == std::string::npos
                 ? 104
                 : static_cast<int>(error->Number());
    });
    return child.Wait();
  }
  static constexpr uid_t kUser = 65534;
  static constexpr int kNoAccess = 75;
};

TEST_F(SettingsTreeRights, APlainUserMayUseHisStore) {
  MakeStore();
  EXPECT_EQ(FirstUseByPlainUser(), 0);
}

TEST_F(SettingsTreeRights, AFileThatMayNotBeReadOrWrittenIsToldOf) {
  MakeStore();
  const std::string before = BytesOf(path_);
  for (const mode_t mode : {0000U, 0400U, 0200U}) {
    ASSERT_EQ(::chmod(path_.c_str(), mode), 0);
    EXPECT_EQ(FirstUseByPlainUser(), kNoAccess) << mode;
  }
  ASSERT_EQ(::chmod(path_.c_str(), 0600), 0);
  EXPECT_EQ(BytesOf(path_), before);
}

TEST_F(SettingsTreeRights, AFolderThatMayNotBeWrittenIsToldOfAtOnce) {
  MakeStore();
  const auto before = Contents(folder_.Path());
  for (const mode_t mode : {0500U, 0000U}) {
    ASSERT_EQ(::chmod(folder_.Path().c_str(), mode), 0);
    EXPECT_EQ(FirstUseByPlainUser(), kNoAccess) << mode;
  }
  ASSERT_EQ(::chmod(folder_.Path().c_str(), 0700), 0);
  EXPECT_EQ(Contents(folder_.Path()), before);
}

TEST_F(SettingsTreeRights, AStoreThatMayNotBeMadeIsToldOf) {
  ASSERT_EQ(::chmod(folder_.Path().c_str(), 0500), 0);
  EXPECT_EQ(FirstUseByPlainUser(), kNoAccess);
  ASSERT_EQ(::chmod(folder_.Path().c_str(), 0700), 0);
  EXPECT_TRUE(Contents(folder_.Path()).empty());
}

TEST_F(SettingsTreeDamage, AStoreThatVanishesUnderARunningProgramIsToldOf) {
  MakeStore();
  SettingsTree tree(path_);
  WritePassword(tree, "secret");
  fs::remove(path_);
  EXPECT_THROW(WritePassword(tree, "other"), PlatformError);
  EXPECT_FALSE(fs::exists(path_));
}

TEST_F(SettingsTreeDamage, AFullDiskIsToldOfAndTheOldValueStays) {
  // A child, since the limit on the size of files binds the whole process.
  MakeStore();
  ChildProcess child([this] {
    SettingsTree tree(path_);
    if (FirstUse(tree)) return 1;
    ::signal(SIGXFSZ, SIG_IGN);
    struct rlimit limit {};
    limit.rlim_cur = limit.rlim_max = fs::file_size(path_);
    if (::setrlimit(RLIMIT_FSIZE, &limit) != 0) return 2;
    try {
      WritePassword(tree, std::string(200000, 'p'));
    } catch (const PlatformError&) {
      return 0;
    }
    return 3;
  });
  EXPECT_EQ(child.Wait(), 0);
  SettingsTree tree(path_);
  HKEY key = 0;
  ASSERT_EQ(tree.RegOpenKeyExA(HKEY_CLASSES_ROOT, kSettings, KEY_QUERY_VALUE, key), ERROR_SUCCESS);
  std::uint32_t type = 0;
  std::size_t size = 0;
  ASSERT_EQ(tree.RegQueryValueExA(key, "T_PW", type, nullptr, size), ERROR_SUCCESS);
  EXPECT_EQ(size, 6U);
}

}  // namespace
}  // namespace kivandra
