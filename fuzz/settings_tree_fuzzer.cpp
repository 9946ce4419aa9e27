// SPDX-License-Identifier: GPL-3.0-or-later
// Any row of calls gives the same results on the stored tree as on the tree in memory, and leaves the same
// tree.
#include <unistd.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "fakes/memory_registry.h"
#include "platform/linux/settings_tree.h"
#include "platform/platform_error.h"

namespace {

using namespace kivandra;

/// Takes the fuzzer's bytes apart; zeros when they are used up.
class Input {
 public:
  Input(const std::uint8_t* data, std::size_t size) : at_(data), end_(data + size) {}

  [[nodiscard]] bool Empty() const { return at_ == end_; }
  std::uint8_t Byte() { return Empty() ? std::uint8_t{0} : *at_++; }
  std::string Text(std::size_t most) {
    const std::size_t size = Byte() % (most + 1);
    std::string text;
    while (text.size() < size && !Empty()) text += static_cast<char>(Byte());
    return text;
  }
  /// A path or name: mostly one of a few, so that calls meet; at times any bytes. Only letters whose case
  /// both trees know are let through.
  std::string Name() {
    static constexpr std::array<const char*, 12> kNames = {
        "",   "a",        "A",           "b",           "a\\b", "A\\B\\c",
        "\\", "a\\\\b\\", "Caf\xC3\xA9", "caf\xC3\x89", "v",    "software\\CLASSES"};
    const std::uint8_t choice = Byte();
    if (choice < 0xF0) return kNames[choice % kNames.size()];
    std::string text = choice == 0xFF ? std::string(Byte() + 200U, 'n') : Text(20);
    for (char& c : text) {
      if (static_cast<unsigned char>(c) >= 0x80) c = static_cast<char>(c & 0x7F);
    }
    return text;
  }
  Bytes Data() {
    const std::string text = Text(40);
    return {text.begin(), text.end()};
  }

 private:
  const std::uint8_t* at_;
  const std::uint8_t* end_;
};

void Check(bool same, const char* what) {
  if (same) return;
  std::fprintf(stderr, "the trees differ: %s\n", what);
  std::abort();
}

/// Both trees, and the handles that one call gave on each.
class Pair {
 public:
  Pair(RegistryCalls& stored, RegistryCalls& model) : stored_(stored), model_(model) {}

  void DoOne(Input& input) {
    const std::uint8_t operation = input.Byte() % 10;
    const auto [key, modelKey] = Key(input.Byte());
    switch (operation) {
      case 0: {
        const std::string path = input.Name();
        const std::uint32_t access = input.Byte() & 0x3F;
        HKEY result = 0;
        HKEY modelResult = 0;
        const long code = stored_.RegOpenKeyExA(key, path, access, result);
        Check(code == model_.RegOpenKeyExA(modelKey, path, access, modelResult), "open");
        if (code == ERROR_SUCCESS) keys_.push_back({result, modelResult});
        break;
      }
      case 1: {
        const std::string path = input.Name();
        HKEY result = 0;
        HKEY modelResult = 0;
        std::uint32_t disposition = 0;
        std::uint32_t modelDisposition = 0;
        const long code = stored_.RegCreateKeyExA(key, path, KEY_ALL_SIX, result, disposition);
        Check(code == model_.RegCreateKeyExA(modelKey, path, KEY_ALL_SIX, modelResult, modelDisposition),
              "create");
        if (code != ERROR_SUCCESS) break;
        Check(disposition == modelDisposition, "disposition");
        keys_.push_back({result, modelResult});
        break;
      }
      case 2:
      case 3: {
        const std::string name = input.Name();
        const std::uint32_t type = input.Byte();
        const Bytes data = input.Data();
        Check(stored_.RegSetValueExA(key, name, type, data) ==
                  model_.RegSetValueExA(modelKey, name, type, data),
              "set");
        break;
      }
      case 4: {
        const std::string name = input.Name();
        std::array<std::uint8_t, 50> room{};
        std::array<std::uint8_t, 50> modelRoom{};
        std::uint32_t type = 0;
        std::uint32_t modelType = 0;
        std::size_t size = input.Byte() % room.size();
        std::size_t modelSize = size;
        const bool sizeOnly = size == 0;
        Check(stored_.RegQueryValueExA(key, name, type, sizeOnly ? nullptr : room.data(), size) ==
                      model_.RegQueryValueExA(modelKey, name, modelType,
                                              sizeOnly ? nullptr : modelRoom.data(), modelSize) &&
                  type == modelType && size == modelSize && room == modelRoom,
              "query");
        break;
      }
      case 5: {
        const std::string path = input.Name();
        Check(stored_.RegDeleteKeyA(key, path) == model_.RegDeleteKeyA(modelKey, path), "delete key");
        break;
      }
      case 6: {
        const std::string name = input.Name();
        Check(stored_.RegDeleteValueA(key, name) == model_.RegDeleteValueA(modelKey, name), "delete value");
        break;
      }
      case 7: {
        const std::uint32_t index = input.Byte() % 8;
        const std::size_t room = input.Byte();
        std::string name;
        std::string modelName;
        Check(stored_.RegEnumKeyA(key, index, name, room) ==
                      model_.RegEnumKeyA(modelKey, index, modelName, room) &&
                  name == modelName,
              "list of keys");
        Check(stored_.RegEnumValueA(key, index, name, room) ==
                      model_.RegEnumValueA(modelKey, index, modelName, room) &&
                  name == modelName,
              "list of values");
        break;
      }
      case 8: {
        if (keys_.empty()) break;
        // A handle is closed as often as it was opened and no more, in the order of opening.
        const auto last = keys_.back();
        keys_.pop_back();
        Check(stored_.RegCloseKey(last.stored) == model_.RegCloseKey(last.model), "close");
        break;
      }
      default: {
        const std::string text = "%" + input.Text(20) + "%HOME%%";
        std::string result;
        std::string modelResult;
        const std::size_t room = input.Byte();
        Check(stored_.ExpandEnvironmentStringsA(text, result, room) ==
                      model_.ExpandEnvironmentStringsA(text, modelResult, room) &&
                  result == modelResult,
              "expanded text");
      }
    }
  }

