// SPDX-License-Identifier: GPL-3.0-or-later
// The form files hold what the logic asks for, and the fakes agree with them.
#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <sstream>

#include "fakes/whole_program.h"
#include "frame/banner_free.h"

namespace kivandra {
namespace {

struct FormObject {
  std::string type;
  std::map<std::string, std::string> properties;  // those that stand before the next object
};
using FormFile = std::map<std::string, FormObject>;

FormFile ReadForm(const std::string& name) {
  std::stringstream text;
  text << std::ifstream(std::string(KV_SOURCE_DIR) + "/assets/forms/" + name + ".ui").rdbuf();
  const std::string source = text.str();
  FormFile form;
  const std::regex object("<object class=\"([A-Za-z]+)\" id=\"([A-Za-z0-9_]+)\"");
  const std::regex property("<property name=\"([a-z-]+)\"[^>]*>([^<]*)</property>");
  std::string rest = source;
  for (std::sregex_iterator each(source.begin(), source.end(), object), end; each != end; ++each) {
    FormObject& made = form[(*each)[2]];
    made.type = (*each)[1];
    const auto from = static_cast<std::size_t>(each->position() + each->length());
    const std::string body = source.substr(from, source.find("<object", from) - from);
    for (std::sregex_iterator one(body.begin(), body.end(), property); one != end; ++one) {
      made.properties[(*one)[1]] = (*one)[2];
    }
  }
  return form;
}

/// The types of object that may stand for a kind of control.
std::set<std::string> TypesOf(ControlKind kind) {
  switch (kind) {
    case ControlKind::TextBox:
      return {"GtkEntry", "GtkPasswordEntry"};
    case ControlKind::ComboBox:
      return {"GtkComboBoxText"};
    case ControlKind::Button:
      return {"GtkButton"};
    case ControlKind::Calendar:
      return {"GtkCalendar"};
    case ControlKind::CheckBox:
      return {"GtkCheckButton"};
    case ControlKind::CommonDialog:
      return {"KvCommonDialog"};
    case ControlKind::RichTextBox:
      return {"GtkTextView"};
    case ControlKind::Label:
    case ControlKind::StatusBar:
      return {"GtkLabel"};
    case ControlKind::Timer:
      return {"KvTimer"};
    case ControlKind::SkinForm:
      return {"KvSkinForm"};
    case ControlKind::TreeView:
      return {"GtkListView"};
    case ControlKind::BarControl:
    case ControlKind::MdiClient:
    case ControlKind::MenuBar:
    case ControlKind::PageView:
    case ControlKind::PictureBox:
    case ControlKind::WebBrowser:
      return {"GtkBox"};
  }
  return {};
}

/// Opens the panel and uses what asks for its controls.
void AskForThePanelsControls(fakes::WholeProgram& world) {
  world.OpenPanel();
  auto& panel = world.forms.Of("frmOptions");
  for (const char* button : {"Skinbutton1", "Command1", "SkinButton2", "SkinButton4", "Command3"}) {
    panel.ButtonOf(button).Click();
  }
  panel.ButtonOf("b_allowButton_0").Click();
  panel.ButtonOf("b_allowButton_1").Click();
  panel.CalendarOf("Calendar1").Choose(16, 11, 2026);
  auto& log = world.forms.Of("Navigation").RichTextOf("URLS");
  ASSERT_EQ(log.links.size(), 1U);
  log.link(WM_LBUTTONUP, log.links[0]);
  world.forms.Of("parentbrowse").events->Form_Resize();
}

TEST(FormFilesTest, HoldEveryControlThatTheProgramAsksFor) {
  fakes::WholeProgram world;
  // A first start, a block with its grant, and a closing ask for every control there is.
  world.loop.After(10, [&] {
    auto& window = world.forms.Of("frmFirstLog");
    window.TextBoxOf("txtPassword1").text = "s";
    window.TextBoxOf("txtPassword").text = "s";
    window.ButtonOf("SkinButton1").Click();
  });
  world.program.Run();
  world.PassStartUp();
  world.Type("http://www.porn.org");
  world.boxes.Expect("Allow http://www.porn.org for this session?", 276, "Session Lock", MsgBoxResult::Yes);
  world.loop.After(10, [&] {
    world.forms.Of("frmPassword").TextBoxOf("txtPassword").text = "s";
    world.forms.Of("frmPassword").ButtonOf("cmdOK").Click();
  });
  world.Click("MainBar", "Lock");
  // The parent's windows: the panel, the log of a day, a page of it.
  SaveItem(world.registry, "R_N", "1");
  world.Browser().ShowPage("http://www.otters.org/", "Otters");
  AskForThePanelsControls(world);
  // The menus, a skin, a tip, a window without bars.
  for (const char* entry : {"mnuskins", "mnuFileOpen", "mnuImages", "mnuTip"}) {
    world.Frame().MenusOf("Menu").Choose(entry);
  }
  world.loop.Advance(2000);
  world.forms.Of("frmTip").ButtonOf("cmdOK").Click();
  // The favourites.
  for (const auto& [entry, window, button] :
       std::vector<std::array<const char*, 3>>{{"wow_Click", "frmFav", "cmdclose"},
                                               {"mnuAddFavourites", "frmAddFavorite", "cmdCancel"},
                                               {"mnuAddFav", "frmOrganizeFavorites", "cmdclose"}}) {
    world.loop.After(
        10, [&world, name = window, press = button] { world.forms.Of(name).ButtonOf(press).Click(); });
    world.Frame().MenusOf("Menu").Choose(entry);
  }
  // An update whose package is missing.
  world.inet.version = "2.0.0";
  world.boxes.Expect("A more recent version of Kivandra exists. Would you like to update it now?", kMsgYesNo,
                     {}, MsgBoxResult::Yes);
  world.boxes.Expect("Error when loading update file\r404 Not Found");
  world.Frame().MenusOf("Menu").Choose("mnuUpdate");
  BannerFree::Create(world.forms, [](const FormEvents&) {})->Show("Support", "http://site.example/");
  world.Frame().Close(UnloadMode::ControlMenu);

  ASSERT_GT(world.forms.askedFor.size(), 50U);
  std::map<std::string, FormFile> files;
  for (const auto& [form, name, kind] : world.forms.askedFor) {
    if (files.count(form) == 0) {
      files[form] = ReadForm(form);
    }
    ASSERT_TRUE(files[form].count(name) == 1) << form << " has no " << name;
    EXPECT_TRUE(TypesOf(kind).count(files[form][name].type) == 1)
        << form << "." << name << " is a " << files[form][name].type;
  }
}

TEST(FormFilesTest, TimersTickAsTheFakesSay) {
  fakes::FakeWorld world;
  for (const auto& [path, data] : world.forms.timers) {
    const auto dot = path.find('.');
    FormFile form = ReadForm(path.substr(0, dot));
    const std::string name = path.substr(dot + 1);
    ASSERT_EQ(form[name].type, "KvTimer") << path;
    EXPECT_EQ(form[name].properties["interval"], std::to_string(data.interval)) << path;
    EXPECT_EQ(form[name].properties["enabled"] == "True", data.enabled) << path;
  }
}

TEST(FormFilesTest, TheToolTipsAreThereLetterByLetter) {
  const std::string address =
      "Besides a web address, kids can enter a question or a word in this text bar in English or Spanish for "
      "instant search results!!  ";
  EXPECT_EQ(ReadForm("frmMain")["TheAddress"].properties["tooltip-text"], address);
  FormFile page = ReadForm("frmBrowser");
  const auto tip = [&page](const char* control) { return page[control].properties["tooltip-text"]; };
  EXPECT_EQ(tip("cboAddress"), address);
  EXPECT_EQ(tip("SearchWeb"), "When clicked, a search of highlighted word(s) will be invoked immediately.");
  EXPECT_EQ(tip("btnGo"), "Click here to Tile all open browser panes");
  EXPECT_EQ(tip("btnsearch"), "Click here to Cascade all open browser panes");
}

TEST(FormFilesTest, TheRootBearsTheNameOfItsFile) {
  for (const auto& file : std::filesystem::directory_iterator(std::string(KV_SOURCE_DIR) + "/assets/forms")) {
    const std::string name = file.path().stem().string();
    EXPECT_EQ(ReadForm(name).count(name), 1U) << name;
  }
}

}  // namespace
}  // namespace kivandra
