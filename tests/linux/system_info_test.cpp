// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/system_info.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <ctime>
#include <filesystem>
#include <ostream>

#include "linux/temporary_folder.h"
#include "platform/platform_error.h"

namespace kivandra::linux_impl {
namespace {

using tests::Environment;
using tests::TemporaryFolder;
using std::string_literals::operator""s;

LinuxSystemInfo::Clock NoonOf(int year, int month, int day) {
  std::tm time{};
  time.tm_year = year - 1900;
  time.tm_mon = month - 1;
  time.tm_mday = day;
  time.tm_hour = 12;
  time.tm_isdst = -1;
  const auto moment = std::chrono::system_clock::from_time_t(std::mktime(&time));
  return [moment] { return moment; };
}

struct DateCase {
  const char* name;
  int year, month, day;
  const char* pattern;
  const char* text;
};

void PrintTo(const DateCase& row, std::ostream* out) { *out << row.name; }

class FormatTodayTest : public testing::TestWithParam<DateCase> {};

TEST_P(FormatTodayTest, WritesTheDateByItsPattern) {
  const DateCase& row = GetParam();
  const LinuxSystemInfo info({6, 2}, NoonOf(row.year, row.month, row.day));
  EXPECT_EQ(info.FormatToday(row.pattern), row.text);
}

INSTANTIATE_TEST_SUITE_P(Dates, FormatTodayTest,
                         testing::Values(DateCase{"NoLeadingZeros", 2003, 2, 1, "d/m/yyyy", "1/2/2003"},
                                         DateCase{"TwoDigitsStay", 2026, 11, 16, "d/m/yyyy", "16/11/2026"},
                                         DateCase{"LeadingZeros", 2003, 2, 1, "dd/mm/yyyy", "01/02/2003"},
                                         DateCase{"ShortYear", 2003, 12, 31, "yy/m/d", "03/12/31"},
                                         DateCase{"OtherCharactersStand", 2003, 12, 31, "d. m.", "31. 12."},
                                         DateCase{"EmptyPattern", 2003, 12, 31, "", ""}),
                         [](const auto& row) { return row.param.name; });

struct ArgumentsCase {
  const char* name;
  std::string kernelText;
  const char* joined;
};

void PrintTo(const ArgumentsCase& row, std::ostream* out) { *out << row.name; }

class CommandLineTest : public testing::TestWithParam<ArgumentsCase> {};

TEST_P(CommandLineTest, LeavesTheProgramsNameOutAndJoinsTheRest) {
  EXPECT_EQ(JoinArguments(GetParam().kernelText), GetParam().joined);
}

INSTANTIATE_TEST_SUITE_P(Arguments, CommandLineTest,
                         testing::Values(ArgumentsCase{"NameAlone", "kivandra\0"s, ""},
                                         ArgumentsCase{"OneAddress", "kivandra\0http://a.example/\0"s,
                                                       "http://a.example/"},
                                         ArgumentsCase{"Two", "kivandra\0a\0b\0"s, "a b"},
                                         ArgumentsCase{"AnEmptyArgument", "kivandra\0\0b\0"s, " b"},
                                         ArgumentsCase{"NothingAtAll", ""s, ""}),
                         [](const auto& row) { return row.param.name; });

TEST(SystemInfo, KnowsItsOwnFolderAndName) {
  const LinuxSystemInfo info({6, 2});
  const std::filesystem::path self = std::filesystem::canonical("/proc/self/exe");
  EXPECT_EQ(info.ProgramDirectory(), self.parent_path().string());
  EXPECT_EQ(info.ProgramFileName(), self.filename().string());
}

TEST(SystemInfo, TellsTheEnginesVersion) {
  const LinuxSystemInfo info({605, 1});
  EXPECT_EQ(info.DllGetVersion().major, 605U);
  EXPECT_EQ(info.DllGetVersion().minor, 1U);
}

TEST(SystemInfo, SetUpMakesTheLogFolderForThisUserAlone) {
  const TemporaryFolder folder;
  const Environment data("XDG_DATA_HOME", folder.Path("share"));
  const LinuxSystemInfo info({6, 2});
  EXPECT_EQ(info.GetWindowsDirectoryA(), folder.Path("share/kivandra"));
  info.SetUp();
  for (const char* made : {"share/kivandra", "share/kivandra/21"}) {
    struct stat status {};
    ASSERT_EQ(stat(folder.Path(made).c_str(), &status), 0) << made;
    EXPECT_TRUE(S_ISDIR(status.st_mode));
    EXPECT_EQ(status.st_mode & 0777U, 0700U) << made;
  }
  info.SetUp();  // a second start finds all of it
}

TEST(SystemInfo, TheFavouritesLieInTheProgramsOwnData) {
  const TemporaryFolder folder;
  const Environment data("XDG_DATA_HOME", folder.Path("share"));
  const LinuxSystemInfo info({6, 2});
  EXPECT_EQ(info.SHGetSpecialFolderPathA(CSIDL_FAVORITES), folder.Path("share/kivandra/Favorites"));
  EXPECT_THROW((void)info.SHGetSpecialFolderPathA(CSIDL_FAVORITES + 1), PlatformError);
}

TEST(SystemInfo, SetUpSaysWhenItCannotMakeTheFolder) {
  const TemporaryFolder folder;
  folder.Write("file", "");
  const Environment data("XDG_DATA_HOME", folder.Path("file"));
  EXPECT_THROW(LinuxSystemInfo({6, 2}).SetUp(), PlatformError);
}

TEST(SystemInfo, ARelativeDataFolderCountsAsNone) {
  const TemporaryFolder folder;
  const Environment data("XDG_DATA_HOME", "share");
  const Environment home("HOME", folder.Path());
  EXPECT_EQ(LinuxSystemInfo({6, 2}).GetWindowsDirectoryA(), folder.Path(".local/share/kivandra"));
}

}  // namespace
}  // namespace kivandra::linux_impl
