// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "core/application_script.h"
#include "fakes/fake_keyboard_hook.h"
#include "fakes/fake_world.h"
#include "filter/filter_values.h"
#include "filter/gate_shell.h"
#include "frame/frm_main.h"
#include "program/forwarders.h"

namespace kivandra {

/// The frame with its child windows and the gate; what else the program would join to it only writes to the
/// journal.
struct MenuWorld : fakes::FakeWorld {
  enum class Services { All, None };

  explicit MenuWorld(Services services = Services::All) {
    ResetFilterValues();
    frame = std::make_unique<frmMain>(Parts(services));
    link.frame = frame.get();
    SkinFile = "/program/winaqua.skn";
    SaveItem(registry, "F_C", "1");
    SaveItem(registry, "FirstTime", "1");
  }

  /// The frame is up, the five unfiltered seconds have passed, the first child shows a page.
  void Start() {
    frame->Load();
    frame->SetVisible(true);
    loop.Advance(5000);
    Browser().ShowPage("http://first.example/", "First");
    journal.Clear();
  }
  /// As Start, but the child has been closed.
  void StartWithoutChild() {
    Start();
    Child().Close(UnloadMode::ControlMenu);
    journal.Clear();
  }

  fakes::FakeForm& Frame() { return forms.Of("frmMain"); }
  fakes::FakeForm& Child(int number = 1) { return forms.Of("frmBrowser#" + std::to_string(number)); }
  fakes::FakeWebBrowser& Browser(int number = 1) { return Child(number).BrowserOf("brwWebBrowser"); }
  fakes::FakeWebBrowser& BannerControl() { return Frame().BrowserOf("brwBanner"); }
  fakes::FakeCommonDialog& Dialog() { return Frame().DialogOf("CommonDialog1"); }
  /// A person chooses a menu entry.
  void Choose(const std::string& name) { Frame().MenusOf("Menu").Choose(name); }

  fakes::FakeKeyboardHook keyboard{journal};
  FrameLink link;
  GateFrameForwarder gateFrame{link};
  BrowserFrameForwarder browserFrame{link};
  ApplicationWindowsForwarder windows{link};
  NavigationGate gate{gateFrame, inet1, boxes, sound, registry};
  Application application{{forms, loop, boxes, registry, system, windows}};
  ApplicationScript pageObject{application};
  std::unique_ptr<frmMain> frame;

 private:
  FrameServices Parts(Services services) {
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
};

}  // namespace kivandra
