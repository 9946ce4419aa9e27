// SPDX-License-Identifier: GPL-3.0-or-later
#include "program/program.h"

#include "core/application_script.h"
#include "core/frm_password.h"
#include "core/sub_main.h"
#include "filter/gate_shell.h"
#include "filter/navigation_log.h"
#include "frame/frm_main.h"
#include "panel/frm_options.h"
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
        options({platform.forms,
                 platform.boxes,
                 platform.registry,
                 platform.files,
                 platform.system,
                 panelFrame,
                 /* the default browser, and the blocking of two others */ {},
                 {},
                 {}}),
        password({platform.forms, platform.boxes, platform.registry, platform.sound, platform.system, grant,
                  [this] { options.Show(); }}),
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
            /* the update check */ {},
            [this] { password.Show(); },
            /* the favourites: open, add, organize */ {},
            {},
            {}};
  }

  Platform platform;
  FrameLink link;
  GateFrameForwarder gateFrame{link};
  BrowserFrameForwarder browserFrame{link};
  ApplicationWindowsForwarder windows{link};
  PanelFrameForwarder panelFrame{link};
  SessionGrantForwarder grant;
  NavigationGate gate;
  Application application;
  Application frameApplication;
  ApplicationScript pageObject;
  frmOptions options;
  frmPassword password;
  frmMain frame;
};

Program::Program(const Platform& platform) : parts_(std::make_unique<Parts>(platform)) {}

Program::~Program() = default;

void Program::Run() {
  SubMain({parts_->platform.files, parts_->platform.instance, parts_->platform.system, parts_->grant,
           [this] { parts_->application.SetVisible(true); }});
}

}  // namespace kivandra
