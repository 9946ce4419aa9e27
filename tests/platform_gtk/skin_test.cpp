// SPDX-License-Identifier: GPL-3.0-or-later
// Skins: what is one, what is none, and two at once.
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

TEST_F(SkinTest, AShapeMayBeOverruled) {
  const auto form = forms.Load("frmPassword");
  EXPECT_NO_THROW(form->Get<SkinForm>("SkinForm1")
                      .SetSkinFile(Write(skin + "\n.kv-skin .kv-btn { border-radius: 2px; }")));
}

}  // namespace
}  // namespace kivandra::gtk
