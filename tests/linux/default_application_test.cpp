// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/default_application.h"

#include <gio/gio.h>
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "linux/temporary_folder.h"
#include "linux/until.h"
#include "platform/linux/desktop_entry_file.h"
#include "platform/linux/mime_defaults.h"
#include "platform/linux/tool_run.h"
#include "platform/platform_error.h"

namespace kivandra::linux_impl {
namespace {

using std::chrono::seconds;
using tests::Environment;
using tests::TemporaryFolder;

constexpr const char* kTools = "/usr/bin:/bin";

/// A home, a machine's folders and a program, all in one temporary folder; no tool of the desktop is found
/// unless a test puts one into `bin`.
class DefaultApplicationTest : public testing::Test {
 protected:
  DefaultApplicationTest() {
    PutProgram("program");
    std::filesystem::create_directories(folder.Path("bin"));
  }
  void PutProgram(const std::string& place) { PutTool(place + "/kivandra-open", "exit 0"); }
  void PutTool(const std::string& file, const std::string& script) {
    folder.Write(file, "#!/bin/sh\n" + script + "\n");
    std::filesystem::permissions(folder.Path(file), std::filesystem::perms::owner_all);
  }
  std::string Register(const std::string& place = "program") {
    LinuxDefaultApplication application(folder.Path(place));
    try {
      application.Register();
    } catch (const PlatformError& error) {
      return error.what();
    }
    return {};
  }
  [[nodiscard]] std::string Read(const std::string& inside) const {
    std::ifstream file(folder.Path(inside), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }
  /// What another program of the desktop finds, asked in a process of its own.
  static std::string Asked(const std::vector<std::string>& words) {
    const Environment path("PATH", kTools);
    return RunTool(words, seconds(20)).output;
  }

  TemporaryFolder folder;
  Environment data{"XDG_DATA_HOME", folder.Path("data")};
  Environment config{"XDG_CONFIG_HOME", folder.Path("config")};
  Environment home{"HOME", folder.Path("home")};
  Environment dataDirs{"XDG_DATA_DIRS", folder.Path("machine")};
  Environment configDirs{"XDG_CONFIG_DIRS", folder.Path("etc")};
  Environment desktop{"XDG_CURRENT_DESKTOP", "X-Generic"};
  Environment browser{"BROWSER", std::nullopt};
  Environment path{"PATH", folder.Path("bin")};
};

constexpr const char* kEntry = "data/applications/org.kivandra.Kivandra.desktop";
constexpr const char* kList = "config/mimeapps.list";

TEST_F(DefaultApplicationTest, WithoutAnyToolTheSharedListsAreWritten) {
  EXPECT_EQ(Register(), "");
  EXPECT_NE(Read(kEntry).find("Exec=" + folder.Path("program/kivandra-open") + " %u\n"), std::string::npos);
  for (const char* type :
       {"text/html", "application/xhtml+xml", "x-scheme-handler/http", "x-scheme-handler/https"}) {
    EXPECT_NE(Asked({"gio", "mime", type}).find("org.kivandra.Kivandra.desktop"), std::string::npos) << type;
    EXPECT_EQ(Asked({"xdg-mime", "query", "default", type}), "org.kivandra.Kivandra.desktop") << type;
  }
  EXPECT_EQ(Asked({"xdg-settings", "check", "default-web-browser", "org.kivandra.Kivandra.desktop"}), "yes");
}

TEST_F(DefaultApplicationTest, TheDesktopsOwnToolsDoTheSame) {
  const Environment tools("PATH", kTools);
  EXPECT_EQ(Register(), "");
  // That tool adds the types which it misses at the end of an entry, and sleeps four seconds for each.
  EXPECT_TRUE(Read(kEntry).ends_with("\nStartupWMClass=kivandra\n")) << Read(kEntry);
  EXPECT_EQ(Asked({"xdg-settings", "get", "default-web-browser"}), "org.kivandra.Kivandra.desktop");
  EXPECT_NE(Read("data/applications/mimeinfo.cache").find("x-scheme-handler/https"), std::string::npos);
  EXPECT_EQ(DefaultFor("application/xhtml+xml"), kDesktopEntryName) << "the tool leaves this one out";
}

TEST_F(DefaultApplicationTest, TheWrittenEntryIsAGoodOne) {
  PutProgram("two words, $1 \"100%\" \\ `x`");
  EXPECT_EQ(Register("two words, $1 \"100%\" \\ `x`"), "");
  EXPECT_EQ(Asked({"desktop-file-validate", folder.Path(kEntry)}), "") << Read(kEntry);
  EXPECT_TRUE(Asked({"gio", "mime", "text/html"}).find("org.kivandra.Kivandra.desktop") != std::string::npos);
}

TEST_F(DefaultApplicationTest, ThePressedLinkReachesTheProgramFromAnOddFolder) {
  const std::string odd = "two words, $1 \"100%\" \\ `x`";
  PutTool(odd + "/kivandra-open", "printf '%s' \"$*\" > " + folder.Path("opened"));
  ASSERT_EQ(Register(odd), "");
  (void)Asked({"gio", "open", "http://example.org/?a=1&b=%20two"});
  EXPECT_TRUE(tests::Until([&] { return Read("opened") == "http://example.org/?a=1&b=%20two"; }))
      << Read("opened") << Read(kEntry);
}

TEST_F(DefaultApplicationTest, TheMachinesEntryIsUsedWhereItStartsThisProgram) {
  folder.Write("machine/applications/org.kivandra.Kivandra.desktop",
               "[Desktop Entry]\nType=Application\nName=K\nExec=" + folder.Path("program/kivandra-open") +
                   " %u\nMimeType=text/html;\n");
  EXPECT_EQ(Register(), "");
  EXPECT_FALSE(std::filesystem::exists(folder.Path(kEntry)));
  EXPECT_EQ(DefaultFor("text/html"), kDesktopEntryName);
}

TEST_F(DefaultApplicationTest, AnEntryThatStartsAnotherProgramIsHiddenByOneOfTheUsers) {
  PutProgram("elsewhere");
  folder.Write(
      "machine/applications/org.kivandra.Kivandra.desktop",
      "[Desktop Entry]\nType=Application\nName=K\nExec=" + folder.Path("elsewhere/kivandra-open") + " %u\n");
  EXPECT_EQ(Register(), "");
  EXPECT_NE(Read(kEntry).find(folder.Path("program/kivandra-open")), std::string::npos);
  EXPECT_EQ(Register("elsewhere"), "");
  EXPECT_NE(Read(kEntry).find(folder.Path("elsewhere/kivandra-open")), std::string::npos);
}

TEST_F(DefaultApplicationTest, PressedAgainItLeavesTheSame) {
  EXPECT_EQ(Register(), "");
  const std::string entry = Read(kEntry);
  const std::string list = Read(kList);
  EXPECT_EQ(Register(), "");
  EXPECT_EQ(Read(kEntry), entry);
  EXPECT_EQ(Read(kList), list);
}

TEST_F(DefaultApplicationTest, WhatElseStandsInTheListStays) {
  folder.Write("data/applications/other.desktop", "[Desktop Entry]\nType=Application\nName=O\nExec=true\n");
  folder.Write(kList,
               "# mine\n[Default Applications]\ntext/html=other.desktop\nimage/png=other.desktop\n\n"
               "[Added Associations]\ntext/plain=other.desktop;\n");
  EXPECT_EQ(Register(), "");
  const std::string list = Read(kList);
  for (const char* line : {"# mine\n", "image/png=other.desktop\n", "text/plain=other.desktop;\n",
                           "text/html=org.kivandra.Kivandra.desktop;other.desktop;\n"}) {
    EXPECT_NE(list.find(line), std::string::npos) << line << " in " << list;
  }
}

TEST_F(DefaultApplicationTest, AListOfOneDesktopThatStandsBeforeIsChangedToo) {
  const Environment gnome("XDG_CURRENT_DESKTOP", "Ubuntu:GNOME");
  folder.Write("data/applications/other.desktop", "[Desktop Entry]\nType=Application\nName=O\nExec=true\n");
  folder.Write("config/gnome-mimeapps.list", "[Default Applications]\nx-scheme-handler/http=other.desktop\n");
  EXPECT_EQ(Register(), "");
  EXPECT_EQ(DefaultFor("x-scheme-handler/http"), kDesktopEntryName);
  EXPECT_EQ(Read("config/gnome-mimeapps.list").find("text/html"), std::string::npos);
}

TEST_F(DefaultApplicationTest, AListThatIsALinkStaysOne) {
  folder.Write("dotfiles/list", "[Default Applications]\n");
  std::filesystem::create_directories(folder.Path("config"));
  std::filesystem::create_symlink(folder.Path("dotfiles/list"), folder.Path(kList));
  EXPECT_EQ(Register(), "");
  EXPECT_TRUE(std::filesystem::is_symlink(folder.Path(kList)));
  EXPECT_NE(Read("dotfiles/list").find("text/html"), std::string::npos);
}

TEST_F(DefaultApplicationTest, ADamagedListIsToldAndLeftAsItIs) {
  const std::string damaged = "neither a list\nnor lost\n";
  folder.Write(kList, damaged);
  EXPECT_NE(Register().find("Cannot read"), std::string::npos);
  EXPECT_EQ(Read(kList), damaged);
}

TEST_F(DefaultApplicationTest, ADesktopThatDoesNotTakeItIsToldWithWhatItNames) {
  PutTool("bin/xdg-settings", "test \"$1\" = get && echo firefox.desktop; exit 0");
  EXPECT_EQ(Register(),
            "The desktop opens with another program: web pages by xdg-settings (firefox.desktop)");
  EXPECT_EQ(DefaultFor("text/html"), kDesktopEntryName) << "the shared lists have it all the same";
}

TEST_F(DefaultApplicationTest, ADesktopThatTakesItIsAskedOnceAndBelieved) {
  PutTool("bin/xdg-settings", "echo \"$*\" >> " + folder.Path("asked") +
                                  "; test \"$1\" = get && echo org.kivandra.Kivandra.desktop");
  EXPECT_EQ(Register(), "");
  EXPECT_EQ(Read("asked"),
            "set default-web-browser org.kivandra.Kivandra.desktop\nget default-web-browser\n");
}

TEST_F(DefaultApplicationTest, AnotherBrowserInTheEnvironmentIsTold) {
  folder.Write("machine/applications/other.desktop",
               "[Desktop Entry]\nType=Application\nName=O\nExec=true %u\nCategories=Network;WebBrowser;\n");
  const Environment tools("PATH", kTools);
  const Environment chosen("BROWSER", "true");
  EXPECT_NE(Register().find("web pages by xdg-settings (other.desktop)"), std::string::npos);
}

TEST_F(DefaultApplicationTest, WithoutTheCommandNothingIsWritten) {
  std::filesystem::remove(folder.Path("program/kivandra-open"));
  EXPECT_EQ(Register(), "There is no program " + folder.Path("program/kivandra-open"));
  EXPECT_FALSE(std::filesystem::exists(folder.Path("data")));
  EXPECT_FALSE(std::filesystem::exists(folder.Path("config")));
}

TEST_F(DefaultApplicationTest, AFolderThatTakesNoEntryIsTold) {
  folder.Write("data", "a file in its place");
  EXPECT_NE(Register().find("Cannot make the folder"), std::string::npos);
  EXPECT_FALSE(std::filesystem::exists(folder.Path(kList)));
}

TEST_F(DefaultApplicationTest, WhileAToolIsWaitedForEventsRunAndASecondPressIsRefused) {
  PutTool("bin/xdg-settings", "read line < " + folder.Path("gate") + "; echo org.kivandra.Kivandra.desktop");
  {
    const Environment tools("PATH", kTools);
    ASSERT_TRUE(RunTool({"mkfifo", folder.Path("gate")}, seconds(10)).good);
  }
  LinuxDefaultApplication application(folder.Path("program"));
  struct Pressing {
    LinuxDefaultApplication* application;
    std::string gate;
    int turns = 0;
    std::string refusal;
  } pressing{&application, folder.Path("gate"), 0, {}};
  const guint source = g_timeout_add(
      20,
      [](gpointer pressed) -> gboolean {
        auto* press = static_cast<Pressing*>(pressed);
        try {
          press->application->Register();
        } catch (const PlatformError& error) {
          press->refusal = error.what();
        }
        if (++press->turns >= 3) {
          std::ofstream(press->gate) << "on\n";
        }
        return G_SOURCE_CONTINUE;
      },
      &pressing);
  EXPECT_NO_THROW(application.Register());
  g_source_remove(source);
  EXPECT_GE(pressing.turns, 3);
  EXPECT_EQ(pressing.refusal, "The desktop is being asked already.");
}

TEST_F(DefaultApplicationTest, AToolThatHangsIsEndedWithAllThatItHasStarted) {
  PutTool("bin/hangs", "/bin/sleep 1000 & echo $! > " + folder.Path("id") + "; wait");
  const auto began = std::chrono::steady_clock::now();
  const ToolResult result = RunTool({"hangs"}, std::chrono::milliseconds(500));
  EXPECT_LT(std::chrono::steady_clock::now() - began, seconds(5));
  EXPECT_TRUE(result.found);
  EXPECT_FALSE(result.good);
  const std::string id = Read("id").substr(0, Read("id").find('\n'));
  ASSERT_FALSE(id.empty());
  EXPECT_TRUE(tests::Until([&] {
    std::ifstream state("/proc/" + id + "/stat");
    std::string text{std::istreambuf_iterator<char>(state), {}};
    return text.empty() || text.find(") Z") != std::string::npos;
  }));
}

TEST_F(DefaultApplicationTest, AToolThatIsNotThereIsNotFound) {
  const ToolResult result = RunTool({"not-there"}, seconds(1));
  EXPECT_FALSE(result.found);
  EXPECT_FALSE(result.good);
}

TEST(ExecCommand, APathIsQuotedAsAnEntryWantsIt) {
  EXPECT_EQ(ExecCommand("/usr/bin/kivandra-open"), "/usr/bin/kivandra-open");
  EXPECT_EQ(ExecCommand("/a b/c"), "\"/a b/c\"");
  EXPECT_EQ(ExecCommand("/50%/c"), "env /50%%/c");
  EXPECT_EQ(ExecCommand("/$a`\"\\"), R"("/\\$a\\`\\"\\\\")");
  EXPECT_EQ(ExecCommand("/a\nb"), "\"/a\\nb\"");
}

}  // namespace
}  // namespace kivandra::linux_impl
