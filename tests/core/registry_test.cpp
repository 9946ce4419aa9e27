// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/registry.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "fakes/memory_registry.h"
#include "platform/platform_error.h"

namespace kivandra {
namespace {

using fakes::MemoryRegistry;

/// A tree whose named call gives a code instead of working.
class RefusingRegistry : public MemoryRegistry {
 public:
  long setCode = 0;
  long createCode = 0;

  long RegCreateKeyExA(HKEY key, const std::string& path, std::uint32_t access, HKEY& result,
                       std::uint32_t& disposition) override {
    if (createCode != 0) return createCode;
    return MemoryRegistry::RegCreateKeyExA(key, path, access, result, disposition);
  }
  long RegSetValueExA(HKEY key, const std::string& name, std::uint32_t type, const Bytes& data) override {
    if (setCode != 0) return setCode;
    return MemoryRegistry::RegSetValueExA(key, name, type, data);
  }
};

class CRegistry : public ::testing::Test {
 protected:
  RefusingRegistry tree_;
  cRegistry registry_{tree_, "kivandra"};

  void SetUp() override {
    registry_.SetClassKey(HKEY_CURRENT_USER);
    registry_.SetSectionKey("a\\b");
    registry_.SetValueKey("v");
    registry_.SetValueType(REG_SZ);
  }
  void Store(std::uint32_t type, const Bytes& bytes) {
    HKEY key = 0;
    std::uint32_t disposition = 0;
    tree_.RegCreateKeyExA(HKEY_CURRENT_USER, "a\\b", KEY_ALL_SIX, key, disposition);
    tree_.RegSetValueExA(key, "v", type, bytes);
    tree_.RegCloseKey(key);
  }
  /// Type and bytes of the value; type 99 if there is none.
  std::pair<std::uint32_t, Bytes> Stored() {
    HKEY key = 0;
    std::uint32_t type = 99;
    Bytes bytes(10000);
    std::size_t size = bytes.size();
    if (tree_.RegOpenKeyExA(HKEY_CURRENT_USER, "a\\b", KEY_QUERY_VALUE, key) != ERROR_SUCCESS ||
        tree_.RegQueryValueExA(key, "v", type, bytes.data(), size) != ERROR_SUCCESS) {
      size = 0;
    }
    tree_.RegCloseKey(key);
    bytes.resize(size);
    return {type, bytes};
  }
  static void ExpectError(long number, const std::string& text, const std::function<void()>& work) {
    try {
      work();
      ADD_FAILURE() << "no error: " << text;
    } catch (const PlatformError& error) {
      EXPECT_EQ(error.Number(), number);
      EXPECT_EQ(std::string(error.what()), text);
      EXPECT_EQ(error.Source(), "kivandra.cRegistry");
    }
  }
};

Bytes TextBytes(const std::string& text) {
  Bytes bytes(text.begin(), text.end());
  bytes.push_back(0);
  return bytes;
}

TEST_F(CRegistry, AFreshObjectPointsNowhere) {
  const cRegistry fresh(tree_);
  EXPECT_EQ(fresh.ClassKey(), 0U);
  EXPECT_EQ(fresh.SectionKey(), "");
  EXPECT_EQ(fresh.ValueKey(), "");
  EXPECT_EQ(fresh.ValueType(), 0U);
  EXPECT_EQ(fresh.Default(), Variant());
  EXPECT_EQ(fresh.LastValue(), Variant());
}

TEST_F(CRegistry, MakingAKeySaysTrueForANewAndForAnExistingOne) {
  EXPECT_FALSE(registry_.KeyExists());
  EXPECT_TRUE(registry_.CreateKey());
  EXPECT_TRUE(registry_.KeyExists());
  EXPECT_TRUE(registry_.CreateKey());
  EXPECT_EQ(tree_.OpenHandles(), 0U);
}

TEST_F(CRegistry, AReadOfAMissingValueGivesTheDefaultAndLeavesTheType) {
  registry_.SetValueType(4711);
  EXPECT_EQ(registry_.Value(), Variant()) << "no key";
  registry_.CreateKey();
  EXPECT_EQ(registry_.Value(), Variant()) << "no value";
  registry_.SetDefault(std::string("other"));
  EXPECT_EQ(registry_.Value(), Variant(std::string("other")));
  EXPECT_EQ(registry_.ValueType(), 4711U);
}

TEST_F(CRegistry, EachReadLeavesOneHandleOpen) {
  Store(REG_SZ, TextBytes("x"));
  (void)registry_.Value();
  (void)registry_.Value();
  registry_.SetValueKey("missing");
  (void)registry_.Value();
  EXPECT_EQ(tree_.OpenHandles(), 3U);
}

TEST_F(CRegistry, ReadsEveryTypeInItsForm) {
  ::setenv("KV_VAR", "value", 1);
  struct Row {
    const char* name;
    std::uint32_t type;
    Bytes bytes;
    Variant read;
  };
  for (const Row& row : {
           Row{"text", REG_SZ, TextBytes("abc"), std::string("abc")},
           Row{"empty text", REG_SZ, TextBytes(""), std::string()},
           Row{"text without a byte", REG_SZ, {}, std::string()},
           Row{"long text", REG_SZ, TextBytes(std::string(5000, 'x')), std::string(5000, 'x')},
           Row{"text that looks like a variable", REG_SZ, TextBytes("%KV_VAR%"), std::string("%KV_VAR%")},
           Row{"text with a variable", REG_EXPAND_SZ, TextBytes("a%KV_VAR%b"), std::string("avalueb")},
           Row{"text with an unknown variable", REG_EXPAND_SZ, TextBytes("%KV_NO%%"),
               std::string("%KV_NO%%")},
           Row{"several texts", REG_MULTI_SZ, {'a', 0, 'b', 0, 0}, std::string("a\0b\0", 4)},
           Row{"number", REG_DWORD, {0x78, 0x56, 0x34, 0x12}, std::int32_t{0x12345678}},
           Row{"negative number", REG_DWORD, {0xFE, 0xFF, 0xFF, 0xFF}, std::int32_t{-2}},
           Row{"swapped number", REG_DWORD_BIG_ENDIAN, {0x12, 0x34, 0x56, 0x78}, std::int32_t{0x12345678}},
           Row{"swapped negative number", REG_DWORD_BIG_ENDIAN, {0xFF, 0xFF, 0xFF, 0xFE}, std::int32_t{-2}},
           Row{"number of two bytes", REG_DWORD, {1, 2}, std::int32_t{0x0201}},
           Row{"number of too many bytes", REG_DWORD, {1, 2, 3, 4, 5}, std::int32_t{0}},
           Row{"bytes", REG_BINARY, {1, 2, 3, 4, 5}, Bytes{1, 2, 3, 4, 5}},
           Row{"no bytes", REG_BINARY, {}, Bytes{}},
           Row{"unknown type", 11, {1, 2, 3, 4, 5, 6, 7, 8}, Bytes{1, 2, 3, 4, 5, 6, 7, 8}},
           Row{"type 0", 0, {9}, Bytes{9}},
       }) {
    Store(row.type, row.bytes);
    registry_.SetValueType(4711);
    EXPECT_EQ(registry_.Value(), row.read) << row.name;
    EXPECT_EQ(registry_.ValueType(), row.type) << row.name;
  }
}

TEST_F(CRegistry, TextIsStoredAsExpandableOnlyWithTwoPercentSignsApart) {
  struct Row {
    const char* text;
    std::uint32_t type;
  };
  for (const Row& row : {
           Row{"", REG_SZ},
           Row{"a", REG_SZ},
           Row{"%", REG_SZ},
           Row{"a%b", REG_SZ},
           Row{"%%", REG_SZ},
           Row{"a%%b", REG_SZ},
           Row{"% %", REG_EXPAND_SZ},
           Row{"%%%", REG_EXPAND_SZ},
           Row{"pa%ss%wd", REG_EXPAND_SZ},
           Row{"50% or 60%", REG_EXPAND_SZ},
           Row{"%\xC3\xA9%", REG_EXPAND_SZ},
           Row{"%\xC3\xA9", REG_SZ},
       }) {
    for (const std::uint32_t type : {REG_SZ, REG_EXPAND_SZ}) {
      registry_.SetValueType(type);
      registry_.SetValue(std::string(row.text));
      EXPECT_EQ(Stored(), std::make_pair(row.type, TextBytes(row.text))) << row.text;
    }
  }
  EXPECT_EQ(tree_.OpenHandles(), 0U);
}

TEST_F(CRegistry, TextIsMadeOfAnyValue) {
  struct Row {
    Variant value;
    const char* text;
  };
  for (const Row& row : {
           Row{Variant(), ""},
           Row{true, "True"},
           Row{false, "False"},
           Row{std::int16_t{-7}, "-7"},
           Row{std::int32_t{2147483647}, "2147483647"},
           Row{std::uint8_t{200}, "200"},
           Row{1.5, "1.5"},
           Row{0.1, "0.1"},
           Row{3.0, "3"},
           Row{1e20, "1E+20"},
           Row{Bytes{1, 0xAB}, "01AB"},
       }) {
    registry_.SetValue(row.value);
    EXPECT_EQ(Stored(), std::make_pair(REG_SZ, TextBytes(row.text)));
    EXPECT_EQ(registry_.LastValue(), row.value);
  }
}

TEST_F(CRegistry, BytesLoseTheirLastTwo) {
  registry_.SetValueType(REG_BINARY);
  registry_.SetValue(Bytes{1, 2, 3, 4, 5});
  EXPECT_EQ(Stored(), std::make_pair(REG_BINARY, Bytes{1, 2, 3}));
  registry_.SetValue(Bytes{1, 2});
  EXPECT_EQ(Stored(), std::make_pair(REG_BINARY, Bytes{}));
}

TEST_F(CRegistry, FewerThanTwoBytesAreAFailingWrite) {
  registry_.SetValueType(REG_BINARY);
  for (const auto& [bytes, text] : {std::pair<Bytes, std::string>{{7}, "07"}, {{}, ""}}) {
    ExpectError(
        kRegistryWriteError,
        "Failed to set registry value Key: '-2147483647',Section: 'a\\b',Key: 'v' to value: '" + text + "'",
        [&, &data = bytes] { registry_.SetValue(data); });
  }
  EXPECT_EQ(Stored().first, 99U);
}

TEST_F(CRegistry, AnythingButBytesIsNoBinaryValue) {
  registry_.SetValueType(REG_BINARY);
  ExpectError(26001,
              "Failed to set registry value Key: '-2147483647',Section: 'a\\b',Key: 'v' to value: 'abc'",
              [&] { registry_.SetValue(std::string("abc")); });
  EXPECT_EQ(tree_.OpenHandles(), 0U);
}

TEST_F(CRegistry, NumbersAreStoredInOneWayAndOtherValuesNotAtAll) {
  for (const std::uint32_t type : {REG_DWORD, REG_DWORD_BIG_ENDIAN}) {
    registry_.SetValueType(type);
    registry_.SetValue(std::int32_t{0x12345678});
    EXPECT_EQ(Stored(), std::make_pair(REG_DWORD, Bytes{0x78, 0x56, 0x34, 0x12}));
    registry_.SetValue(std::int16_t{-2});
    EXPECT_EQ(Stored(), std::make_pair(REG_DWORD, Bytes{0xFE, 0xFF, 0xFF, 0xFF}));
    for (const Variant& value : {Variant(std::string("12")), Variant(1.5), Variant(true),
                                 Variant(std::uint8_t{1}), Variant(), Variant(Bytes{1, 2, 3, 4})}) {
      registry_.SetValue(value);
      EXPECT_EQ(Stored(), std::make_pair(REG_DWORD, Bytes{0xFE, 0xFF, 0xFF, 0xFF}));
    }
  }
}

TEST_F(CRegistry, ABigEndianNumberIsReadSwappedAndWrittenBackPlain) {
  Store(REG_DWORD_BIG_ENDIAN, {0x12, 0x34, 0x56, 0x78});
  registry_.SetValue(registry_.Value());
  EXPECT_EQ(Stored(), std::make_pair(REG_DWORD, Bytes{0x78, 0x56, 0x34, 0x12}));
}

TEST_F(CRegistry, OtherTypesCannotBeWrittenButTheKeyIsMade) {
  for (const std::uint32_t type : {0U, 6U, REG_MULTI_SZ, 11U}) {
    registry_.SetValueType(type);
    ExpectError(kRegistryWriteError,
                "Failed to set registry value Key: '-2147483647',Section: 'a\\b',Key: 'v' to value: 'x'",
                [&] { registry_.SetValue(std::string("x")); });
  }
  EXPECT_TRUE(registry_.KeyExists());
  EXPECT_EQ(registry_.LastValue(), Variant());
}

TEST_F(CRegistry, TheNumberOfAFailingWriteIsThatOfThePlatform) {
  EXPECT_EQ(static_cast<std::uint32_t>(kRegistryWriteError), 0x800469A9U);
  EXPECT_LT(kRegistryWriteError, 0);
}

TEST_F(CRegistry, TellsWhatItCouldNotDo) {
  ExpectError(26001, "Failed to delete registry Key: 'a\\b',Section: '-2147483647",
              [&] { registry_.DeleteKey(); });
  ExpectError(26001, "Failed to open key '-2147483647',Section: 'a\\b' for delete access",
              [&] { registry_.DeleteValue(); });
  registry_.CreateKey();
  ExpectError(26001, "Failed to delete registry Key: 'v',Section: '-2147483647',Key: 'a\\b",
              [&] { registry_.DeleteValue(); });
  tree_.setCode = ERROR_ACCESS_DENIED;
  ExpectError(kRegistryWriteError,
              "Failed to set registry value Key: '-2147483647',Section: 'a\\b',Key: 'v' to value: 'secret'",
              [&] { registry_.SetValue(std::string("secret")); });
  tree_.createCode = ERROR_ACCESS_DENIED;
  ExpectError(26001,
              "Failed to set registry value Key: '-2147483647',Section: 'a\\b',Key: 'v' to value: 'secret'",
              [&] { registry_.SetValue(std::string("secret")); });
  ExpectError(26001, "Failed to create registry Key: 'a\\b", [&] { registry_.CreateKey(); });
  EXPECT_EQ(tree_.OpenHandles(), 0U);
}

TEST_F(CRegistry, AnUnknownRootHasNothingAndTakesNothing) {
  registry_.SetClassKey(0x8000ABCD);
  EXPECT_FALSE(registry_.KeyExists());
  EXPECT_EQ(registry_.Value(), Variant());
  ExpectError(26001, "Failed to create registry Key: 'a\\b", [&] { registry_.CreateKey(); });
}

TEST_F(CRegistry, AKeyWithSubkeysIsNotDeleted) {
  registry_.CreateKey();
  registry_.SetSectionKey("a");
  ExpectError(26001, "Failed to delete registry Key: 'a',Section: '-2147483647",
              [&] { registry_.DeleteKey(); });
  registry_.SetSectionKey("a\\b");
  EXPECT_TRUE(registry_.DeleteKey());
  EXPECT_FALSE(registry_.KeyExists());
}

TEST_F(CRegistry, DeletesOneValue) {
  registry_.SetValue(std::string("x"));
  EXPECT_TRUE(registry_.DeleteValue());
  EXPECT_EQ(Stored().first, 99U);
}

TEST_F(CRegistry, ListsStandFromOne) {
  registry_.SetValue(std::string("x"));
  registry_.SetValueKey("");
  registry_.SetValue(std::string("default"));
  tree_.Put(HKEY_CURRENT_USER, "a\\b\\sub", "v", "x");
  tree_.Put(HKEY_CURRENT_USER, "a\\b\\Top\\below", "v", "x");
  std::vector<std::string> names = {"old"};
  long count = 7;
  EXPECT_TRUE(registry_.EnumerateValues(names, count));
  EXPECT_EQ(count, 2);
  EXPECT_EQ(names, (std::vector<std::string>{"", "", "v"}));
  EXPECT_TRUE(registry_.EnumerateSections(names, count));
  EXPECT_EQ(count, 2);
  EXPECT_EQ(names, (std::vector<std::string>{"", "sub", "Top"}));
  EXPECT_EQ(tree_.OpenHandles(), 0U);
}

TEST_F(CRegistry, ListsOfAMissingOrEmptyKeyAreEmptyAndTrue) {
  for (const bool made : {false, true}) {
    if (made) registry_.CreateKey();
    std::vector<std::string> names = {"old"};
    long count = 7;
    EXPECT_TRUE(registry_.EnumerateValues(names, count));
    EXPECT_EQ(count, 0);
    EXPECT_TRUE(names.empty());
    names = {"old"};
    count = 7;
    EXPECT_TRUE(registry_.EnumerateSections(names, count));
    EXPECT_EQ(count, 0);
    EXPECT_TRUE(names.empty());
  }
}

TEST_F(CRegistry, TheWalkOverSectionsEndsAtANameWithoutRoom) {
  tree_.Put(HKEY_CURRENT_USER, "a\\b\\" + std::string(254, 'a'), "v", "x");
  tree_.Put(HKEY_CURRENT_USER, "a\\b\\" + std::string(255, 'k'), "v", "x");
  tree_.Put(HKEY_CURRENT_USER, "a\\b\\z", "v", "x");
  std::vector<std::string> names;
  long count = 0;
  EXPECT_TRUE(registry_.EnumerateSections(names, count));
  EXPECT_EQ(count, 1);
  EXPECT_EQ(names.back(), std::string(254, 'a'));
}

TEST_F(CRegistry, AStoreThatFailsIsToldByEveryOperationButTheWalkOverSections) {
  registry_.SetValue(std::string("%KV_VAR%"));
  std::vector<std::string> names;
  long count = 0;
  const std::vector<std::pair<const char*, std::function<void()>>> operations = {
      {"KeyExists", [&] { (void)registry_.KeyExists(); }},
      {"CreateKey", [&] { registry_.CreateKey(); }},
      {"Value read", [&] { (void)registry_.Value(); }},
      {"Value assign", [&] { registry_.SetValue(std::string("%KV_VAR%")); }},
      {"EnumerateValues", [&] { registry_.EnumerateValues(names, count); }},
      {"DeleteValue", [&] { registry_.DeleteValue(); }},
      {"DeleteKey", [&] { registry_.DeleteKey(); }},
  };
  for (const auto& [name, operation] : operations) {
    // The first call of each fails the operation; a failing close of the key at its end does not.
    tree_.calls = 0;
    tree_.failAt = 1;
    EXPECT_THROW(operation(), PlatformError) << name;
    for (long at = 2;; ++at) {
      tree_.failAt = 0;
      registry_.SetValueType(REG_SZ);
      registry_.SetValue(std::string("%KV_VAR%"));
      tree_.calls = 0;
      tree_.failAt = at;
      try {
        operation();
      } catch (const PlatformError& error) {
        EXPECT_STREQ(error.what(), "injected fault") << name << at;
      }
      if (tree_.calls < at) break;
      ASSERT_LT(at, 20) << name;
    }
    tree_.failAt = 0;
    registry_.SetValue(std::string("%KV_VAR%"));
  }
  for (long at = 1; at < 3; ++at) {
    tree_.calls = 0;
    tree_.failAt = at;
    EXPECT_FALSE(registry_.EnumerateSections(names, count));
    EXPECT_EQ(count, 0);
  }
}

// --- Classes of files
// -----------------------------------------------------------------------------------------------

class CRegistryClasses : public CRegistry {
 protected:
  std::string ClassText(const std::string& section) {
    return tree_.Text(HKEY_CLASSES_ROOT, section, "").value_or("(none)");
  }
  bool ClassHas(const std::string& section) { return tree_.Has(HKEY_CLASSES_ROOT, section); }
};

TEST_F(CRegistryClasses, AClassHasItsExtensionItsNameAndItsOpenVerb) {
  registry_.CreateEXEAssociation("C:\\p.exe", "Doc", "A document", "doc");
  EXPECT_EQ(ClassText(".doc"), "Doc");
  EXPECT_EQ(ClassText("Doc"), "A document");
  EXPECT_EQ(ClassText("Doc\\shell\\open"), "&Open");
  EXPECT_EQ(ClassText("Doc\\shell\\open\\command"), "\"C:\\p.exe\" \"%1\"");
  for (const char* missing :
       {"Doc\\shell\\print", "Doc\\shell\\add", "Doc\\shell\\new", "Doc\\DefaultIcon"}) {
    EXPECT_FALSE(ClassHas(missing)) << missing;
  }
  EXPECT_EQ(registry_.ClassKey(), HKEY_LOCAL_MACHINE);
  EXPECT_EQ(registry_.ValueType(), REG_SZ);
  EXPECT_EQ(registry_.ValueKey(), "");
  EXPECT_EQ(registry_.SectionKey(), "Doc\\shell\\open\\command") << "put back behind each writing";
}

TEST_F(CRegistryClasses, SupportedVerbsGetTheirDefaultTexts) {
  registry_.CreateEXEAssociation("\"C:\\p.exe\"", "Doc", "A document", "doc", "", true, "", true, "", true,
                                 "", 0);
  EXPECT_EQ(ClassText("Doc\\shell\\print"), "&Print");
  EXPECT_EQ(ClassText("Doc\\shell\\print\\command"), "\"C:\\p.exe\" /p \"%1\"");
  EXPECT_EQ(ClassText("Doc\\shell\\add"), "&Install A document");
  EXPECT_EQ(ClassText("Doc\\shell\\add\\command"), "\"C:\\p.exe\" /a \"%1\"");
  EXPECT_EQ(ClassText("Doc\\shell\\new"), "&New");
  EXPECT_EQ(ClassText("Doc\\shell\\new\\command"), "\"C:\\p.exe\" /n \"%1\"");
  EXPECT_EQ(ClassText("Doc\\DefaultIcon"), "\"C:\\p.exe\",0");
}

TEST_F(CRegistryClasses, GivenVerbTextsStand) {
  registry_.CreateEXEAssociation("p", "Doc", "d", "doc", "open it", true, "print it", true, "make it", true,
                                 "add it");
  EXPECT_EQ(ClassText("Doc\\shell\\open"), "open it");
  EXPECT_EQ(ClassText("Doc\\shell\\print"), "print it");
  EXPECT_EQ(ClassText("Doc\\shell\\new"), "make it");
  EXPECT_EQ(ClassText("Doc\\shell\\add"), "add it");
}

TEST_F(CRegistryClasses, EveryEntryIsWrittenUnderBothRoots) {
  fakes::Journal journal;
  MemoryRegistry tree(&journal);
  cRegistry registry(tree);
  registry.CreateEXEAssociation("p", "Doc", "d", "doc");
  EXPECT_EQ(journal.lines, (std::vector<std::string>{"Write  = Doc", "Write  = Doc", "Write  = d",
                                                     "Write  = d", "Write  = &Open", "Write  = &Open",
                                                     "Write  = \"p\" \"%1\"", "Write  = \"p\" \"%1\""}));
}

TEST_F(CRegistryClasses, AFailedEntryIsRaisedWhenTheOthersStand) {
  fakes::Journal journal;
  MemoryRegistry tree(&journal);
  cRegistry registry(tree);
  for (journal.failAt = 1; journal.failAt <= 8; ++journal.failAt) {
    journal.calls = 0;
    journal.Clear();
    EXPECT_THROW(registry.CreateEXEAssociation("p", "Doc", "d", "doc"), PlatformError) << journal.failAt;
    EXPECT_EQ(journal.With("Write").size(), 8U) << journal.failAt;
    EXPECT_EQ(registry.SectionKey(), "Doc\\shell\\open\\command") << "put back after a failure too";
  }
}

TEST_F(CRegistryClasses, AddsVerbsToAClass) {
  registry_.CreateEXEAssociation("p", "Doc", "d", "doc");
  registry_.CreateAdditionalEXEAssociations(
      "Doc", {std::string("play"), std::string("&Play"), std::string("p /play"), std::string("stop"),
              std::string("&Stop"), std::string("p /stop")});
  EXPECT_EQ(ClassText("Doc\\shell\\play"), "&Play");
  EXPECT_EQ(ClassText("Doc\\shell\\play\\command"), "p /play");
  EXPECT_EQ(ClassText("Doc\\shell\\stop\\command"), "p /stop");
}

TEST_F(CRegistryClasses, RefusesVerbsThatAreNoTriplesOrHaveNoClass) {
  ExpectError(26001,
              "Invalid parameter list passed to CreateAdditionalEXEAssociations - expected Name/Text/Command",
              [&] {
                registry_.CreateAdditionalEXEAssociations("Doc", {std::string("play"), std::string("&Play")});
              });
  ExpectError(26001, "Error - attempt to create additional associations before class defined.",
              [&] { registry_.CreateAdditionalEXEAssociations("Doc", {}); });
  EXPECT_FALSE(ClassHas("Doc"));
}

}  // namespace
}  // namespace kivandra
