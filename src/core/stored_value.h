// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/registry_calls.h"

namespace kivandra {

/// Type and bytes of a value, as they were at one moment.
struct StoredValue {
  std::uint32_t type = 0;
  Bytes bytes;
};

/// Reads a value of an open key whole, whatever its size; nothing if it can't be read. Another process may
/// change the value between the question for its size and the reading: then it is asked again.
std::optional<StoredValue> ReadStoredValue(RegistryCalls& calls, HKEY key, const std::string& name);

/// The bytes as text, without the last one, which is the closing zero.
std::string TextOfBytes(const Bytes& bytes);

/// The text in the form in which it is stored: its bytes and a closing zero.
Bytes BytesOfText(const std::string& text);

}  // namespace kivandra
