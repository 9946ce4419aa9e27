// SPDX-License-Identifier: GPL-3.0-or-later
#include "fakes/memory_registry.h"

#include <unistd.h>

#include <algorithm>
#include <iterator>
#include <utility>

namespace kivandra::fakes {

MemoryRegistry::MemoryRegistry(Journal* journal) : journal_(journal) {
  for (const HKEY root : {HKEY_CURRENT_USER, HKEY_LOCAL_MACHINE, HKEY_USERS, HKEY_CURRENT_CONFIG}) {
    roots_[root] = std::make_shared<Key>();
  }
  classes_ = Make(roots_[HKEY_LOCAL_MACHINE], "SOFTWARE\\Classes");
}

MemoryRegistry::~MemoryRegistry() = default;

void MemoryRegistry::Put(HKEY root, const std::string& path, const std::string& name,
                         const std::string& text) {
  Bytes bytes(text.begin(), text.end());
  bytes.push_back(0);
  Make(RootKey(root), path)->values[Fold(name)] = {name, REG_SZ, bytes};
}

bool MemoryRegistry::Has(HKEY root, const std::string& path) const {
  return Find(RootKey(root), path) != nullptr;
}

std::optional<std::string> MemoryRegistry::Text(HKEY root, const std::string& path,
                                                const std::string& name) const {
  const auto key = Find(RootKey(root), path);
  if (key == nullptr || key->values.count(Fold(name)) == 0) return std::nullopt;
  return TextOfBytes(key->values.at(Fold(name)).data);
}

void MemoryRegistry::PutSetting(const std::string& name, const std::string& text) {
  Put(HKEY_CLASSES_ROOT, "IXPR\\Drivers\\settings", name, text);
}

std::optional<std::string> MemoryRegistry::Setting(const std::string& name) const {
  return Text(HKEY_CLASSES_ROOT, "IXPR\\Drivers\\settings", name);
}

std::size_t MemoryRegistry::OpenHandles() const { return open_.size(); }

long MemoryRegistry::RegOpenKeyExA(HKEY key, const std::string& path, std::uint32_t access, HKEY& result) {
  Count();
  KeyPointer found;
  if (const long code = Resolve(key, 0, found)) return code;
  if (const long code = CheckPath(path)) return code;
  found = Find(found, path);
  if (found == nullptr) return ERROR_FILE_NOT_FOUND;
  result = NewHandle(found, access);
  return ERROR_SUCCESS;
}

long MemoryRegistry::RegCreateKeyExA(HKEY key, const std::string& path, std::uint32_t access, HKEY& result,
                                     std::uint32_t& disposition) {
  Count();
  KeyPointer start;
  if (const long code = Resolve(key, 0, start)) return code;
  if (const long code = CheckPath(path)) return code;
  KeyPointer found = Find(start, path);
  disposition = REG_OPENED_EXISTING_KEY;
  if (found == nullptr) {
    if (const long code = Resolve(key, KEY_CREATE_SUB_KEY, start)) return code;
    for (const std::string& part : Split(path)) {
      if (Characters(part) > 255) return ERROR_INVALID_PARAMETER;
    }
    found = Make(start, path);
    disposition = REG_CREATED_NEW_KEY;
  }
  result = NewHandle(found, access);
  return ERROR_SUCCESS;
}

long MemoryRegistry::RegQueryValueExA(HKEY key, const std::string& name, std::uint32_t& type,
                                      std::uint8_t* data, std::size_t& size) {
  Count();
  KeyPointer found;
  if (const long code = Resolve(key, KEY_QUERY_VALUE, found)) return code;
  Record("Read " + Cut(name));
  const auto value = found->values.find(Fold(name));
  if (value == found->values.end()) return ERROR_FILE_NOT_FOUND;
  const std::size_t room = size;
  type = value->second.type;
  size = value->second.data.size();
  if (data == nullptr) return ERROR_SUCCESS;
  if (size > room) return ERROR_MORE_DATA;
  std::copy(value->second.data.begin(), value->second.data.end(), data);
  return ERROR_SUCCESS;
}

long MemoryRegistry::RegSetValueExA(HKEY key, const std::string& name, std::uint32_t type,
                                    const Bytes& data) {
  Count();
  KeyPointer found;
  if (const long code = Resolve(key, KEY_SET_VALUE, found)) return code;
  if (Characters(Cut(name)) > 16383) return ERROR_INVALID_PARAMETER;
  Record("Write " + Cut(name) + " = " + TextOfBytes(data));
  auto [value, made] = found->values.try_emplace(Fold(name), Value{Cut(name), type, data});
  if (!made) value->second.type = type, value->second.data = data;
  return ERROR_SUCCESS;
}

long MemoryRegistry::RegCloseKey(HKEY key) {
  Count();
  KeyPointer found;
  const long code = Resolve(key, 0, found);
  if (code != ERROR_SUCCESS && code != ERROR_KEY_DELETED) return code;
  open_.erase(key);
  return ERROR_SUCCESS;
}

long MemoryRegistry::RegDeleteKeyA(HKEY key, const std::string& path) {
  Count();
  KeyPointer found;
  if (const long code = Resolve(key, 0, found)) return code;
  if (const long code = CheckPath(path)) return code;
  found = Find(found, path);
  if (found == nullptr) return ERROR_FILE_NOT_FOUND;
  const auto parent = found->parent.lock();
  if (parent == nullptr || found == classes_ || !found->subKeys.empty()) return ERROR_ACCESS_DENIED;
  found->deleted = true;
  parent->subKeys.erase(Fold(found->name));
  return ERROR_SUCCESS;
}

long MemoryRegistry::RegDeleteValueA(HKEY key, const std::string& name) {
  Count();
  KeyPointer found;
  if (const long code = Resolve(key, KEY_SET_VALUE, found)) return code;
  Record("Delete " + Cut(name));
  return found->values.erase(Fold(name)) == 1 ? ERROR_SUCCESS : ERROR_FILE_NOT_FOUND;
}

long MemoryRegistry::RegEnumKeyA(HKEY key, std::uint32_t index, std::string& name, std::size_t size) {
  Count();
  KeyPointer found;
  if (const long code = Resolve(key, KEY_ENUMERATE_SUB_KEYS, found)) return code;
  if (index >= found->subKeys.size()) return ERROR_NO_MORE_ITEMS;
  return Give(std::next(found->subKeys.begin(), index)->second->name, name, size);
}

long MemoryRegistry::RegEnumValueA(HKEY key, std::uint32_t index, std::string& name, std::size_t size) {
  Count();
  KeyPointer found;
  if (const long code = Resolve(key, KEY_QUERY_VALUE, found)) return code;
  if (index >= found->values.size()) return ERROR_NO_MORE_ITEMS;
  return Give(std::next(found->values.begin(), index)->second.name, name, size);
}

long MemoryRegistry::RegQueryInfoKeyA(HKEY key, std::uint32_t& subKeys, std::size_t& maxSubKeyLength,
                                      std::uint32_t& values, std::size_t& maxValueNameLength) {
  Count();
  KeyPointer found;
  if (const long code = Resolve(key, KEY_QUERY_VALUE, found)) return code;
  subKeys = static_cast<std::uint32_t>(found->subKeys.size());
  values = static_cast<std::uint32_t>(found->values.size());
  maxSubKeyLength = maxValueNameLength = 0;
  for (const auto& subKey : found->subKeys) {
    maxSubKeyLength = std::max(maxSubKeyLength, subKey.second->name.size());
  }
  for (const auto& value : found->values) {
    maxValueNameLength = std::max(maxValueNameLength, value.second.name.size());
  }
  return ERROR_SUCCESS;
}

std::size_t MemoryRegistry::ExpandEnvironmentStringsA(const std::string& source, std::string& result,
                                                      std::size_t size) {
  Count();
  const std::string text = Cut(source);
  std::string expanded;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t first = text.find('%', at);
    const std::size_t second = first == std::string::npos ? first : text.find('%', first + 1);
    if (second == std::string::npos) {
      expanded += text.substr(at);
      break;
    }
    expanded += text.substr(at, first - at);
    const auto variable = Variable(text.substr(first + 1, second - first - 1));
    expanded += variable ? *variable : text.substr(first, second + 1 - first);
    at = second + 1;
  }
  if (expanded.size() < size) result = expanded;
  return expanded.size() + 1;
}

