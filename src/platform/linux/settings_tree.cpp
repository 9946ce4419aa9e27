// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/settings_tree.h"

#include <algorithm>
#include <limits>

#include "platform/linux/settings_tree_names.h"
#include "platform/platform_error.h"

namespace kivandra::linux_impl {

namespace {

constexpr std::uint32_t kEveryRight = std::numeric_limits<std::uint32_t>::max();
constexpr std::size_t kLongestKeyName = 255;        // characters
constexpr std::size_t kLongestValueName = 16383;    // characters
constexpr std::size_t kLargestValue = 256U << 20U;  // bytes

/// Gives a name to a caller who has room for `size` bytes with the closing zero.
long GiveName(std::string found, std::string& name, std::size_t size) {
  if (found.size() >= size) {
    return ERROR_MORE_DATA;
  }
  name = std::move(found);
  return ERROR_SUCCESS;
}

/// Parts of the path; the code is ERROR_BAD_PATHNAME for a path that is none.
long ReadPath(std::string_view path, std::vector<std::string_view>& parts) {
  path = UpToZero(path);
  if (!path.empty() && path.front() == '\\') {
    return ERROR_BAD_PATHNAME;
  }
  parts = SplitPath(path);
  return ERROR_SUCCESS;
}

}  // namespace

long SettingsTree::RegOpenKeyExA(HKEY key, const std::string& path, std::uint32_t access, HKEY& result) {
  KeyId id = 0;
  if (const long code = Resolve(key, 0, id)) {
    return code;
  }
  std::vector<std::string_view> parts;
  if (const long code = ReadPath(path, parts)) {
    return code;
  }
  const ReadTransaction transaction(store_);
  if (const long code = Walk(id, parts)) {
    return code;
  }
  result = NewHandle(id, access);
  return ERROR_SUCCESS;
}

long SettingsTree::RegCreateKeyExA(HKEY key, const std::string& path, std::uint32_t access, HKEY& result,
                                   std::uint32_t& disposition) {
  KeyId start = 0;
  if (const long code = Resolve(key, 0, start)) {
    return code;
  }
  std::vector<std::string_view> parts;
  if (const long code = ReadPath(path, parts)) {
    return code;
  }
  {
    // The common case is a key that is there, which needs no writing.
    const ReadTransaction transaction(store_);
    KeyId id = start;
    const long code = Walk(id, parts);
    if (code != ERROR_SUCCESS && code != ERROR_FILE_NOT_FOUND) {
      return code;
    }
    if (code == ERROR_SUCCESS) {
      result = NewHandle(id, access);
      disposition = REG_OPENED_EXISTING_KEY;
      return ERROR_SUCCESS;
    }
  }
  if (const long code = Resolve(key, KEY_CREATE_SUB_KEY, start)) {
    return code;
  }
  for (const std::string_view part : parts) {
    if (CountCharacters(part) > kLongestKeyName) {
      return ERROR_INVALID_PARAMETER;
    }
  }
  CheckBatch();
  WriteTransaction transaction(store_);
  KeyId id = start;
  if (!KeyIsThere(id)) {
    return ERROR_KEY_DELETED;
  }
  std::uint32_t found = REG_OPENED_EXISTING_KEY;
  for (const std::string_view part : parts) {
    if (const auto subKey = FindSubKey(id, part)) {
      id = *subKey;
    } else {
      id = AddSubKey(id, part);
      found = REG_CREATED_NEW_KEY;
    }
  }
  transaction.Commit();
  result = NewHandle(id, access);
  disposition = found;
  return ERROR_SUCCESS;
}

long SettingsTree::RegQueryValueExA(HKEY key, const std::string& name, std::uint32_t& type,
                                    std::uint8_t* data, std::size_t& size) {
  KeyId id = 0;
  if (const long code = Resolve(key, KEY_QUERY_VALUE, id)) {
    return code;
  }
  const std::string folded = FoldName(UpToZero(name));
  const ReadTransaction transaction(store_);
  Query query(findValue_);
  query.Bind(id).Bind(std::string_view(folded));
  if (!query.Step()) {
    return KeyIsThere(id) ? ERROR_FILE_NOT_FOUND : ERROR_KEY_DELETED;
  }
  const Bytes stored = query.Blob(1);
  const std::size_t room = size;
  type = static_cast<std::uint32_t>(query.Number(0));
  size = stored.size();
  if (data == nullptr) {
    return ERROR_SUCCESS;
  }
  if (stored.size() > room) {
    return ERROR_MORE_DATA;
  }
  std::copy(stored.begin(), stored.end(), data);
  return ERROR_SUCCESS;
}

long SettingsTree::RegSetValueExA(HKEY key, const std::string& name, std::uint32_t type, const Bytes& data) {
  KeyId id = 0;
  if (const long code = Resolve(key, KEY_SET_VALUE, id)) {
    return code;
  }
  const std::string_view spelling = UpToZero(name);
  if (CountCharacters(spelling) > kLongestValueName) {
    return ERROR_INVALID_PARAMETER;
  }
  if (data.size() > kLargestValue) {
    return ERROR_INVALID_PARAMETER;
  }
  const std::string folded = FoldName(spelling);
  CheckBatch();
  if (SameValueIsThere(id, folded, type, data)) {
    return ERROR_SUCCESS;
  }
  WriteTransaction transaction(store_);
  if (!KeyIsThere(id)) {
    return ERROR_KEY_DELETED;
  }
  Query(setValue_)
      .Bind(id)
      .Bind(std::string_view(folded))
      .Bind(spelling)
      .Bind(std::int64_t{type})
      .Bind(data)
      .Run();
  transaction.Commit();
  return ERROR_SUCCESS;
}

long SettingsTree::RegCloseKey(HKEY key) {
  KeyId id = 0;
  if (const long code = Resolve(key, 0, id)) {
    return code;
  }
  if (key < HKEY_CLASSES_ROOT) {
    --openKeys_[key - 1].openings;
  }
  return ERROR_SUCCESS;
}

long SettingsTree::RegDeleteKeyA(HKEY key, const std::string& path) {
  KeyId id = 0;
  if (const long code = Resolve(key, 0, id)) {
    return code;
  }
  std::vector<std::string_view> parts;
  if (const long code = ReadPath(path, parts)) {
    return code;
  }
  CheckBatch();
  WriteTransaction transaction(store_);
  if (const long code = Walk(id, parts)) {
    return code;
  }
  if (id <= Store::kLastFixedKey || Query(findAnySubKey_).Bind(id).Step()) {
    return ERROR_ACCESS_DENIED;
  }
  Query(deleteValues_).Bind(id).Run();
  Query(deleteKey_).Bind(id).Run();
  transaction.Commit();
  return ERROR_SUCCESS;
}

long SettingsTree::RegDeleteValueA(HKEY key, const std::string& name) {
  KeyId id = 0;
  if (const long code = Resolve(key, KEY_SET_VALUE, id)) {
    return code;
  }
  const std::string folded = FoldName(UpToZero(name));
  CheckBatch();
  WriteTransaction transaction(store_);
  {
    Query query(deleteValue_);
    query.Bind(id).Bind(std::string_view(folded));
    if (!query.Step()) {
      return KeyIsThere(id) ? ERROR_FILE_NOT_FOUND : ERROR_KEY_DELETED;
    }
  }
  transaction.Commit();
  return ERROR_SUCCESS;
}

long SettingsTree::NthName(HKEY key, std::uint32_t right, Statement& statement, std::uint32_t index,
                           std::string& name, std::size_t size) {
  KeyId id = 0;
  if (const long code = Resolve(key, right, id)) {
    return code;
  }
  const ReadTransaction transaction(store_);
  Query query(statement);
  query.Bind(id).Bind(std::int64_t{index});
  if (!query.Step()) {
    return KeyIsThere(id) ? ERROR_NO_MORE_ITEMS : ERROR_KEY_DELETED;
  }
  return GiveName(query.Text(0), name, size);
}

long SettingsTree::RegEnumKeyA(HKEY key, std::uint32_t index, std::string& name, std::size_t size) {
  return NthName(key, KEY_ENUMERATE_SUB_KEYS, nthSubKey_, index, name, size);
}

long SettingsTree::RegEnumValueA(HKEY key, std::uint32_t index, std::string& name, std::size_t size) {
  return NthName(key, KEY_QUERY_VALUE, nthValue_, index, name, size);
}

long SettingsTree::RegQueryInfoKeyA(HKEY key, std::uint32_t& subKeys, std::size_t& maxSubKeyLength,
                                    std::uint32_t& values, std::size_t& maxValueNameLength) {
  KeyId id = 0;
  if (const long code = Resolve(key, KEY_QUERY_VALUE, id)) {
    return code;
  }
  const ReadTransaction transaction(store_);
  if (!KeyIsThere(id)) {
    return ERROR_KEY_DELETED;
  }
  const auto count = [id](Statement& statement, std::uint32_t& number, std::size_t& longest) {
    Query query(statement);
    query.Bind(id).Step();
    number = static_cast<std::uint32_t>(query.Number(0));
    longest = static_cast<std::size_t>(query.Number(1));
  };
  count(countSubKeys_, subKeys, maxSubKeyLength);
  count(countValues_, values, maxValueNameLength);
  return ERROR_SUCCESS;
}

void SettingsTree::BeginBatch() {
  if (batch_) {
    throw PlatformError(kInvalidCall, "A batch of settings is open already");
  }
  // Immediate: the batch is there to write, and waits for other writers here.
  store_.Execute("BEGIN IMMEDIATE");
  batch_ = true;
}

void SettingsTree::EndBatch(bool keep) {
  if (!keep) {
    batch_ = false;
    store_.TryExecute("ROLLBACK");
    return;
  }
  try {
    CheckBatch();
    store_.Execute("COMMIT");
    batch_ = false;
  } catch (const PlatformError&) {
    EndBatch(false);
    throw;
  }
}

long SettingsTree::Resolve(HKEY handle, std::uint32_t needed, KeyId& id) const {
  std::uint32_t access = kEveryRight;
  switch (handle) {
    case HKEY_CLASSES_ROOT:
      id = Store::kClasses;
      break;
    case HKEY_CURRENT_USER:
      id = Store::kCurrentUser;
      break;
    case HKEY_LOCAL_MACHINE:
      id = Store::kLocalMachine;
      break;
    case HKEY_USERS:
      id = Store::kUsers;
      break;
    case HKEY_CURRENT_CONFIG:
      id = Store::kCurrentConfig;
      break;
    default:
      if (handle == 0 || handle > openKeys_.size() || openKeys_[handle - 1].openings == 0) {
        return ERROR_INVALID_HANDLE;
      }
      id = openKeys_[handle - 1].id;
      access = openKeys_[handle - 1].access;
  }
  return (access & needed) == needed ? ERROR_SUCCESS : ERROR_ACCESS_DENIED;
}

HKEY SettingsTree::NewHandle(KeyId id, std::uint32_t access) {
  const auto shared = std::find_if(openKeys_.begin(), openKeys_.end(), [&](const OpenKey& open) {
    return open.openings > 0 && open.id == id && open.access == access;
  });
  if (shared != openKeys_.end()) {
    ++shared->openings;
    return static_cast<HKEY>(shared - openKeys_.begin() + 1);
  }
  auto place = std::find_if(openKeys_.begin(), openKeys_.end(),
                            [](const OpenKey& open) { return open.openings == 0; });
  if (place == openKeys_.end()) {
    place = openKeys_.insert(place, OpenKey{});
  }
  *place = {id, access, 1};
  return static_cast<HKEY>(place - openKeys_.begin() + 1);
}

bool SettingsTree::KeyIsThere(KeyId id) { return Query(findKey_).Bind(id).Step(); }

std::optional<SettingsTree::KeyId> SettingsTree::FindSubKey(KeyId parent, std::string_view name) {
  const std::string folded = FoldName(name);
  Query query(findSubKey_);
  if (!query.Bind(parent).Bind(std::string_view(folded)).Step()) {
    return std::nullopt;
  }
  return query.Number(0);
}

long SettingsTree::Walk(KeyId& id, const std::vector<std::string_view>& path) {
  if (!KeyIsThere(id)) {
    return ERROR_KEY_DELETED;
  }
  for (const std::string_view part : path) {
    const auto subKey = FindSubKey(id, part);
    if (!subKey) {
      return ERROR_FILE_NOT_FOUND;
    }
    id = *subKey;
  }
  return ERROR_SUCCESS;
}

SettingsTree::KeyId SettingsTree::AddSubKey(KeyId parent, std::string_view name) {
  const std::string folded = FoldName(name);
  Query query(addSubKey_);
  query.Bind(parent).Bind(name).Bind(std::string_view(folded)).Step();
  const KeyId id = query.Number(0);
  query.Run();  // to the end of the statement
  return id;
}

bool SettingsTree::SameValueIsThere(KeyId id, const std::string& folded, std::uint32_t type,
                                    const Bytes& data) {
  Query query(findValue_);
  query.Bind(id).Bind(std::string_view(folded));
  return query.Step() && query.Number(0) == std::int64_t{type} && query.Blob(1) == data;
}

void SettingsTree::CheckBatch() const {
  if (batch_ && !store_.InTransaction()) {
    throw PlatformError(kInvalidCall, "The batch of settings was lost by an earlier failure");
  }
}

}  // namespace kivandra::linux_impl
