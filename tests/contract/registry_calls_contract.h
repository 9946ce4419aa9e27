// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/platform_error.h"
#include "platform/registry_calls.h"

namespace kivandra::contract {

/// A kind of settings tree; `make` gives a fresh, empty one.
struct RegistryUnderTest {
  std::string name;
  std::function<std::shared_ptr<RegistryCalls>()> make;
};

/// What every settings tree does, the real one and the fake. Instantiate it with the trees at hand.
class RegistryCallsContract : public ::testing::TestWithParam<RegistryUnderTest> {
 protected:
  std::shared_ptr<RegistryCalls> tree_ = GetParam().make();
  RegistryCalls& calls_ = *tree_;

  HKEY Open(const std::string& path, std::uint32_t access = KEY_ALL_SIX, HKEY root = HKEY_CURRENT_USER) {
    HKEY key = 0;
    EXPECT_EQ(calls_.RegOpenKeyExA(root, path, access, key), ERROR_SUCCESS) << path;
    return key;
  }
  HKEY Create(const std::string& path, std::uint32_t access = KEY_ALL_SIX, HKEY root = HKEY_CURRENT_USER) {
    HKEY key = 0;
    std::uint32_t disposition = 0;
    EXPECT_EQ(calls_.RegCreateKeyExA(root, path, access, key, disposition), ERROR_SUCCESS) << path;
    return key;
  }
  long OpenCode(const std::string& path, HKEY root = HKEY_CURRENT_USER) {
    HKEY key = 0;
    const long code = calls_.RegOpenKeyExA(root, path, KEY_QUERY_VALUE, key);
    if (code == ERROR_SUCCESS) calls_.RegCloseKey(key);
    return code;
  }
  /// Bytes of a value, or "code N".
  std::string Read(HKEY key, const std::string& name) {
    std::uint32_t type = 0;
    std::size_t size = 0;
    long code = calls_.RegQueryValueExA(key, name, type, nullptr, size);
    std::vector<std::uint8_t> bytes(size + 1);
    if (code == ERROR_SUCCESS) code = calls_.RegQueryValueExA(key, name, type, bytes.data(), size);
    if (code != ERROR_SUCCESS) return "code " + std::to_string(code);
    return {bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(size)};
  }
  long Write(HKEY key, const std::string& name, const std::string& text) {
    return calls_.RegSetValueExA(key, name, REG_BINARY, Bytes(text.begin(), text.end()));
  }
  std::vector<std::string> SubKeys(HKEY key) {
    std::vector<std::string> names;
    std::string name;
    for (std::uint32_t i = 0; calls_.RegEnumKeyA(key, i, name, 2000) == ERROR_SUCCESS; ++i) {
      names.push_back(name);
    }
    return names;
  }
  std::vector<std::string> Values(HKEY key) {
    std::vector<std::string> names;
    std::string name;
    for (std::uint32_t i = 0; calls_.RegEnumValueA(key, i, name, 2000) == ERROR_SUCCESS; ++i) {
      names.push_back(name);
    }
    return names;
  }
  std::string Expand(const std::string& text) {
    std::string result;
    const std::size_t size = calls_.ExpandEnvironmentStringsA(text, result, 0);
    EXPECT_EQ(result, "") << "nothing fits into no room";
    EXPECT_EQ(calls_.ExpandEnvironmentStringsA(text, result, size), size);
    EXPECT_EQ(result.size() + 1, size);
    return result;
  }
};

using Names = std::vector<std::string>;

TEST_P(RegistryCallsContract, AKeyThatWasNeverMadeIsNotFound) {
  HKEY key = 77;
  EXPECT_EQ(calls_.RegOpenKeyExA(HKEY_CURRENT_USER, "a", KEY_QUERY_VALUE, key), ERROR_FILE_NOT_FOUND);
  EXPECT_EQ(key, 77U) << "the handle is untouched";
}

TEST_P(RegistryCallsContract, MakingAKeyMakesTheKeysAboveIt) {
  HKEY key = 0;
  std::uint32_t disposition = 0;
  EXPECT_EQ(calls_.RegCreateKeyExA(HKEY_CURRENT_USER, "a\\b\\c", KEY_ALL_SIX, key, disposition),
            ERROR_SUCCESS);
  EXPECT_EQ(disposition, REG_CREATED_NEW_KEY);
  EXPECT_EQ(OpenCode("a"), ERROR_SUCCESS);
  EXPECT_EQ(OpenCode("a\\b"), ERROR_SUCCESS);
  EXPECT_EQ(calls_.RegCreateKeyExA(HKEY_CURRENT_USER, "A\\B\\C", KEY_ALL_SIX, key, disposition),
            ERROR_SUCCESS);
  EXPECT_EQ(disposition, REG_OPENED_EXISTING_KEY);
  EXPECT_EQ(SubKeys(HKEY_CURRENT_USER), Names{"a"});
}

TEST_P(RegistryCallsContract, PathsGoOnFromAnOpenKey) {
  const HKEY key = Create("a\\b");
  Create("a\\b\\c");
  HKEY below = 0;
  EXPECT_EQ(calls_.RegOpenKeyExA(key, "c", KEY_QUERY_VALUE, below), ERROR_SUCCESS);
  EXPECT_EQ(calls_.RegOpenKeyExA(key, "b", KEY_QUERY_VALUE, below), ERROR_FILE_NOT_FOUND);
}

TEST_P(RegistryCallsContract, AnEmptyPathIsTheKeyItself) {
  const HKEY key = Create("a");
  Write(key, "v", "1");
  HKEY same = 0;
  EXPECT_EQ(calls_.RegOpenKeyExA(key, "", KEY_QUERY_VALUE, same), ERROR_SUCCESS);
  EXPECT_EQ(Read(same, "v"), "1");
  std::uint32_t disposition = 0;
  EXPECT_EQ(calls_.RegCreateKeyExA(key, "", KEY_QUERY_VALUE, same, disposition), ERROR_SUCCESS);
  EXPECT_EQ(disposition, REG_OPENED_EXISTING_KEY);
}

TEST_P(RegistryCallsContract, BackslashesCountOnceAndNeverFirst) {
  Create("a\\\\b\\");
  EXPECT_EQ(OpenCode("a\\b"), ERROR_SUCCESS);
  EXPECT_EQ(OpenCode("\\a"), ERROR_BAD_PATHNAME);
  HKEY key = 0;
  std::uint32_t disposition = 0;
  EXPECT_EQ(calls_.RegCreateKeyExA(HKEY_CURRENT_USER, "\\x", KEY_ALL_SIX, key, disposition),
            ERROR_BAD_PATHNAME);
  EXPECT_EQ(calls_.RegDeleteKeyA(HKEY_CURRENT_USER, "\\a\\b"), ERROR_BAD_PATHNAME);
  EXPECT_EQ(SubKeys(HKEY_CURRENT_USER), Names{"a"});
}

TEST_P(RegistryCallsContract, NamesIgnoreCaseAndKeepTheirFirstSpelling) {
  const HKEY key = Create("Caf\xC3\xA9");
  EXPECT_EQ(OpenCode("CAF\xC3\x89"), ERROR_SUCCESS);
  EXPECT_EQ(OpenCode("cafe"), ERROR_FILE_NOT_FOUND);
  Create("CAF\xC3\x89");
  EXPECT_EQ(SubKeys(HKEY_CURRENT_USER), Names{"Caf\xC3\xA9"});
  Write(key, "\xC3\x84name", "1");
  Write(key, "\xC3\xA4NAME", "2");
  EXPECT_EQ(Read(key, "\xC3\xA4name"), "2");
  EXPECT_EQ(Values(key), Names{"\xC3\x84name"});
}

TEST_P(RegistryCallsContract, ANameEndsAtItsFirstZero) {
  const HKEY key = Create(std::string("a\0b", 3));
  EXPECT_EQ(SubKeys(HKEY_CURRENT_USER), Names{"a"});
  Write(key, std::string("v\0w", 3), "1");
  EXPECT_EQ(Values(key), Names{"v"});
  EXPECT_EQ(Read(key, std::string("V\0x", 3)), "1");
}

TEST_P(RegistryCallsContract, LongNamesAreRefusedWhereTheLimitIs) {
  HKEY key = 0;
  std::uint32_t disposition = 0;
  const auto create = [&](const std::string& name) {
    return calls_.RegCreateKeyExA(HKEY_CURRENT_USER, name, KEY_ALL_SIX, key, disposition);
  };
  std::string accented;
  for (int i = 0; i < 255; ++i) accented += "\xC3\xA9";
  EXPECT_EQ(create(std::string(255, 'k')), ERROR_SUCCESS);
  EXPECT_EQ(create(accented), ERROR_SUCCESS);
  EXPECT_EQ(create(std::string(256, 'k')), ERROR_INVALID_PARAMETER);
  EXPECT_EQ(create("x\\" + accented + "e"), ERROR_INVALID_PARAMETER);
  EXPECT_EQ(OpenCode("x"), ERROR_FILE_NOT_FOUND) << "nothing of a refused path is made";
  EXPECT_EQ(OpenCode(std::string(256, 'k')), ERROR_FILE_NOT_FOUND);
  EXPECT_EQ(Write(HKEY_CURRENT_USER, std::string(16383, 'v'), "1"), ERROR_SUCCESS);
  EXPECT_EQ(Write(HKEY_CURRENT_USER, std::string(16384, 'v'), "1"), ERROR_INVALID_PARAMETER);
}

TEST_P(RegistryCallsContract, ValuesKeepTheirTypeAndBytes) {
  const HKEY key = Create("a");
  for (const std::uint32_t type : {0U, REG_SZ, REG_BINARY, REG_MULTI_SZ, 305419896U, 0xFFFFFFFFU}) {
    Bytes bytes(256);
    for (std::size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<std::uint8_t>(i);
    EXPECT_EQ(calls_.RegSetValueExA(key, "v", type, bytes), ERROR_SUCCESS);
    std::uint32_t found = 1234;
    Bytes read(256);
    std::size_t size = read.size();
    EXPECT_EQ(calls_.RegQueryValueExA(key, "v", found, read.data(), size), ERROR_SUCCESS);
    EXPECT_EQ(found, type);
    EXPECT_EQ(size, 256U);
    EXPECT_EQ(read, bytes);
  }
}

TEST_P(RegistryCallsContract, AReadIntoTooLittleRoomTellsTheSizeAndWritesNothing) {
  const HKEY key = Create("a");
  Write(key, "v", "12345");
  std::uint32_t type = 0;
  Bytes room = {9, 9, 9, 9};
  std::size_t size = room.size();
  EXPECT_EQ(calls_.RegQueryValueExA(key, "v", type, room.data(), size), ERROR_MORE_DATA);
  EXPECT_EQ(size, 5U);
  EXPECT_EQ(type, REG_BINARY);
  EXPECT_EQ(room, (Bytes{9, 9, 9, 9}));
}

TEST_P(RegistryCallsContract, AReadOfAMissingValueChangesNothing) {
  const HKEY key = Create("a");
  std::uint32_t type = 55;
  std::size_t size = 66;
  EXPECT_EQ(calls_.RegQueryValueExA(key, "v", type, nullptr, size), ERROR_FILE_NOT_FOUND);
  EXPECT_EQ(type, 55U);
  EXPECT_EQ(size, 66U);
}

TEST_P(RegistryCallsContract, EmptyValuesAndTheDefaultValueAreValues) {
  const HKEY key = Create("a");
  EXPECT_EQ(Read(key, ""), "code 2");
  Write(key, "", "");
  Write(key, "e", "");
  EXPECT_EQ(Read(key, ""), "");
  EXPECT_EQ(Read(key, "e"), "");
  EXPECT_EQ(Read(key, "(Default)"), "code 2");
  EXPECT_EQ(Values(key), (Names{"", "e"}));
}

TEST_P(RegistryCallsContract, AHandleWithoutTheRightIsDenied) {
  Create("a\\b");
  const HKEY none = Open("a", 0);
  std::uint32_t type = 0;
  std::uint32_t count = 0;
  std::size_t size = 0;
  std::size_t longest = 0;
  std::string name;
  HKEY key = 0;
  EXPECT_EQ(calls_.RegQueryValueExA(none, "v", type, nullptr, size), ERROR_ACCESS_DENIED);
  EXPECT_EQ(Write(Open("a", KEY_ALL_SIX & ~KEY_SET_VALUE), "v", "1"), ERROR_ACCESS_DENIED);
  EXPECT_EQ(calls_.RegDeleteValueA(none, "v"), ERROR_ACCESS_DENIED);
  EXPECT_EQ(calls_.RegEnumKeyA(none, 0, name, 99), ERROR_ACCESS_DENIED);
  EXPECT_EQ(calls_.RegEnumValueA(none, 0, name, 99), ERROR_ACCESS_DENIED);
  EXPECT_EQ(calls_.RegQueryInfoKeyA(none, count, size, count, longest), ERROR_ACCESS_DENIED);
  EXPECT_EQ(calls_.RegCreateKeyExA(none, "new", KEY_ALL_SIX, key, type), ERROR_ACCESS_DENIED);
  EXPECT_EQ(calls_.RegCreateKeyExA(none, "b", KEY_ALL_SIX, key, type), ERROR_SUCCESS) << "it is there";
  EXPECT_EQ(Write(Open("a", KEY_SET_VALUE), "v", "1"), ERROR_SUCCESS);
  EXPECT_EQ(Read(Open("a", KEY_QUERY_VALUE), "v"), "1");
}

TEST_P(RegistryCallsContract, HandlesThatAreNotOpenAreRefusedByEveryCall) {
  const HKEY closed = Create("a");
  EXPECT_EQ(calls_.RegCloseKey(closed), ERROR_SUCCESS);
  for (const HKEY key : {closed, HKEY{0}, HKEY{4711}, HKEY{0x8000ABCD}, HKEY{0xFFFFFFFF}}) {
    std::uint32_t number = 0;
    std::size_t size = 0;
    std::string name;
    HKEY result = 0;
    EXPECT_EQ(calls_.RegOpenKeyExA(key, "a", KEY_QUERY_VALUE, result), ERROR_INVALID_HANDLE);
    EXPECT_EQ(calls_.RegCreateKeyExA(key, "a", KEY_ALL_SIX, result, number), ERROR_INVALID_HANDLE);
    EXPECT_EQ(calls_.RegQueryValueExA(key, "v", number, nullptr, size), ERROR_INVALID_HANDLE);
    EXPECT_EQ(Write(key, "v", "1"), ERROR_INVALID_HANDLE);
    EXPECT_EQ(calls_.RegCloseKey(key), ERROR_INVALID_HANDLE);
    EXPECT_EQ(calls_.RegDeleteKeyA(key, "a"), ERROR_INVALID_HANDLE);
    EXPECT_EQ(calls_.RegDeleteValueA(key, "v"), ERROR_INVALID_HANDLE);
    EXPECT_EQ(calls_.RegEnumKeyA(key, 0, name, 99), ERROR_INVALID_HANDLE);
    EXPECT_EQ(calls_.RegEnumValueA(key, 0, name, 99), ERROR_INVALID_HANDLE);
    EXPECT_EQ(calls_.RegQueryInfoKeyA(key, number, size, number, size), ERROR_INVALID_HANDLE);
  }
}

TEST_P(RegistryCallsContract, AKeyOpenedTwiceStaysOpenUntilItIsClosedTwice) {
  Create("a");
  const HKEY first = Open("a");
  const HKEY second = Open("a");
  Write(first, "v", "1");
  EXPECT_EQ(calls_.RegCloseKey(first), ERROR_SUCCESS);
  EXPECT_EQ(Read(second, "v"), "1");
  EXPECT_EQ(calls_.RegCloseKey(second), ERROR_SUCCESS);
}

TEST_P(RegistryCallsContract, ARootCanBeClosedAndIsOpenAllTheSame) {
  EXPECT_EQ(calls_.RegCloseKey(HKEY_CURRENT_USER), ERROR_SUCCESS);
  EXPECT_EQ(Write(HKEY_CURRENT_USER, "v", "1"), ERROR_SUCCESS);
}

TEST_P(RegistryCallsContract, RootsAreApart) {
  Write(HKEY_CURRENT_USER, "v", "1");
  for (const HKEY root : {HKEY_CLASSES_ROOT, HKEY_LOCAL_MACHINE, HKEY_USERS, HKEY_CURRENT_CONFIG}) {
    EXPECT_EQ(Read(root, "v"), "code 2");
  }
}

TEST_P(RegistryCallsContract, ClassesAreOneTreeUnderBothOfTheirRoots) {
  Write(Create("x", KEY_ALL_SIX, HKEY_CLASSES_ROOT), "v", "1");
  EXPECT_EQ(Read(Open("Software\\CLASSES\\X", KEY_ALL_SIX, HKEY_LOCAL_MACHINE), "v"), "1");
  EXPECT_EQ(calls_.RegDeleteKeyA(HKEY_LOCAL_MACHINE, "SOFTWARE\\Classes\\x"), ERROR_SUCCESS);
  EXPECT_EQ(OpenCode("x", HKEY_CLASSES_ROOT), ERROR_FILE_NOT_FOUND);
}

TEST_P(RegistryCallsContract, RootsAndClassesCannotBeDeleted) {
  EXPECT_EQ(calls_.RegDeleteKeyA(HKEY_CURRENT_USER, ""), ERROR_ACCESS_DENIED);
  EXPECT_EQ(calls_.RegDeleteKeyA(HKEY_CLASSES_ROOT, ""), ERROR_ACCESS_DENIED);
  EXPECT_EQ(calls_.RegDeleteKeyA(HKEY_LOCAL_MACHINE, "SOFTWARE\\Classes"), ERROR_ACCESS_DENIED);
  EXPECT_EQ(calls_.RegDeleteKeyA(HKEY_LOCAL_MACHINE, "SOFTWARE"), ERROR_ACCESS_DENIED);
}

TEST_P(RegistryCallsContract, AKeyWithSubkeysStaysAndOneWithValuesGoes) {
  Write(Create("a\\b"), "v", "1");
  EXPECT_EQ(calls_.RegDeleteKeyA(HKEY_CURRENT_USER, "a"), ERROR_ACCESS_DENIED);
  EXPECT_EQ(Read(Open("a\\b"), "v"), "1");
  EXPECT_EQ(calls_.RegDeleteKeyA(HKEY_CURRENT_USER, "A\\B"), ERROR_SUCCESS);
  EXPECT_EQ(calls_.RegDeleteKeyA(HKEY_CURRENT_USER, "a\\b"), ERROR_FILE_NOT_FOUND);
  EXPECT_EQ(Read(Create("a\\b"), "v"), "code 2") << "a key made anew is empty";
  EXPECT_EQ(calls_.RegDeleteKeyA(Open("a\\b"), ""), ERROR_SUCCESS) << "an empty path is the key itself";
  EXPECT_EQ(OpenCode("a\\b"), ERROR_FILE_NOT_FOUND);
}

TEST_P(RegistryCallsContract, AHandleOfADeletedKeySaysSoEvenIfTheKeyIsMadeAnew) {
  const HKEY key = Create("a");
  EXPECT_EQ(calls_.RegDeleteKeyA(HKEY_CURRENT_USER, "a"), ERROR_SUCCESS);
  Create("a");
  std::uint32_t number = 0;
  std::size_t size = 0;
  std::string name;
  HKEY result = 0;
  EXPECT_EQ(calls_.RegOpenKeyExA(key, "", KEY_QUERY_VALUE, result), ERROR_KEY_DELETED);
  EXPECT_EQ(calls_.RegCreateKeyExA(key, "b", KEY_ALL_SIX, result, number), ERROR_KEY_DELETED);
  EXPECT_EQ(Read(key, "v"), "code 1018");
  EXPECT_EQ(Write(key, "v", "1"), ERROR_KEY_DELETED);
  EXPECT_EQ(calls_.RegDeleteValueA(key, "v"), ERROR_KEY_DELETED);
  EXPECT_EQ(calls_.RegDeleteKeyA(key, ""), ERROR_KEY_DELETED);
  EXPECT_EQ(calls_.RegEnumKeyA(key, 0, name, 99), ERROR_KEY_DELETED);
  EXPECT_EQ(calls_.RegEnumValueA(key, 0, name, 99), ERROR_KEY_DELETED);
  EXPECT_EQ(calls_.RegQueryInfoKeyA(key, number, size, number, size), ERROR_KEY_DELETED);
  EXPECT_EQ(calls_.RegCloseKey(key), ERROR_SUCCESS);
}

TEST_P(RegistryCallsContract, ADeletedValueIsGoneAndTheOthersStay) {
  const HKEY key = Create("a");
  Write(key, "Name", "1");
  Write(key, "b", "2");
  EXPECT_EQ(calls_.RegDeleteValueA(key, "NAME"), ERROR_SUCCESS);
  EXPECT_EQ(calls_.RegDeleteValueA(key, "name"), ERROR_FILE_NOT_FOUND);
  EXPECT_EQ(Values(key), Names{"b"});
}

TEST_P(RegistryCallsContract, ListsGiveTheNextLevelAloneAndEnd) {
  Create("a\\s\\t");
  Create("a\\u");
  const HKEY key = Open("a");
  EXPECT_EQ(SubKeys(key), (Names{"s", "u"}));
  std::string name = "before";
  EXPECT_EQ(calls_.RegEnumKeyA(key, 2, name, 99), ERROR_NO_MORE_ITEMS);
  EXPECT_EQ(calls_.RegEnumValueA(key, 0, name, 99), ERROR_NO_MORE_ITEMS);
  EXPECT_EQ(name, "before");
}

TEST_P(RegistryCallsContract, ANameNeedsRoomForItsClosingZero) {
  const HKEY key = Create("a");
  Create("a\\1234");
  Write(key, "123", "1");
  std::string name = "before";
  EXPECT_EQ(calls_.RegEnumKeyA(key, 0, name, 4), ERROR_MORE_DATA);
  EXPECT_EQ(calls_.RegEnumValueA(key, 0, name, 3), ERROR_MORE_DATA);
  EXPECT_EQ(name, "before");
  EXPECT_EQ(calls_.RegEnumKeyA(key, 0, name, 5), ERROR_SUCCESS);
  EXPECT_EQ(name, "1234");
  EXPECT_EQ(calls_.RegEnumValueA(key, 0, name, 4), ERROR_SUCCESS);
  EXPECT_EQ(name, "123");
}

TEST_P(RegistryCallsContract, InfoCountsAndMeasuresInBytes) {
  const HKEY key = Create("a");
  std::uint32_t subKeys = 9;
  std::uint32_t values = 9;
  std::size_t longestKey = 9;
  std::size_t longestValue = 9;
  const auto info = [&] { return calls_.RegQueryInfoKeyA(key, subKeys, longestKey, values, longestValue); };
  EXPECT_EQ(info(), ERROR_SUCCESS);
  EXPECT_EQ(subKeys + values + longestKey + longestValue, 0U);
  Create("a\\\xC3\xA9");
  Create("a\\b\\longer");
  Write(key, "abc", "1");
  Write(key, "", "1");
  EXPECT_EQ(info(), ERROR_SUCCESS);
  EXPECT_EQ(subKeys, 2U);
  EXPECT_EQ(longestKey, 2U);
  EXPECT_EQ(values, 2U);
  EXPECT_EQ(longestValue, 3U);
}

TEST_P(RegistryCallsContract, ExpandsTheVariablesThatThereAre) {
  ::setenv("KV_ONE", "1", 1);
  ::setenv("KV_NEST", "%KV_ONE%", 1);
  ::setenv("KV_\xC3\xA9", "accented", 1);
  ::setenv("KV_EMPTY", "", 1);
  ::setenv("kv_case", "small", 1);
  ::setenv("KV_CASE", "large", 1);
  struct Row {
    const char* text;
    const char* expanded;
  };
  for (const Row& row : {
           Row{"", ""},
           Row{"plain", "plain"},
           Row{"%", "%"},
           Row{"%%", "%%"},
           Row{"%KV_ONE%", "1"},
           Row{"a%KV_ONE%b%KV_ONE%c", "a1b1c"},
           Row{"%kv_one%", "1"},
           Row{"%KV_\xC3\x89%", "accented"},
           Row{"%KV_NEST%", "%KV_ONE%"},
           Row{"x%KV_EMPTY%y", "xy"},
           Row{"%KV_NONE%", "%KV_NONE%"},
           Row{"%KV_NONE%%KV_ONE%", "%KV_NONE%1"},
           Row{"%KV_ONE%%", "1%"},
           Row{"%KV_ONE", "%KV_ONE"},
           Row{"%KV_ONE %", "%KV_ONE %"},
           Row{"%kv_case%%KV_CASE%", "smalllarge"},
       }) {
    EXPECT_EQ(Expand(row.text), row.expanded) << row.text;
  }
  EXPECT_EQ(Expand(std::string("%KV_ONE%\0%KV_ONE%", 17)), "1") << "the text ends at its first zero";
}

TEST_P(RegistryCallsContract, ABatchThatIsCommittedStays) {
  {
    RegistryBatch batch(calls_);
    Write(Create("a\\b"), "v", "1");
    EXPECT_EQ(Read(Open("a\\b"), "v"), "1") << "its own writes are seen inside";
    batch.Commit();
  }
  EXPECT_EQ(Read(Open("a\\b"), "v"), "1");
}

TEST_P(RegistryCallsContract, ABatchThatIsNotCommittedLeavesNothing) {
  const HKEY key = Create("a");
  Write(key, "v", "1");
  Create("gone");
  {
    const RegistryBatch batch(calls_);
    Write(key, "v", "2");
    Write(key, "w", "2");
    Create("a\\b");
    EXPECT_EQ(calls_.RegDeleteKeyA(HKEY_CURRENT_USER, "gone"), ERROR_SUCCESS);
    EXPECT_EQ(calls_.RegDeleteKeyA(HKEY_CURRENT_USER, "none"), ERROR_FILE_NOT_FOUND);
  }
  EXPECT_EQ(Read(key, "v"), "1");
  EXPECT_EQ(Read(key, "w"), "code 2");
  EXPECT_EQ(SubKeys(HKEY_CURRENT_USER), (Names{"a", "gone"}));
}

TEST_P(RegistryCallsContract, BatchesDoNotNestAndTheFirstGoesOn) {
  RegistryBatch batch(calls_);
  EXPECT_THROW(RegistryBatch inner(calls_), PlatformError);
  Write(HKEY_CURRENT_USER, "v", "1");
  batch.Commit();
  EXPECT_EQ(Read(HKEY_CURRENT_USER, "v"), "1");
}

}  // namespace kivandra::contract
