// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <string>
#include <vector>

namespace kivandra::linux_impl {

/// What came of running another program.
struct ToolResult {
  bool found = false;  ///< it could be started
  bool good = false;   ///< it ended in time and was content
  std::string output;  ///< its standard output without the last line's end
};

/// Runs a program of the user's path, without a shell and with its complaints unheard, for `most` at the
/// longest; then it is ended with all that it has started. Events run inside.
[[nodiscard]] ToolResult RunTool(const std::vector<std::string>& words, std::chrono::milliseconds most);

}  // namespace kivandra::linux_impl
