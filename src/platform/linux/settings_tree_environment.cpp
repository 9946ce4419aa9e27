// SPDX-License-Identifier: GPL-3.0-or-later
#include <unistd.h>

#include <string>
#include <string_view>

#include "platform/linux/settings_tree.h"
#include "platform/linux/settings_tree_names.h"

namespace kivandra::linux_impl {

namespace {

/// Text of the environment variable `name`, or null. The original platform's environment ignores case; here a
/// variable of the exact spelling goes before one that differs in case alone.
const char* FindVariable(std::string_view name) {
  if (name.empty()) {
    return nullptr;
  }
  const std::string folded = FoldName(name);
  const char* found = nullptr;
  for (char** entry = environ; entry != nullptr && *entry != nullptr; ++entry) {
    const std::string_view text(*entry);
    const std::size_t equals = text.find('=');
    if (equals == std::string_view::npos) {
      continue;
    }
    const std::string_view entryName = text.substr(0, equals);
    if (entryName == name) {
      return *entry + equals + 1;
    }
    if (found == nullptr && FoldName(entryName) == folded) {
      found = *entry + equals + 1;
    }
  }
  return found;
}

std::string Expand(std::string_view source) {
  std::string expanded;
  for (std::size_t at = 0; at < source.size();) {
    const std::size_t first = source.find('%', at);
    const std::size_t second = first == std::string_view::npos ? first : source.find('%', first + 1);
    if (second == std::string_view::npos) {
      expanded += source.substr(at);
      break;
    }
    expanded += source.substr(at, first - at);
    if (const char* text = FindVariable(source.substr(first + 1, second - first - 1))) {
      expanded += text;
    } else {
      expanded += source.substr(first, second + 1 - first);
    }
    at = second + 1;
  }
  return expanded;
}

}  // namespace

std::size_t SettingsTree::ExpandEnvironmentStringsA(const std::string& source, std::string& result,
                                                    std::size_t size) {
  std::string expanded = Expand(UpToZero(source));
  const std::size_t needed = expanded.size() + 1;
  if (needed <= size) {
    result = std::move(expanded);
  }
  return needed;
}

}  // namespace kivandra::linux_impl
