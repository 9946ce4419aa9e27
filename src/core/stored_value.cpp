// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/stored_value.h"

#include <algorithm>
#include <cstddef>

namespace kivandra {

std::optional<StoredValue> ReadStoredValue(RegistryCalls& calls, HKEY key, const std::string& name) {
  StoredValue value;
  std::size_t size = 0;
  long code = calls.RegQueryValueExA(key, name, value.type, nullptr, size);
  if (code != ERROR_SUCCESS) {
    return std::nullopt;
  }
  do {
    // A null buffer would ask for the size alone.
    value.bytes.resize(std::max<std::size_t>(size, 1));
    size = value.bytes.size();
    code = calls.RegQueryValueExA(key, name, value.type, value.bytes.data(), size);
  } while (code == ERROR_MORE_DATA);
  if (code != ERROR_SUCCESS) {
    return std::nullopt;
  }
  value.bytes.resize(size);
  return value;
}

std::string TextOfBytes(const Bytes& bytes) {
  if (bytes.empty()) {
    return {};
  }
  return {bytes.begin(), bytes.end() - 1};
}

Bytes BytesOfText(const std::string& text) {
  Bytes bytes(text.begin(), text.end());
  bytes.push_back(0);
  return bytes;
}

}  // namespace kivandra
