// SPDX-License-Identifier: GPL-3.0-or-later
#include "frame/menu_world.h"

namespace kivandra {

MenuWorld::MenuWorld(Services services) {
  ResetFilterValues();
  frame = std::make_unique<frmMain>(Parts(services));
  link.frame = frame.get();
  SkinFile = "/program/winaqua.skn";
  SaveItem(registry, "F_C", "1");
  SaveItem(registry, "FirstTime", "1");
}

MenuWorld::~MenuWorld() = default;

void MenuWorld::Start() {
  frame->Load();
  frame->SetVisible(true);
  loop.Advance(5000);
  Browser().ShowPage("http://first.example/", "First");
  journal.Clear();
}

void MenuWorld::StartWithoutChild() {
  Start();
  Child().Close(UnloadMode::ControlMenu);
  journal.Clear();
}

fakes::FakeForm& MenuWorld::Frame() { return forms.Of("frmMain"); }

fakes::FakeForm& MenuWorld::Child(int number) { return forms.Of("frmBrowser#" + std::to_string(number)); }

fakes::FakeWebBrowser& MenuWorld::Browser(int number) { return Child(number).BrowserOf("brwWebBrowser"); }

fakes::FakeWebBrowser& MenuWorld::BannerControl() { return Frame().BrowserOf("brwBanner"); }

fakes::FakeCommonDialog& MenuWorld::Dialog() { return Frame().DialogOf("CommonDialog1"); }

void MenuWorld::Choose(const std::string& name) { Frame().MenusOf("Menu").Choose(name); }

FrameServices MenuWorld::Parts(Services services) {
  FrameServices parts{
      forms,
      loop,
      boxes,
      registry,
      instance,
      session,
      sound,
      keyboard,
      shell,
      files,
      system,
      application,
      [this] {
        return frmBrowser::Create(
            {forms, gate, browserFrame, clipboard, registry, boxes, keyboard, pageObject, {}, {}});
      },
      {},
      {},
      {},
      {},
      {}};
  if (services == Services::All) {
    parts.CheckForUpdate = [this](bool quiet) {
      journal.Call(std::string("CheckForUpdate ") + (quiet ? "True" : "False"));
    };
    parts.showPassword = [this] { journal.Call("showPassword"); };
    parts.openFavourites = [this] { journal.Call("openFavourites"); };
    parts.addFavourite = [this](const std::string& url, const std::string& title) {
      journal.Call("addFavourite " + fakes::Quoted(url) + ", " + fakes::Quoted(title));
    };
    parts.organizeFavourites = [this] { journal.Call("organizeFavourites"); };
  }
  return parts;
}

}  // namespace kivandra