void MemoryRegistry::BeginBatch() {
  Count();
  if (before_) throw PlatformError(kInvalidCall, "A batch of settings is open already");
  before_ = std::make_unique<Snapshot>();
  for (const auto& root : roots_) Save(root.second);
}

void MemoryRegistry::EndBatch(bool keep) {
  if (keep) {
    try {
      Count();
    } catch (const PlatformError&) {
      EndBatch(false);
      throw;
    }
  } else {
    for (const auto& [key, contents] : *before_) {
      key->subKeys = contents.subKeys, key->values = contents.values, key->deleted = false;
    }
  }
  before_.reset();
}

std::string MemoryRegistry::Cut(const std::string& text) { return text.substr(0, text.find('\0')); }

std::string MemoryRegistry::TextOfBytes(const Bytes& bytes) {
  return bytes.empty() ? std::string() : std::string(bytes.begin(), bytes.end() - 1);
}

std::string MemoryRegistry::Fold(const std::string& name) {
  std::string folded = Cut(name);
  unsigned char before = 0;
  for (char& c : folded) {
    const auto byte = static_cast<unsigned char>(c);
    const bool accented = before == 0xC3 && byte <= 0x9E && byte != 0x97;
    if ((byte >= 'A' && byte <= 'Z') || accented) c = static_cast<char>(byte + 0x20);
    // OE ligature, S and Z with caron.
    if (before == 0xC5 && (byte == 0x92 || byte == 0xA0 || byte == 0xBD)) c = static_cast<char>(byte + 1);
    before = byte;
  }
  return folded;
}

