// SPDX-License-Identifier: GPL-3.0-or-later
// Skins: what is one, what is none, and two at once.
#include <sys/stat.h>

#include <filesystem>
#include <fstream>

#include "platform/gtk/controls/skin_sheet.h"
#include "platform/skin_form.h"
#include "platform_gtk/window_test.h"

namespace kivandra::gtk {
namespace {

class SkinTest : public WindowTest {
 protected:
  ~SkinTest() override { std::filesystem::remove_all(folder); }

  static std::string Times(int count, const std::string& text) {
    std::string all;
    for (int i = 0; i < count; ++i) {
      all += text;
    }
    return all;
  }
  static std::string Desk(const std::string& picture) {
    return "\n.kv-skin .kv-desk { background-image: " + picture + "; }";
  }
  /// A colour made of another one.
  static std::string Made(int number, const std::string& what) {
    return "\n@define-color kv_x" + std::to_string(number) + " " + what + ";";
  }
  /// Each colour is made of the one before it.
  static std::string Chain(int length) {
    std::string all = Made(0, "red");
    for (int i = 1; i < length; ++i) {
      all += Made(i, "@kv_x" + std::to_string(i - 1));
    }
    return all;
  }
  /// Each colour is made of the one before it, twice.
  static std::string Doubled(int length) {
    std::string all = Made(0, "red");
    for (int i = 1; i <= length; ++i) {
      const std::string before = "@kv_x" + std::to_string(i - 1);
      all += Made(i, "mix(" + before + ", " + before + ", 0.5)");
    }
    return all;
  }
  std::string Write(const std::string& text) {
    const std::string path = folder + "/" + std::to_string(++files) + ".skn";
    std::ofstream(path, std::ios::binary) << text;
    return path;
  }
  static std::vector<std::string> Classes(const Form& form) {
    std::vector<std::string> skins;
    for (Gtk::Window* window : Gtk::Window::list_toplevels()) {
      for (const auto& each : window->get_css_classes()) {
        if (window->get_title().raw() == form.Caption() && each.raw().rfind("kv-skin", 0) == 0) {
          skins.push_back(each);
        }
      }
    }
    return skins;
  }

  const std::string skin = ReadSheet(kAssets + "/winaqua.skn");
  static std::string MakeFolder() {
    std::string path = (std::filesystem::temp_directory_path() / "skins-XXXXXX").string();
    EXPECT_NE(g_mkdtemp(path.data()), nullptr);
    return path;
  }

