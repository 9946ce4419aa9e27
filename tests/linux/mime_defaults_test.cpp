// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/mime_defaults.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "linux/temporary_folder.h"
#include "platform/platform_error.h"

namespace kivandra::linux_impl {
namespace {

using tests::Environment;
using tests::TemporaryFolder;

constexpr const char* kList = "config/mimeapps.list";
constexpr const char* kGnomesList = "config/gnome-mimeapps.list";

/// The user's lists and the machine's entries in one temporary folder, on a desktop that has a list of its
/// own.
class MimeDefaultsTest : public testing::Test {
 protected:
  void PutEntry(const std::string& place) {
    folder.Write("machine/applications/" + place, "[Desktop Entry]\nType=Application\nName=A\nExec=true\n");
  }
  void TakeEntry(const std::string& place) {
    std::filesystem::remove(folder.Path("machine/applications/" + place));
  }
  /// Gives what is told, empty for nothing.
  static std::string Set() {
    try {
      SetDefaultFor({"text/html", "x-scheme-handler/http"}, "ours.desktop");
    } catch (const PlatformError& error) {
      return error.what();
    }
    return {};
  }
  [[nodiscard]] std::string Read(const std::string& inside) const {
    std::ifstream file(folder.Path(inside), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }

  TemporaryFolder folder;
  Environment data{"XDG_DATA_HOME", folder.Path("data")};
  Environment config{"XDG_CONFIG_HOME", folder.Path("config")};
  Environment dataDirs{"XDG_DATA_DIRS", folder.Path("machine")};
  Environment configDirs{"XDG_CONFIG_DIRS", folder.Path("etc")};
  Environment desktop{"XDG_CURRENT_DESKTOP", "GNOME"};
};

TEST_F(MimeDefaultsTest, TheUsersOtherBrowsersStayBehindTheNewOneEachOnce) {
  folder.Write(kList, "[Default Applications]\ntext/html=a.desktop;ours.desktop;;b.desktop;a.desktop\n");
  EXPECT_EQ(Set(), "");
  EXPECT_EQ(Read(kList),
            "[Default Applications]\ntext/html=ours.desktop;a.desktop;b.desktop;\n"
            "x-scheme-handler/http=ours.desktop;\n");
  PutEntry("b.desktop");
  EXPECT_EQ(DefaultFor("text/html"), "b.desktop") << "the first that is there";
  PutEntry("ours.desktop");
  EXPECT_EQ(DefaultFor("text/html"), "ours.desktop");
}

TEST_F(MimeDefaultsTest, AnEntryInAFolderIsFoundByItsNameWithDashes) {
  const std::string name = "kde4-a-b.desktop";
  folder.Write(kList, "[Default Applications]\ntext/html=" + name + ";\n");
  EXPECT_EQ(DefaultFor("text/html"), "");
  for (const std::string place : {"kde4-a-b.desktop", "kde4/a-b.desktop", "kde4/a/b.desktop"}) {
    PutEntry(place);
    EXPECT_EQ(DefaultFor("text/html"), name) << place;
    TakeEntry(place);
    EXPECT_EQ(DefaultFor("text/html"), "") << place;
  }
}

TEST_F(MimeDefaultsTest, ANameThatHoldsAPathIsNone) {
  PutEntry("one/x.desktop");
  PutEntry("y.desktop");
  folder.Write(kList, "[Default Applications]\ntext/html=one/x.desktop;../applications/y.desktop;" +
                          folder.Path("machine/applications/y.desktop") + ";y.desktop;\n");
  EXPECT_EQ(DefaultFor("text/html"), "y.desktop");
  TakeEntry("y.desktop");
  EXPECT_EQ(DefaultFor("text/html"), "");
}

TEST_F(MimeDefaultsTest, ADamagedListOfOneDesktopIsToldAndTheCommonOneIsWritten) {
  const std::string damaged = "neither a list\nnor lost\n";
  folder.Write(kGnomesList, damaged);
  EXPECT_NE(Set().find("Cannot read " + folder.Path(kGnomesList)), std::string::npos);
  EXPECT_EQ(Read(kGnomesList), damaged);
  EXPECT_EQ(Read(kList),
            "[Default Applications]\ntext/html=ours.desktop;\nx-scheme-handler/http=ours.desktop;\n");
}

TEST_F(MimeDefaultsTest, OfTwoDamagedListsTheFirstIsTold) {
  folder.Write(kGnomesList, "neither a list\n");
  folder.Write(kList, "nor lost\n");
  EXPECT_NE(Set().find("Cannot read " + folder.Path(kGnomesList)), std::string::npos);
  EXPECT_EQ(Read(kList), "nor lost\n");
}

}  // namespace
}  // namespace kivandra::linux_impl
