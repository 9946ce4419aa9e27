// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <ostream>

#include "structure/source_tree.h"

namespace kivandra::structure {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

const std::string kRoot = KV_SOURCE_DIR;

std::string TableOfFloors() {
  std::ifstream stream(kRoot + "/src/README.md");
  return {std::istreambuf_iterator<char>(stream), {}};
}

/// Headers that the build makes from a template in cmake/.
std::set<std::string> GeneratedHeaders() {
  std::set<std::string> names;
  for (const auto& [file, text] : ReadFiles(kRoot + "/cmake", {".h.in"})) {
    names.insert(file.substr(0, file.size() - 3));
  }
  return names;
}

/// Everything that people write here, by folder and file at the top, with its path from the top.
Files WrittenFiles(const std::vector<std::string>& folders) {
  Files all;
  for (const std::string& folder : folders) {
    if (!std::filesystem::exists(kRoot + "/" + folder)) {
      continue;
    }
    for (auto& [file, text] :
         ReadFiles(kRoot + "/" + folder, {".cpp", ".h", ".in", ".cmake", "CMakeLists.txt", ".py", ".sh",
                                          ".css", ".html", ".htm", ".asp"})) {
      all.emplace(folder + "/" + file, text);
    }
  }
  return all;
}

TEST(Tree, EverySourceKeepsToItsFloor) {
  const Files sources = ReadFiles(kRoot + "/src", {".cpp", ".h", ".hpp", ".inc"});
  ASSERT_GT(sources.size(), 40U);
  EXPECT_THAT(CheckIncludes(sources, ReadFloors(TableOfFloors()), GeneratedHeaders()), IsEmpty());
}

TEST(Tree, TheTableNamesEveryFolderOfSources) {
  const std::vector<Floor> floors = ReadFloors(TableOfFloors());
  ASSERT_EQ(floors.size(), 13U);
  for (const Floor& floor : floors) {
    for (const std::string& other : floor.mayInclude) {
      EXPECT_TRUE(
          std::any_of(floors.begin(), floors.end(), [&](const Floor& row) { return row.folder == other; }))
          << floor.folder << " may include " << other << ", which has no row";
    }
  }
}

TEST(Tree, EveryFileNamesItsLicence) {
  EXPECT_THAT(CheckLicences(WrittenFiles({"src", "tests", "fuzz", "bench", "cmake", "packaging"})),
              IsEmpty());
  Files site = WrittenFiles({"site"});
  EXPECT_THAT(CheckLicences(site), IsEmpty());
}

TEST(Tree, NoFileNamesAFolderOfOneMachine) {
  EXPECT_THAT(CheckAbsolutePaths(
                  WrittenFiles({"src", "cmake", "packaging", "site", "assets", "fuzz", "bench"}), kRoot),
              IsEmpty());
}

// The rules themselves, on small made-up trees.

const std::vector<Floor> kFloors = ReadFloors(
    "| floor | folder | may include besides itself |\n"
    "|---|---|---|\n"
    "| 0 | `platform` | |\n"
    "| 0 | `platform/gtk` | `platform` |\n"
    "| 1 | `core` | `platform` |\n"
    "| 2 | `left` | `platform` `core` |\n"
    "| 2 | `right` | `platform` `core` |\n"
    "| 3 | `main.cpp` | everything |\n");

TEST(Floors, ATableIsReadRowByRow) {
  ASSERT_EQ(kFloors.size(), 6U);
  EXPECT_EQ(kFloors[1].folder, "platform/gtk");
  EXPECT_THAT(kFloors[3].mayInclude, ElementsAre("core", "platform"));
  EXPECT_FALSE(kFloors[4].mayIncludeAll);
  EXPECT_TRUE(kFloors[5].mayIncludeAll);
}

TEST(Floors, IncludesAreFoundInEverySpelling) {
  const auto includes = IncludesOf(
      "#include <vector>\n  #  include \"core/a.h\"  // why\n// #include <gtk/gtk.h>\n#include HEADER\nint "
      "include;\n");
  ASSERT_EQ(includes.size(), 3U);
  EXPECT_EQ(includes[0].name, "vector");
  EXPECT_TRUE(includes[0].system);
  EXPECT_EQ(includes[1].name, "core/a.h");
  EXPECT_FALSE(includes[1].system);
  EXPECT_EQ(includes[2].name, "HEADER");
}

TEST(Floors, ATreeThatKeepsTheRulesHasNoFinding) {
  const Files tree{{"platform/a.h", "#include <string>\n"},
                   {"platform/gtk/a.cpp", "#include <gtkmm.h>\n#include \"platform/a.h\"\n"},
                   {"core/a.h", "#include \"platform/a.h\"\n#include <cstdint>\n"},
                   {"left/a.cpp", "#include \"core/a.h\"\n#include \"made.h\"\n"},
                   {"main.cpp", "#include \"left/a.h\"\n#include \"platform/gtk/b.h\"\n"},
                   {"left/a.h", ""},
                   {"platform/gtk/b.h", ""}};
  EXPECT_THAT(CheckIncludes(tree, kFloors, {"made.h"}), IsEmpty());
}

struct BrokenTree {
  const char* name;
  Files files;
  const char* finding;
};

void PrintTo(const BrokenTree& row, std::ostream* out) { *out << row.name; }

class BrokenTreeTest : public testing::TestWithParam<BrokenTree> {};

TEST_P(BrokenTreeTest, IsFound) {
  EXPECT_THAT(CheckIncludes(GetParam().files, kFloors), ElementsAre(HasSubstr(GetParam().finding)));
}

INSTANTIATE_TEST_SUITE_P(
    Floors, BrokenTreeTest,
    testing::Values(
        BrokenTree{"ALowerFloorIncludesAHigherOne",
                   {{"core/a.h", "#include \"left/a.h\"\n"}, {"left/a.h", ""}},
                   "core/a.h includes left/a.h, which the table forbids"},
        BrokenTree{"OneSiblingIncludesTheOther",
                   {{"left/a.h", "#include \"right/a.h\"\n"}, {"right/a.h", ""}},
                   "left/a.h includes right/a.h, which the table forbids"},
        BrokenTree{"APlatformIncludesLogic",
                   {{"platform/gtk/a.cpp", "#include \"core/a.h\"\n"}, {"core/a.h", ""}},
                   "platform/gtk/a.cpp includes core/a.h, which the table forbids"},
        BrokenTree{"LogicIncludesAPlatform",
                   {{"core/a.h", "#include \"platform/gtk/b.h\"\n"}, {"platform/gtk/b.h", ""}},
                   "core/a.h includes platform/gtk/b.h, which the table forbids"},
        BrokenTree{"AForbiddenIncludeByAWayRound",
                   {{"left/a.h", "#include \"../right/a.h\"\n"}, {"right/a.h", ""}},
                   "left/a.h includes right/a.h, which the table forbids"},
        BrokenTree{
            "AToolkitHeaderInTheLogic", {{"core/a.h", "#include <gtk/gtk.h>\n"}}, "includes <gtk/gtk.h>"},
        BrokenTree{
            "AToolkitHeaderInAnInterface", {{"platform/a.h", "#include <gtkmm.h>\n"}}, "includes <gtkmm.h>"},
        BrokenTree{"AToolkitHeaderInMain", {{"main.cpp", "#include <glib.h>\n"}}, "includes <glib.h>"},
        BrokenTree{"ASystemHeaderInTheLogic", {{"core/a.h", "#include <unistd.h>\n"}}, "includes <unistd.h>"},
        BrokenTree{"AnOldCHeaderInTheLogic", {{"core/a.h", "#include <string.h>\n"}}, "includes <string.h>"},
        BrokenTree{
            "AHeaderThatIsNotThere", {{"core/a.h", "#include \"core/b.h\"\n"}}, "core/b.h, which is no file"},
        BrokenTree{"AToolkitHeaderInQuotes",
                   {{"core/a.h", "#include \"gtk/gtk.h\"\n"}},
                   "gtk/gtk.h, which is no file"},
        BrokenTree{"AnIncludeThroughAMacro", {{"core/a.h", "#include HEADER\n"}}, "HEADER, which is no file"},
        BrokenTree{"AFolderOutsideTheTable", {{"attic/a.h", ""}}, "attic/a.h lies in no folder of the table"},
        BrokenTree{
            "AFolderWithALongerName", {{"corelib/a.h", ""}}, "corelib/a.h lies in no folder of the table"},
        BrokenTree{"AHeaderThatIncludesItself",
                   {{"core/a.h", "#include \"core/a.h\"\n"}},
                   "circle of includes: core/a.h -> core/a.h"},
        BrokenTree{"ACircleOfThree",
                   {{"core/a.h", "#include \"core/b.h\"\n"},
                    {"core/b.h", "#include \"core/c.h\"\n"},
                    {"core/c.h", "#include \"core/a.h\"\n"}},
                   "circle of includes: core/a.h -> core/b.h -> core/c.h -> core/a.h"}),
    [](const auto& row) { return row.param.name; });

TEST(Floors, TwoWaysToOneHeaderAreNoCircle) {
  const Files tree{{"core/a.h", "#include \"core/b.h\"\n#include \"core/c.h\"\n"},
                   {"core/b.h", "#include \"core/c.h\"\n"},
                   {"core/c.h", ""}};
  EXPECT_THAT(CheckIncludes(tree, kFloors), IsEmpty());
}

TEST(Licences, AFileWithoutItsLineIsFound) {
  const std::string licence = "SPDX-License-Identifier: GPL-3.0-or-later\n";
  EXPECT_THAT(CheckLicences({{"first.h", "// " + licence},
                             {"third.py", "#!/usr/bin/env python3\n#\n# " + licence},
                             {"fourth.h", "\n\n\n// " + licence},
                             {"empty.h", ""},
                             {"other.h", "// SPDX-License-Identifier: MIT\n"}}),
              ElementsAre(HasSubstr("empty.h"), HasSubstr("fourth.h"), HasSubstr("other.h")));
}

TEST(AbsolutePaths, AFolderOfOneMachineIsFound) {
  const std::string user = std::string("/ho") + "me/kim/x";
  EXPECT_THAT(CheckAbsolutePaths({{"a.h", "\"" + user + "\"\n"},
                                  {"b.h", "// /opt/checkout/kivandra/src\n"},
                                  {"c.h", "http://a.example" + user + "\n"},
                                  {"d.h", "/usr/share and /home and ~" + user + "\n"}},
                                 "/opt/checkout/kivandra"),
              ElementsAre(HasSubstr("a.h, line 1"), HasSubstr("b.h, line 1")));
}

}  // namespace
}  // namespace kivandra::structure
