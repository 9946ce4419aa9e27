// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

namespace kivandra::structure {

/// Files by their path, with slashes, below some folder.
using Files = std::map<std::string, std::string>;

/// Every regular file below `folder` whose name ends like one of `endings`; all files for no endings.
[[nodiscard]] Files ReadFiles(const std::string& folder, const std::vector<std::string>& endings = {});

/// One row of the table of floors.
struct Floor {
  std::string folder;
  std::set<std::string> mayInclude;  ///< besides itself
  bool mayIncludeAll = false;
};

/// Reads the table: rows of a floor's number, its folder and what it may include, folders in backticks.
[[nodiscard]] std::vector<Floor> ReadFloors(const std::string& markdown);

/// What a source includes.
struct Include {
  std::string name;
  bool system = false;  ///< in angle brackets
};
[[nodiscard]] std::vector<Include> IncludesOf(const std::string& source);

/// What is wrong with the includes of a tree of sources, one sentence a finding; `generated` are headers that
/// the build makes. Found are: a source outside every folder of the table, an include that the table forbids
/// or that names no file, a circle of includes, and outside the two platforms a header in angle brackets that
/// is none of the standard library's.
[[nodiscard]] std::vector<std::string> CheckIncludes(const Files& sources, const std::vector<Floor>& floors,
                                                     const std::set<std::string>& generated = {});

/// Files whose first three lines lack the licence.
[[nodiscard]] std::vector<std::string> CheckLicences(const Files& files);

/// Files that name a folder of one machine: one of a user, or `checkout`, where this tree happens to lie.
[[nodiscard]] std::vector<std::string> CheckAbsolutePaths(const Files& files, const std::string& checkout);

}  // namespace kivandra::structure