  void CompareTrees() {
    for (const HKEY root :
         {HKEY_CLASSES_ROOT, HKEY_CURRENT_USER, HKEY_LOCAL_MACHINE, HKEY_USERS, HKEY_CURRENT_CONFIG}) {
      CompareKeys(root, root);
    }
  }

 private:
  struct Keys {
    HKEY stored;
    HKEY model;
  };

  [[nodiscard]] Keys Key(std::uint8_t choice) const {
    static constexpr std::array<HKEY, 6> kRoots = {HKEY_CLASSES_ROOT, HKEY_CURRENT_USER,   HKEY_LOCAL_MACHINE,
                                                   HKEY_USERS,        HKEY_CURRENT_CONFIG, 0x8000ABCD};
    if (choice < 0x60 || keys_.empty())
      return {kRoots[choice % kRoots.size()], kRoots[choice % kRoots.size()]};
    return keys_[choice % keys_.size()];
  }

  void CompareKeys(HKEY key, HKEY modelKey) {
    std::string name;
    std::string modelName;
    long code = 0;
    for (std::uint32_t i = 0; code == ERROR_SUCCESS; ++i) {
      code = stored_.RegEnumValueA(key, i, name, 1000);
      Check(code == model_.RegEnumValueA(modelKey, i, modelName, 1000) && name == modelName,
            "names of values");
      if (code != ERROR_SUCCESS) break;
      Bytes data(1000);
      Bytes modelData(1000);
      std::size_t size = data.size();
      std::size_t modelSize = size;
      std::uint32_t type = 0;
      std::uint32_t modelType = 0;
      stored_.RegQueryValueExA(key, name, type, data.data(), size);
      model_.RegQueryValueExA(modelKey, name, modelType, modelData.data(), modelSize);
      Check(type == modelType && size == modelSize && data == modelData, "values");
    }
    code = 0;
    for (std::uint32_t i = 0; code == ERROR_SUCCESS; ++i) {
      code = stored_.RegEnumKeyA(key, i, name, 1000);
      Check(code == model_.RegEnumKeyA(modelKey, i, modelName, 1000) && name == modelName, "names of keys");
      if (code != ERROR_SUCCESS) break;
      HKEY below = 0;
      HKEY modelBelow = 0;
      stored_.RegOpenKeyExA(key, name, KEY_ALL_SIX, below);
      model_.RegOpenKeyExA(modelKey, modelName, KEY_ALL_SIX, modelBelow);
      CompareKeys(below, modelBelow);
      stored_.RegCloseKey(below);
      model_.RegCloseKey(modelBelow);
    }
  }

  RegistryCalls& stored_;
  RegistryCalls& model_;
  std::vector<Keys> keys_;
};

/// A store in a folder that goes with the process.
class TreeOfTheProcess {
 public:
  TreeOfTheProcess() : folder_(MakeFolder()), tree_(folder_ + "/registry.db") {}
  ~TreeOfTheProcess() {
    ::unlink((folder_ + "/registry.db").c_str());
    ::rmdir(folder_.c_str());
  }
  TreeOfTheProcess(const TreeOfTheProcess&) = delete;
  TreeOfTheProcess& operator=(const TreeOfTheProcess&) = delete;
  RegistryCalls& Tree() { return tree_; }

 private:
  static std::string MakeFolder() {
    std::string name = "/tmp/kivandra-fuzz-XXXXXX";
    if (::mkdtemp(name.data()) == nullptr) std::abort();
    return name;
  }
  std::string folder_;
  linux_impl::SettingsTree tree_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static TreeOfTheProcess process;
  kivandra::fakes::MemoryRegistry model;
  Input input(data, size);
  // A batch that is dropped at the end: the next run begins with an empty tree, and no run waits for the
  // disk.
  const kivandra::RegistryBatch batch(process.Tree());
  Pair pair(process.Tree(), model);
  while (!input.Empty()) pair.DoOne(input);
  pair.CompareTrees();
  return 0;
}
