// SPDX-License-Identifier: GPL-3.0-or-later
// Outside programs, and the window that stands in for the system's Internet options.
#include <giomm/desktopappinfo.h>

#include <fstream>

#include "platform/gtk/shell/desktop_programs.h"
#include "platform/gtk/shell/sent_keys.h"
#include "platform/gtk/shell/shell_calls.h"
#include "platform/platform_error.h"
#include "platform_gtk/hands.h"
#include "platform_gtk/own_forms.h"

namespace kivandra::gtk {
namespace {

const std::string kOptions = "rundll32.exe shell32.dll,Control_RunDLL inetcpl.cpl,,";

class ShellTest : public WindowTest {
 protected:
  ~ShellTest() override {
    std::filesystem::remove_all(programs);
    std::filesystem::create_directories(programs);
    EXPECT_TRUE(Until([] { return Gio::AppInfo::get_all().empty(); }));
  }

  /// A program of the desktop; `more` are further lines of its entry.
  void Put(const std::string& id, const std::string& more) {
    std::ofstream(programs + "/" + id + ".desktop")
        << "[Desktop Entry]\nType=Application\nName=" << id << "\nExec=sh -c \"echo " << id << " >> "
        << Started() << "\"\n"
        << more << "\n";
    EXPECT_TRUE(Until([&] {
      g_usleep(1000);
      return Gio::DesktopAppInfo::create(id + ".desktop") != nullptr;
    })) << id;
  }
  void Defaults(const std::string& lines) {
    std::ofstream(programs + "/mimeapps.list") << lines << "\n";
    // The file is read again when the folder of programs is seen to have changed.
    Put("zz-changed", "NoDisplay=true");
  }
  static std::string Found(DesktopProgram program) {
    const auto found = FindDesktopProgram(program);
    return found ? found->get_id() : std::string();
  }
  std::string Started() const { return own.Folder() + "/started"; }