  std::string folder = MakeFolder();
  int files = 0;
};

TEST_F(SkinTest, DressesAWindow) {
  const auto form = forms.Load("frmPassword");
  form->SetCaption("one");
  EXPECT_EQ(Classes(*form), std::vector<std::string>{"kv-skin"});
  form->Get<SkinForm>("SkinForm1").SetSkinFile(kAssets + "/winaqua.skn");
  ASSERT_EQ(Classes(*form).size(), 1U);
  EXPECT_NE(Classes(*form)[0], "kv-skin");
}

TEST_F(SkinTest, EveryShippedSkinIsOne) {
  const auto form = forms.Load("frmPassword");
  auto& dress = form->Get<SkinForm>("SkinForm1");
  int shipped = 0;
  for (const auto& each : std::filesystem::directory_iterator(kAssets + "/skins")) {
    EXPECT_NO_THROW(dress.SetSkinFile(each.path().string())) << each.path();
    ++shipped;
  }
  EXPECT_GE(shipped, 4);
}

TEST_F(SkinTest, TwoWindowsWearDifferentSkinsAtOnce) {
  const auto one = forms.Load("frmPassword");
  const auto two = forms.Load("frmFirstLog");
  one->SetCaption("one");
  two->SetCaption("two");
  one->Get<SkinForm>("SkinForm1").SetSkinFile(Write(skin));
  two->Get<SkinForm>("SkinForm1").SetSkinFile(Write(skin + "/* another */"));
  EXPECT_NE(Classes(*one), Classes(*two));
  two->Get<SkinForm>("SkinForm1").SetSkinFile(Write(skin));
  EXPECT_EQ(Classes(*one), Classes(*two));
}

TEST_F(SkinTest, WhatIsNoSkinLeavesTheDress) {
  const struct {
    const char* name;
    std::string text;
  } kRows[] = {
      {"nothing", ""},
      {"another kind of text", "Dear diary"},
      {"no text at all", std::string("\0\xff\xd8\xff", 4)},
      {"a colour missing", skin.substr(skin.find(";") + 1)},
      {"a rule that reaches every window", skin + "\n* { opacity: 0; }"},
      {"such a rule in second place", skin + "\n.kv-skin .kv-btn, button { opacity: 0; }"},
      {"another sheet", skin + "\n@import url(\"file:///etc/passwd\");"},
      {"another file", skin + "\n.kv-skin .kv-desk { background-image: url(\"/etc/passwd\"); }"},
      {"a rule without its end", skin + "\n.kv-skin .kv-desk { color: red;"},
      {"a property that is none", skin + "\n.kv-skin .kv-desk { colour: nonsense; }"},
      {"a comment without its end", skin + "\n/* never closed"},
      {"a text in quotes without its end", skin + "\n.kv-skin .kv-btn { font-family: \"Ca\nbin\"; }"},
      {"another file, the word in capitals", skin + Desk("URL(\"/etc/passwd\")")},
      {"another file, without quotes", skin + Desk("url(/etc/passwd)")},
      {"another file, behind a blank", skin + Desk("url( \"/etc/passwd\")")},
      {"another file, behind a comment", skin + Desk("url(/**/\"/etc/passwd\")")},
      {"another file, the word in escaped letters", skin + Desk("\\75rl(\"/etc/passwd\")")},
      {"a rule hidden between quotes that look like a comment",
       skin + Desk("url(\"data:/*\")") + "\n* { opacity: 0; }\n" + Desk("url(\"data:*/\")")},
      {"a rule inside a rule", skin + "\n.kv-skin .kv-desk { color: red; * { opacity: 0; } }"},
      {"a colour of another sheet", skin + "\n@define-color theme_bg_color red;"},
      {"a colour of our own in another spelling", skin + "\n@define-color  kv_ink red;"},
      {"a colour made of an unknown one", skin + "\n@define-color kv_more @kv_nowhere;"},
      {"a rule with an unknown colour", skin + "\n.kv-skin .kv-btn { color: @kv_nowhere; }"},
      {"two colours made of each other",
       skin + "\n@define-color kv_a @kv_b;\n@define-color kv_b @kv_a;\n@define-color kv_ink @kv_a;"},
      {"such colours under other names",
       skin + "\n@define-color a @b;\n@define-color b @a;\n.kv-skin .kv-btn { color: @a; }"},
      {"a colour made of itself", skin + "\n@define-color kv_ink shade(@kv_ink, 0.5);"},
      {"a colour made of a million others", skin + Doubled(20)},
      {"a chain of a hundred thousand colours", skin + Chain(100000)},
      {"a hundred thousand parentheses", skin + Desk(std::string(100000, '(') + std::string(100000, ')'))},
      {"a hundred thousand functions inside each other",
       skin + "\n@define-color kv_ink " + Times(100000, "shade(") + "red" + Times(100000, ", 1)") + ";"},
      {"two hundred thousand rules", skin + Times(200000, "\n.kv-skin a{}")},
      {"a rule for a thousand widgets inside each other", skin + "\n.kv-skin" + Times(1000, " a") + " {}"},
      {"an endless line", Times(400000, "w ") + std::string(3000000, 'w')},
      {"an endless line of spaces before what is no rule", std::string(4000000, ' ') + "x"},
      {"an endless line of faults", skin + "\n.kv-skin a { " + Times(700000, "a:b; ") + " }"},
      {"larger than 4 MiB", skin + std::string(std::size_t{4} << 20U, ' ')},
  };
  const auto form = forms.Load("frmPassword");
  form->SetCaption("one");
  auto& dress = form->Get<SkinForm>("SkinForm1");
  dress.SetSkinFile(kAssets + "/winaqua.skn");
  const auto before = Classes(*form);
  for (const auto& row : kRows) {
    EXPECT_THROW(dress.SetSkinFile(Write(row.text)), PlatformError) << row.name;
    EXPECT_EQ(Classes(*form), before) << row.name;
  }
  EXPECT_THROW(dress.SetSkinFile(folder + "/nowhere.skn"), PlatformError);
  EXPECT_THROW(dress.SetSkinFile(folder), PlatformError);
  EXPECT_EQ(Classes(*form), before);
}

TEST_F(SkinTest, WhatIsNoPlainFileIsRefusedAtOnce) {
  const auto form = forms.Load("frmPassword");
  form->SetCaption("one");
  auto& dress = form->Get<SkinForm>("SkinForm1");
  const std::string pipe = folder + "/pipe.skn";
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  const std::string endless = folder + "/endless.skn";
  std::filesystem::create_symlink("/dev/zero", endless);
  const std::string circle = folder + "/circle.skn";
  std::filesystem::create_symlink(circle, circle);
  const std::string locked = folder + "/locked";
  std::filesystem::create_directory(locked);
  std::filesystem::permissions(locked, std::filesystem::perms::none);
  for (const std::string& path : {pipe, endless, circle, locked, std::string("/dev/zero"), std::string()}) {
    EXPECT_THROW(dress.SetSkinFile(path), PlatformError) << path;
    EXPECT_EQ(Classes(*form), std::vector<std::string>{"kv-skin"}) << path;
  }
  std::filesystem::permissions(locked, std::filesystem::perms::owner_all);
}

TEST_F(SkinTest, FiftyMegabytesAreRefusedUnread) {
  const std::string large = Write(skin);
  std::filesystem::resize_file(large, std::uintmax_t{50} << 20U);
  EXPECT_THROW((void)ReadSheet(large), PlatformError);
  EXPECT_THROW((void)SkinSheet::Load(large, ReadSheet(kAssets + "/css/structure.css")), PlatformError);
}

TEST_F(SkinTest, ALinkToAPlainFileIsAsGoodAsTheFile) {
  const std::string link = folder + "/link.skn";
  std::filesystem::create_symlink(Write(skin), link);
  EXPECT_EQ(ReadSheet(link), skin);
}

TEST_F(SkinTest, ColoursMayBeMadeOfOthersAndTextsMayHoldWhatLooksLikeACommentOrARule) {
  const auto form = forms.Load("frmPassword");
  auto& dress = form->Get<SkinForm>("SkinForm1");
  for (const std::string& more :
       {Doubled(8), Chain(200), std::string("\n.kv-skin .kv-btn { font-family: \"/* } * { @kv_x \"; }"),
        std::string("\n.kv-skin .kv-btn { color: shade(mix(@kv_ink, @kv_card, 0.5), 1.2); }"),
        "/* " + std::string(3000000, '*') + " */" + std::string(1000000, ' ')}) {
    EXPECT_NO_THROW(dress.SetSkinFile(Write(skin + more))) << more.substr(0, 100);
  }
}

TEST_F(SkinTest, AShapeMayBeOverruled) {
  const auto form = forms.Load("frmPassword");
  EXPECT_NO_THROW(form->Get<SkinForm>("SkinForm1")
                      .SetSkinFile(Write(skin + "\n.kv-skin .kv-btn { border-radius: 2px; }")));
}

}  // namespace
}  // namespace kivandra::gtk
