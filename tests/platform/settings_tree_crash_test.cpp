// SPDX-License-Identifier: GPL-3.0-or-later
// Two processes on one store, and processes that are killed in the middle of a write.
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <filesystem>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "fakes/child_process.h"
#include "fakes/temporary_folder.h"
#include "platform/linux/settings_tree.h"
#include "platform/platform_error.h"

namespace kivandra {
namespace {

using fakes::ChildProcess;
using fakes::TemporaryFolder;
using linux_impl::SettingsTree;

constexpr const char* kPath = "IXPR\\Drivers\\settings";

HKEY Create(RegistryCalls& tree, const std::string& path = kPath) {
  HKEY key = 0;
  std::uint32_t disposition = 0;
  EXPECT_EQ(tree.RegCreateKeyExA(HKEY_CLASSES_ROOT, path, KEY_ALL_SIX, key, disposition), ERROR_SUCCESS);
  return key;
}

/// The whole value; empty if there is none. It may grow between the question for its size and the reading.
Bytes Read(RegistryCalls& tree, HKEY key, const std::string& name) {
  while (true) {
    std::uint32_t type = 0;
    std::size_t size = 0;
    if (tree.RegQueryValueExA(key, name, type, nullptr, size) != ERROR_SUCCESS) return {};
    Bytes bytes(size + 1);
    size = bytes.size();
    const long code = tree.RegQueryValueExA(key, name, type, bytes.data(), size);
    if (code == ERROR_MORE_DATA) continue;
    EXPECT_EQ(code, ERROR_SUCCESS);
    bytes.resize(size);
    return bytes;
  }
}

/// A value that shows whether it is whole: a fill byte again and again, in a size that only this byte has.
Bytes Whole(int round) {
  const auto fill = static_cast<std::uint8_t>(round % 251);
  return Bytes(1000U + 37U * fill, fill);
}

bool IsWhole(const Bytes& bytes) { return !bytes.empty() && bytes == Whole(bytes.front()); }

/// A pipe by which a child says how far it is.
class Signal {
 public:
  Signal() {
    if (::pipe(ends_.data()) != 0) throw std::runtime_error("no pipe");
  }
  ~Signal() {
    ::close(ends_[0]);
    ::close(ends_[1]);
  }
  Signal(const Signal&) = delete;
  Signal& operator=(const Signal&) = delete;

  void Give() const {
    if (::write(ends_[1], "x", 1) != 1) throw std::runtime_error("no signal given");
  }
  void Wait() const {
    char byte = 0;
    if (::read(ends_[0], &byte, 1) != 1) throw std::runtime_error("no signal came");
  }