  const std::string programs = Glib::get_user_data_dir() + "/applications";
  OwnForms own;
  bool pictures = true;
  GtkShellCalls shell{forms, {[this] { return pictures; }, [this](bool shown) { pictures = shown; }}};
};

TEST_F(ShellTest, WhereTheDesktopHasNothingNothingIsSaid) {
  for (const char* command : {"notepad.exe", "Wordpad", "calc.exe", "sndvol32.exe"}) {
    EXPECT_NO_THROW(shell.Shell(command, kNormalFocus)) << command;
  }
}

TEST_F(ShellTest, StartsNothingThatItDoesNotKnow) {
  for (const char* command : {"", "sh", "/bin/sh", "notepad.exe /etc/passwd", "CALC.EXE",
                              "rundll32.exe shell32.dll", "update.exe"}) {
    EXPECT_THROW(shell.Shell(command, kNormalFocus), PlatformError) << command;
  }
}

TEST_F(ShellTest, FindsACalculatorAndAVolumeControlByTheirKind) {
  Put("b-calc", "Categories=Utility;Calculator;");
  Put("a-named", "GenericName=Calculator");
  Put("sound", "Categories=Audio;Settings;");
  EXPECT_EQ(Found(DesktopProgram::Calculator), "b-calc.desktop");
  EXPECT_EQ(Found(DesktopProgram::Volume), "sound.desktop");
  Put("zmixer", "Categories=AudioVideo;Audio;Mixer;");
  Put("a-calc", "Categories=Calculator;");
  EXPECT_EQ(Found(DesktopProgram::Volume), "zmixer.desktop");
  EXPECT_EQ(Found(DesktopProgram::Calculator), "a-calc.desktop");
}

TEST_F(ShellTest, FindsEditorsByTheirDefaultThenByTheirKind) {
  Put("pad", "Categories=TextEditor;");
  Put("writer", "Categories=Office;WordProcessor;");
  EXPECT_EQ(Found(DesktopProgram::Notepad), "pad.desktop");
  EXPECT_EQ(Found(DesktopProgram::Wordpad), "writer.desktop");
  Put("other", "MimeType=text/plain;application/rtf;");
  Defaults("[Default Applications]\ntext/plain=other.desktop\napplication/rtf=other.desktop");
  EXPECT_EQ(Found(DesktopProgram::Notepad), "other.desktop");
  EXPECT_EQ(Found(DesktopProgram::Wordpad), "other.desktop");
}

TEST_F(ShellTest, NeverFindsAWayRoundTheFilter) {
  const char* const kWays[] = {
      "Categories=Calculator;WebBrowser;",
      "Categories=Calculator;Network;",
      "Categories=Calculator;System;FileManager;",
      "Categories=TerminalEmulator;Calculator;",
      "Categories=Calculator;Development;",
      "Categories=Calculator;\nMimeType=text/html;",
      "Categories=Calculator;\nMimeType=text/plain;x-scheme-handler/http;",
      "Categories=Calculator;\nMimeType=x-scheme-handler/https;",
      "Categories=Calculator;\nMimeType=inode/directory;",
      "Categories=Calculator;\nTerminal=true",
      "Categories=Calculator;\nNoDisplay=true",
      "Categories=Calculator;\nHidden=true",
      "Categories=Calculator;\nOnlyShowIn=Elsewhere;",
      "Categories=NotACalculator;",
      "Comment=Calculator;",
  };
  int number = 0;
  for (const char* way : kWays) {
    const std::string id = "way" + std::to_string(++number);
    if (std::string(way).find("Hidden=true") == std::string::npos) {
      Put(id, way);
    } else {
      std::ofstream(programs + "/" + id + ".desktop")
          << "[Desktop Entry]\nType=Application\nName=x\nExec=true\n"
          << way << "\n";
    }
    EXPECT_EQ(Found(DesktopProgram::Calculator), "") << way;
  }
  Put("way-editor", "MimeType=text/plain;text/html;\nCategories=TextEditor;");
  Defaults("[Default Applications]\ntext/plain=way-editor.desktop");
  EXPECT_EQ(Found(DesktopProgram::Notepad), "");
}

TEST_F(ShellTest, AnEntryThatIsBrokenIsPassedOver) {
  std::ofstream(programs + "/broken.desktop") << std::string("\0\xff[Desktop", 10);
  std::ofstream(programs + "/empty.desktop").flush();
  std::filesystem::create_directory(programs + "/folder.desktop");
  Put("good", "Categories=Calculator;");
  EXPECT_EQ(Found(DesktopProgram::Calculator), "good.desktop");
}

TEST_F(ShellTest, StartsTheProgram) {
  Put("good", "Categories=Calculator;");
  shell.Shell("calc.exe", kNormalFocus);
  EXPECT_TRUE(Until([&] {
    g_usleep(1000);
    return std::filesystem::exists(Started());
  }));
}

TEST_F(ShellTest, ThePicturesEntryIsWhereTheKeysReachIt) {
  ASSERT_EQ(FixedOptions().size(), static_cast<std::size_t>(kPicturesRow));
  for (const bool expected : {false, true}) {
    shell.Shell(kOptions + "6", kNormalFocus);
    ASSERT_NE(ShownWindow("Internet Options"), nullptr);
    for (int i = 0; i < kPicturesRow; ++i) {
      shell.SendKeys("{DOWN}");
    }
    shell.SendKeys("( )");
    shell.SendKeys("{TAB}");
    shell.SendKeys("{TAB}");
    EXPECT_NE(pictures, expected) << "nothing changes before OK";
    shell.SendKeys("( )");
    EXPECT_EQ(pictures, expected);
    EXPECT_EQ(ShownWindow("Internet Options"), nullptr);
  }
}

TEST_F(ShellTest, ARealKeyboardDoesTheSame) {
  shell.Shell(kOptions + "6", kNormalFocus);
  Hands hands(*ShownWindow("Internet Options"));
  hands.Press({"End", "space", "Tab", "Tab", "space"});
  EXPECT_TRUE(Until([&] { return !pictures && ShownWindow("Internet Options") == nullptr; }));
}

TEST_F(ShellTest, EveryOtherRowIsFixed) {
  shell.Shell(kOptions + "6", kNormalFocus);
  for (int i = 0; i < kPicturesRow; ++i) {
    shell.SendKeys("( )");
    shell.SendKeys("{DOWN}");
  }
  shell.SendKeys("{TAB}{TAB}( )");
  EXPECT_TRUE(pictures);
}

TEST_F(ShellTest, EscapeChangesNothing) {
  shell.Shell(kOptions + "6", kNormalFocus);
  Hands hands(*ShownWindow("Internet Options"));
  hands.Press({"End", "space", "Escape"});
  EXPECT_TRUE(Until([&] { return ShownWindow("Internet Options") == nullptr; }));
  EXPECT_TRUE(pictures);
}

TEST_F(ShellTest, TheContentPageTellsWhereTheParentsOptionsAre) {
  shell.Shell(kOptions + "2", kNormalFocus);
  Gtk::Window* window = ShownWindow("Internet Options");
  ASSERT_NE(window, nullptr);
  const auto texts = WidgetsBelow(*window, [](auto& each) {
    auto* label = dynamic_cast<Gtk::Label*>(&each);
    return label != nullptr && label->get_mapped() &&
           label->get_text().find("Parental Options Menu") != Glib::ustring::npos;
  });
  EXPECT_EQ(texts.size(), 1U);
  shell.Shell(kOptions + "6", kNormalFocus);
  EXPECT_EQ(ShownWindow("Internet Options"), window) << "there is one such window";
  shell.SendKeys("{ESC}");
}

TEST_F(ShellTest, KeysForNobodyAreLost) {
  for (const char* keys : {"%{v}", "^{f}", "{DOWN}", "( )", "", "{", "^", "(((", "{}}", "}"}) {
    EXPECT_NO_THROW(shell.SendKeys(keys)) << keys;
  }
}

TEST(SentKeysTest, ReadsTheNotation) {
  using Keys = std::vector<SentKey>;
  EXPECT_EQ(ReadSentKeys("{DOWN}"), (Keys{{"DOWN"}}));
  EXPECT_EQ(ReadSentKeys("( )"), (Keys{{" "}}));
  EXPECT_EQ(ReadSentKeys("^{f}"), (Keys{{"f", true}}));
  EXPECT_EQ(ReadSentKeys("%{v}a"), (Keys{{"v", false, true}, {"a"}}));
  EXPECT_EQ(ReadSentKeys("^(ab)c"), (Keys{{"a", true}, {"b", true}, {"c"}}));
  EXPECT_EQ(ReadSentKeys("+{TAB}"), (Keys{{"TAB", false, false, true}}));
  EXPECT_EQ(ReadSentKeys("{}}{"), (Keys{{"}"}}));
}

}  // namespace
}  // namespace kivandra::gtk
