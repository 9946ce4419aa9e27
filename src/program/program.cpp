// SPDX-License-Identifier: GPL-3.0-or-later
#include "program/program.h"

#include "core/application_script.h"
#include "core/frm_password.h"
#include "core/sub_main.h"
#include "core/update_check.h"
#include "favourites/frm_add_favorite.h"
#include "favourites/frm_fav.h"
#include "favourites/frm_organize_favorites.h"
#include "filter/gate_shell.h"
#include "filter/navigation_log.h"
#include "frame/frm_main.h"
#include "panel/default_browser.h"
#include "panel/frm_options.h"
#include "panel/other_browsers.h"
#include "program/forwarders.h"

namespace kivandra {

/// Every object of the program, in the order of making.
struct Program::Parts {
  explicit Parts(const Platform& machine)
      : platform(machine),
        gate(gateFrame, platform.inet1, platform.boxes, platform.sound, platform.registry),
        application(ApplicationServices()),
        frameApplication(ApplicationServices()),
        pageObject(application),
        options({platform.forms, platform.boxes, platform.registry, platform.files, platform.system,
                 panelFrame,
                 [this] {
                   SetAsDefaultBrowser(
                       {platform.registry, platform.boxes, platform.system, platform.defaultApplication});
                 },
                 [this] { PreventInternetExplorer(OtherBrowsers()); },
                 [this] { PreventNetscape(OtherBrowsers()); }}),
        password({platform.forms, platform.boxes, platform.registry, platform.sound, platform.system, grant,
                  [this] { options.Show(); }}),
        updateCheck({platform.forms, platform.events, platform.boxes, platform.files, platform.shell,
                     platform.sound, platform.registry, platform.system, updateWindows}),
        frame(FrameParts()) {
    link.frame = &frame;
  }

  [[nodiscard]] Application::Services ApplicationServices() {
    return {platform.forms, platform.events, platform.boxes, platform.registry, platform.system, windows};
  }

  [[nodiscard]] BrowserServices ChildServices() {
    return {platform.forms,
            gate,
            browserFrame,
            platform.clipboard,
            platform.registry,
            platform.boxes,
            platform.keyboard,
            pageObject,
            [this] { password.ShowModal(); },
            [this](frmBrowser& window) {
              LogVisit(platform.registry, platform.files, window.brwWebBrowser(), window.LogURL);
            }};
  }

  [[nodiscard]] FrameServices FrameParts() {
    return {platform.forms,
            platform.events,
            platform.boxes,
            platform.registry,
            platform.instance,
            platform.session,
            platform.sound,
            platform.keyboard,
            platform.shell,
            platform.files,
            platform.system,
            frameApplication,
            [this] { return frmBrowser::Create(ChildServices()); },
            [this](bool quiet) { updateCheck.CheckForUpdate(platform.inet, quiet); },
            [this] { password.Show(); },
            [this] {
              OpenFavorites({platform.forms, platform.events, platform.files, platform.system},
                            [this](const std::string& url) { frame.LoadHTML(url); });
            },
            [this](const std::string& url, const std::string& title) {
              AddFavorite({platform.forms, platform.boxes, platform.files, platform.system}, url, title);
            },
            [this] {
              OrganizeFavorites({platform.forms, platform.boxes, platform.files, platform.system});
            }};
  }

  [[nodiscard]] OtherBrowserServices OtherBrowsers() {
    return {platform.registry, platform.files, platform.system.ProgramFileName()};
  }

  Platform platform;
  FrameLink link;
  GateFrameForwarder gateFrame{link};
  BrowserFrameForwarder browserFrame{link};
  ApplicationWindowsForwarder windows{link};
  PanelFrameForwarder panelFrame{link};
  UpdateWindowsForwarder updateWindows{link};
  SessionGrantForwarder grant;
  NavigationGate gate;
  Application application;
  Application frameApplication;
  ApplicationScript pageObject;
  frmOptions options;
  frmPassword password;
  UpdateCheck updateCheck;
  frmMain frame;
};

Program::Program(const Platform& platform) : parts_(std::make_unique<Parts>(platform)) {}

Program::~Program() = default;

void Program::Run() {
  SubMain({parts_->platform.files, parts_->platform.instance, parts_->platform.system, parts_->grant,
           [this] { parts_->application.SetVisible(true); }});
}

ScriptObject* Program::AutomationObject() {
  return parts_->frame.Stands() && !parts_->frame.StartUpEnabled() ? &parts_->pageObject : nullptr;
}

}  // namespace kivandra