 private:
  std::array<int, 2> ends_{};
};

class SettingsTreeProcesses : public ::testing::Test {
 protected:
  TemporaryFolder folder_;
  const std::string path_ = folder_.File("registry.db");
};

TEST_F(SettingsTreeProcesses, TwoProcessesThatWriteAtOnceLoseNothing) {
  constexpr int kWrites = 40;
  const auto write = [this](const std::string& mark) {
    return [this, mark] {
      SettingsTree tree(path_);
      const HKEY key = Create(tree);
      for (int i = 0; i < kWrites; ++i) {
        const std::string number = std::to_string(i);
        // One value of its own, one that both fight for, and one key each.
        if (tree.RegSetValueExA(key, mark + number, REG_SZ, Whole(i)) != ERROR_SUCCESS) return 1;
        if (tree.RegSetValueExA(key, "both", REG_SZ, Whole(i)) != ERROR_SUCCESS) return 2;
        Create(tree, std::string(kPath) + "\\" + mark + number);
        if (!IsWhole(Read(tree, key, "both"))) return 3;
      }
      return 0;
    };
  };
  ChildProcess first(write("a"));
  ChildProcess second(write("b"));
  EXPECT_EQ(first.Wait(), 0);
  EXPECT_EQ(second.Wait(), 0);
  SettingsTree tree(path_);
  const HKEY key = Create(tree);
  std::uint32_t subKeys = 0;
  std::uint32_t values = 0;
  std::size_t ignored = 0;
  ASSERT_EQ(tree.RegQueryInfoKeyA(key, subKeys, ignored, values, ignored), ERROR_SUCCESS);
  EXPECT_EQ(subKeys, 2U * kWrites);
  EXPECT_EQ(values, 2U * kWrites + 1);
  for (int i = 0; i < kWrites; ++i) EXPECT_EQ(Read(tree, key, "b" + std::to_string(i)), Whole(i));
}

TEST_F(SettingsTreeProcesses, ManyFirstStartsAtOnceMakeOneStore) {
  for (int round = 0; round < 10; ++round) {
    const std::string path = folder_.File("start" + std::to_string(round) + "/registry.db");
    std::vector<std::unique_ptr<ChildProcess>> children;
    for (int i = 0; i < 6; ++i) {
      children.push_back(std::make_unique<ChildProcess>([&path, i] {
        SettingsTree tree(path);
        return tree.RegSetValueExA(Create(tree), std::to_string(i), REG_SZ, Whole(i)) == ERROR_SUCCESS ? 0
                                                                                                       : 1;
      }));
    }
    for (const auto& child : children) EXPECT_EQ(child->Wait(), 0);
    SettingsTree tree(path);
    const HKEY key = Create(tree);
    for (int i = 0; i < 6; ++i) EXPECT_EQ(Read(tree, key, std::to_string(i)), Whole(i));
    const auto folder = std::filesystem::path(path).parent_path();
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder), {}), 1) << "one file is left";
  }
}

TEST_F(SettingsTreeProcesses, AWriterWaitsForABatchOfAnotherProcess) {
  { (void)Create(*std::make_unique<SettingsTree>(path_)); }
  const Signal begun;
  ChildProcess child([&] {
    SettingsTree tree(path_);
    RegistryBatch batch(tree);
    tree.RegSetValueExA(Create(tree), "v", REG_SZ, Whole(1));
    begun.Give();
    // Long enough that the other has to wait, far below its patience.
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    batch.Commit();
    return 0;
  });
  begun.Wait();
  SettingsTree tree(path_);
  const HKEY key = Create(tree);
  EXPECT_TRUE(Read(tree, key, "v").empty()) << "an open batch is not seen, and does not hinder a reader";
  EXPECT_EQ(tree.RegSetValueExA(key, "w", REG_SZ, Whole(2)), ERROR_SUCCESS);
  EXPECT_EQ(Read(tree, key, "v"), Whole(1)) << "so the write came behind the batch";
  EXPECT_EQ(child.Wait(), 0);
}

TEST_F(SettingsTreeProcesses, AStoreThatIsHeldForTooLongIsToldOf) {
  { (void)Create(*std::make_unique<SettingsTree>(path_)); }
  const Signal begun;
  const Signal done;
  ChildProcess child([&] {
    SettingsTree tree(path_);
    const RegistryBatch batch(tree);
    begun.Give();
    done.Wait();
    return 0;
  });
  begun.Wait();
  SettingsTree tree(path_);
  const HKEY key = Create(tree);
  try {
    tree.RegSetValueExA(key, "v", REG_SZ, Whole(1));
    ADD_FAILURE() << "written through another's lock";
  } catch (const PlatformError& error) {
    EXPECT_NE(std::string(error.what()).find("is held by another program"), std::string::npos);
  }
  done.Give();
  EXPECT_EQ(child.Wait(), 0);
  EXPECT_EQ(tree.RegSetValueExA(key, "v", REG_SZ, Whole(1)), ERROR_SUCCESS) << "the next try succeeds";
}

TEST_F(SettingsTreeProcesses, AKeyDeletedByAnotherProcessIsTold) {
  SettingsTree tree(path_);
  const HKEY key = Create(tree);
  ChildProcess child([this] {
    SettingsTree other(path_);
    return static_cast<int>(other.RegDeleteKeyA(HKEY_CLASSES_ROOT, kPath));
  });
  EXPECT_EQ(child.Wait(), 0);
  EXPECT_EQ(tree.RegSetValueExA(key, "v", REG_SZ, Whole(1)), ERROR_KEY_DELETED);
}

