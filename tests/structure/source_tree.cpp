// SPDX-License-Identifier: GPL-3.0-or-later
#include "structure/source_tree.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <regex>
#include <sstream>
#include <string_view>

namespace kivandra::structure {
namespace {

/// Every header of the C++20 standard library, and the C library's in their C++ form.
const std::set<std::string, std::less<>> kStandardHeaders{"algorithm",
                                                          "any",
                                                          "array",
                                                          "atomic",
                                                          "barrier",
                                                          "bit",
                                                          "bitset",
                                                          "cassert",
                                                          "cctype",
                                                          "cerrno",
                                                          "cfenv",
                                                          "cfloat",
                                                          "charconv",
                                                          "chrono",
                                                          "cinttypes",
                                                          "climits",
                                                          "clocale",
                                                          "cmath",
                                                          "codecvt",
                                                          "compare",
                                                          "complex",
                                                          "concepts",
                                                          "condition_variable",
                                                          "coroutine",
                                                          "csetjmp",
                                                          "csignal",
                                                          "cstdarg",
                                                          "cstddef",
                                                          "cstdint",
                                                          "cstdio",
                                                          "cstdlib",
                                                          "cstring",
                                                          "ctime",
                                                          "cuchar",
                                                          "cwchar",
                                                          "cwctype",
                                                          "deque",
                                                          "exception",
                                                          "execution",
                                                          "filesystem",
                                                          "format",
                                                          "forward_list",
                                                          "fstream",
                                                          "functional",
                                                          "future",
                                                          "initializer_list",
                                                          "iomanip",
                                                          "ios",
                                                          "iosfwd",
                                                          "iostream",
                                                          "istream",
                                                          "iterator",
                                                          "latch",
                                                          "limits",
                                                          "list",
                                                          "locale",
                                                          "map",
                                                          "memory",
                                                          "memory_resource",
                                                          "mutex",
                                                          "new",
                                                          "numbers",
                                                          "numeric",
                                                          "optional",
                                                          "ostream",
                                                          "queue",
                                                          "random",
                                                          "ranges",
                                                          "ratio",
                                                          "regex",
                                                          "scoped_allocator",
                                                          "semaphore",
                                                          "set",
                                                          "shared_mutex",
                                                          "source_location",
                                                          "span",
                                                          "sstream",
                                                          "stack",
                                                          "stdexcept",
                                                          "stop_token",
                                                          "streambuf",
                                                          "string",
                                                          "string_view",
                                                          "strstream",
                                                          "syncstream",
                                                          "system_error",
                                                          "thread",
                                                          "tuple",
                                                          "type_traits",
                                                          "typeindex",
                                                          "typeinfo",
                                                          "unordered_map",
                                                          "unordered_set",
                                                          "utility",
                                                          "valarray",
                                                          "variant",
                                                          "vector",
                                                          "version"};

bool EndsLikeOne(const std::string& name, const std::vector<std::string>& endings) {
  return endings.empty() || std::any_of(endings.begin(), endings.end(),
                                        [&](const std::string& ending) { return name.ends_with(ending); });
}

std::string ReadFile(const std::filesystem::path& path) {
  std::ifstream stream(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

/// The row of the table in whose folder the file lies: the longest that fits, or the file itself.
const Floor* FloorOf(const std::string& file, const std::vector<Floor>& floors) {
  const Floor* best = nullptr;
  for (const Floor& floor : floors) {
    if ((file == floor.folder || file.starts_with(floor.folder + "/")) &&
        (best == nullptr || floor.folder.size() > best->folder.size())) {
      best = &floor;
    }
  }
  return best;
}

/// The file that a quoted include names, as a compiler looks for it; empty if there is none.
std::string Resolve(const std::string& name, const std::string& includer, const Files& sources) {
  const std::filesystem::path beside = std::filesystem::path(includer).parent_path() / name;
  for (const std::filesystem::path& path : {beside, std::filesystem::path(name)}) {
    const std::string normal = path.lexically_normal().generic_string();
    if (sources.contains(normal)) {
      return normal;
    }
  }
  return {};
}

using Graph = std::map<std::string, std::vector<std::string>>;

/// Walks the includes below `file`; `open` is the way that led to it.
void FindCircles(const std::string& file, const Graph& graph, std::vector<std::string>& open,
                 std::set<std::string>& done, std::vector<std::string>& findings) {
  const auto again = std::find(open.begin(), open.end(), file);
  if (again != open.end()) {
    std::string circle;
    for (auto step = again; step != open.end(); ++step) {
      circle += *step + " -> ";
    }
    findings.push_back("circle of includes: " + circle + file);
    return;
  }
  if (!done.insert(file).second) {
    return;
  }
  open.push_back(file);
  if (const auto includes = graph.find(file); includes != graph.end()) {
    for (const std::string& next : includes->second) {
      FindCircles(next, graph, open, done, findings);
    }
  }
  open.pop_back();
}

}  // namespace

Files ReadFiles(const std::string& folder, const std::vector<std::string>& endings) {
  Files files;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
    if (entry.is_regular_file() && EndsLikeOne(entry.path().filename().string(), endings)) {
      files.emplace(entry.path().lexically_relative(folder).generic_string(), ReadFile(entry.path()));
    }
  }
  return files;
}

std::vector<Floor> ReadFloors(const std::string& markdown) {
  static const std::regex kRow(R"(\|\s*\d+\s*\|\s*`([^`]+)`\s*\|(.*)\|\s*)");
  static const std::regex kFolder("`([^`]+)`");
  std::vector<Floor> floors;
  std::istringstream lines(markdown);
  for (std::string line; std::getline(lines, line);) {
    std::smatch row;
    if (!std::regex_match(line, row, kRow)) {
      continue;
    }
    Floor floor;
    floor.folder = row[1];
    const std::string rest = row[2];
    for (std::sregex_iterator folder(rest.begin(), rest.end(), kFolder), end; folder != end; ++folder) {
      floor.mayInclude.insert((*folder)[1]);
    }
    floor.mayIncludeAll = rest.find("everything") != std::string::npos;
    floors.push_back(floor);
  }
  return floors;
}

std::vector<Include> IncludesOf(const std::string& source) {
  static const std::regex kDirective(R"(\s*#\s*include(?:_next)?\s*(\S.*?)\s*)");
  std::vector<Include> includes;
  std::istringstream lines(source);
  for (std::string line; std::getline(lines, line);) {
    std::smatch match;
    if (line.find("include") == std::string::npos || !std::regex_match(line, match, kDirective)) {
      continue;
    }
    const std::string operand = match[1];
    const char close = operand.front() == '<' ? '>' : '"';
    const std::size_t end = operand.find(close, 1);
    const bool plain = (operand.front() == '<' || operand.front() == '"') && end != std::string::npos;
    // An include through a macro names nothing that could be followed: it stands under its own text.
    includes.push_back({plain ? operand.substr(1, end - 1) : operand, operand.front() == '<'});
  }
  return includes;
}

std::vector<std::string> CheckIncludes(const Files& sources, const std::vector<Floor>& floors,
                                       const std::set<std::string>& generated) {
  std::vector<std::string> findings;
  Graph graph;
  for (const auto& [file, text] : sources) {
    const Floor* floor = FloorOf(file, floors);
    if (floor == nullptr) {
      findings.push_back(file + " lies in no folder of the table");
      continue;
    }
    const bool platform = floor->folder == "platform/gtk" || floor->folder == "platform/linux";
    for (const Include& include : IncludesOf(text)) {
      if (include.system) {
        if (!platform && !kStandardHeaders.contains(include.name)) {
          findings.push_back(file + " includes <" + include.name +
                             ">, which is none of the standard library's");
        }
        continue;
      }
      const std::string target = Resolve(include.name, file, sources);
      if (target.empty()) {
        if (!generated.contains(include.name)) {
          findings.push_back(file + " includes " + include.name + ", which is no file of this tree");
        }
        continue;
      }
      graph[file].push_back(target);
      const Floor* below = FloorOf(target, floors);
      if (below != nullptr && below != floor && !floor->mayIncludeAll &&
          !floor->mayInclude.contains(below->folder)) {
        findings.push_back(file + " includes " + target + ", which the table forbids");
      }
    }
  }
  std::set<std::string> done;
  for (const auto& [file, includes] : graph) {
    std::vector<std::string> open;
    FindCircles(file, graph, open, done, findings);
  }
  return findings;
}

std::vector<std::string> CheckLicences(const Files& files) {
  std::vector<std::string> findings;
  for (const auto& [file, text] : files) {
    std::size_t head = 0;
    for (int line = 0; line < 3 && head != std::string::npos; ++line) {
      head = text.find('\n', line == 0 ? 0 : head + 1);
    }
    if (text.substr(0, head).find("SPDX-License-Identifier: GPL-3.0-or-later") == std::string::npos) {
      findings.push_back(file + " does not name its licence");
    }
  }
  return findings;
}

std::vector<std::string> CheckAbsolutePaths(const Files& files, const std::string& checkout) {
  static const std::regex kUserFolder(R"((^|[^A-Za-z0-9_.~-])/(home|root|Users)/[A-Za-z0-9_.-])");
  // A checkout right below the root has a name that may well be part of harmless text.
  const bool telling = std::count(checkout.begin(), checkout.end(), '/') > 1;
  std::vector<std::string> findings;
  for (const auto& [file, text] : files) {
    std::istringstream lines(text);
    int number = 0;
    for (std::string line; std::getline(lines, line);) {
      ++number;
      const bool found = (telling && line.find(checkout + "/") != std::string::npos) ||
                         (line.size() < 4096 && std::regex_search(line, kUserFolder));
      if (found) {
        findings.push_back(file + ", line " + std::to_string(number) + " names a folder of one machine");
      }
    }
  }
  return findings;
}

}  // namespace kivandra::structure