std::size_t MemoryRegistry::Characters(const std::string& text) {
  return static_cast<std::size_t>(
      std::count_if(text.begin(), text.end(), [](char c) { return (c & 0xC0) != 0x80; }));
}

std::vector<std::string> MemoryRegistry::Split(const std::string& path) {
  std::vector<std::string> parts(1);
  for (const char c : Cut(path)) {
    if (c == '\\') {
      parts.emplace_back();
    } else {
      parts.back() += c;
    }
  }
  parts.erase(std::remove(parts.begin(), parts.end(), ""), parts.end());
  return parts;
}

long MemoryRegistry::CheckPath(const std::string& path) {
  return !path.empty() && path.front() == '\\' ? ERROR_BAD_PATHNAME : ERROR_SUCCESS;
}

long MemoryRegistry::Give(const std::string& found, std::string& name, std::size_t size) {
  if (found.size() >= size) return ERROR_MORE_DATA;
  name = found;
  return ERROR_SUCCESS;
}

MemoryRegistry::KeyPointer MemoryRegistry::Find(KeyPointer key, const std::string& path) {
  for (const std::string& part : Split(path)) {
    const auto next = key->subKeys.find(Fold(part));
    if (next == key->subKeys.end()) return nullptr;
    key = next->second;
  }
  return key;
}

MemoryRegistry::KeyPointer MemoryRegistry::Make(KeyPointer key, const std::string& path) {
  for (const std::string& part : Split(path)) {
    KeyPointer& next = key->subKeys[Fold(part)];
    if (next == nullptr) {
      next = std::make_shared<Key>();
      next->name = part;
      next->parent = key;
    }
    key = next;
  }
  return key;
}

std::optional<std::string> MemoryRegistry::Variable(const std::string& name) {
  if (name.empty()) return std::nullopt;
  std::optional<std::string> found;
  for (char** entry = environ; *entry != nullptr; ++entry) {
    const std::string text(*entry);
    const std::size_t equals = text.find('=');
    if (text.substr(0, equals) == name) return text.substr(equals + 1);
    if (!found && Fold(text.substr(0, equals)) == Fold(name)) found = text.substr(equals + 1);
  }
  return found;
}

void MemoryRegistry::Count() {
  if (++calls == failAt) throw PlatformError(kInvalidCall, "injected fault");
}

void MemoryRegistry::Record(const std::string& line) {
  if (journal_ != nullptr) journal_->Call(line);
}

MemoryRegistry::KeyPointer MemoryRegistry::RootKey(HKEY root) const {
  if (root == HKEY_CLASSES_ROOT) return classes_;
  const auto found = roots_.find(root);
  return found == roots_.end() ? nullptr : found->second;
}

long MemoryRegistry::Resolve(HKEY handle, std::uint32_t needed, KeyPointer& key) const {
  key = RootKey(handle);
  if (key != nullptr) return ERROR_SUCCESS;
  const auto found = open_.find(handle);
  if (found == open_.end()) return ERROR_INVALID_HANDLE;
  if ((found->second.access & needed) != needed) return ERROR_ACCESS_DENIED;
  key = found->second.key;
  return key->deleted ? ERROR_KEY_DELETED : ERROR_SUCCESS;
}

HKEY MemoryRegistry::NewHandle(const KeyPointer& key, std::uint32_t access) {
  open_[++lastHandle_] = {key, access};
  return lastHandle_;
}

void MemoryRegistry::Save(const KeyPointer& key) {
  before_->emplace(key, *key);
  for (const auto& subKey : key->subKeys) Save(subKey.second);
}

}  // namespace kivandra::fakes