/// Kills a writer again and again, each time a little later, and looks at what is left.
class SettingsTreeKilled : public SettingsTreeProcesses {
 protected:
  static constexpr int kKills = 120;

  template <typename Work, typename Check>
  void KillAgainAndAgain(const Work& work, const Check& check) {
    for (int round = 0; round < kKills; ++round) {
      const Signal begun;
      ChildProcess child([&] {
        SettingsTree tree(path_);
        (void)Create(tree);
        begun.Give();
        for (int i = 0;; ++i) work(tree, round * 7 + i);
        return 0;
      });
      begun.Wait();
      std::this_thread::sleep_for(std::chrono::microseconds(137 * round));
      child.Kill();
      SettingsTree tree(path_);
      ASSERT_NO_THROW(check(tree)) << "round " << round;
    }
  }
};

TEST_F(SettingsTreeKilled, AKilledWriterLeavesWholeValues) {
  const auto write = [](SettingsTree& tree, int i) {
    tree.RegSetValueExA(Create(tree), "v", REG_BINARY, Whole(i));
  };
  {
    SettingsTree tree(path_);
    write(tree, 0);
  }
  KillAgainAndAgain(write, [](SettingsTree& tree) { EXPECT_TRUE(IsWhole(Read(tree, Create(tree), "v"))); });
}

TEST_F(SettingsTreeKilled, AKilledBatchIsThereWholeOrNotAtAll) {
  const auto write = [](SettingsTree& tree, int i) {
    RegistryBatch batch(tree);
    for (const char* name : {"a", "b", "c"}) tree.RegSetValueExA(Create(tree), name, REG_BINARY, Whole(i));
    batch.Commit();
  };
  {
    SettingsTree tree(path_);
    write(tree, 0);
  }
  KillAgainAndAgain(write, [](SettingsTree& tree) {
    const HKEY key = Create(tree);
    const Bytes a = Read(tree, key, "a");
    EXPECT_TRUE(IsWhole(a));
    EXPECT_EQ(Read(tree, key, "b"), a);
    EXPECT_EQ(Read(tree, key, "c"), a);
  });
}

TEST_F(SettingsTreeKilled, AKeyDeletedWithItsValuesGoesWithThemOrStaysWithThem) {
  const auto work = [](SettingsTree& tree, int i) {
    const std::string path = std::string(kPath) + "\\k";
    tree.RegSetValueExA(Create(tree, path), "v", REG_BINARY, Whole(i));
    tree.RegDeleteKeyA(HKEY_CLASSES_ROOT, path);
  };
  KillAgainAndAgain(work, [](SettingsTree& tree) {
    HKEY key = 0;
    const long code = tree.RegOpenKeyExA(HKEY_CLASSES_ROOT, std::string(kPath) + "\\k", KEY_ALL_SIX, key);
    if (code != ERROR_SUCCESS) {
      EXPECT_EQ(code, ERROR_FILE_NOT_FOUND);
      return;
    }
    // Made and not yet filled, or filled.
    const Bytes bytes = Read(tree, key, "v");
    EXPECT_TRUE(bytes.empty() || IsWhole(bytes));
  });
}

TEST_F(SettingsTreeKilled, AFirstStartThatIsKilledIsFollowedByAnother) {
  for (int round = 0; round < kKills; ++round) {
    const std::string path = folder_.File("start" + std::to_string(round) + "/registry.db");
    const Signal begun;
    ChildProcess child([&] {
      SettingsTree tree(path);
      begun.Give();
      (void)Create(tree);
      return 0;
    });
    begun.Wait();
    std::this_thread::sleep_for(std::chrono::microseconds(29 * round));
    child.Kill();
    SettingsTree tree(path);
    ASSERT_NO_THROW((void)Create(tree)) << "round " << round;
  }
}

}  // namespace
}  // namespace kivandra
