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

  explicit MenuWorld(Services services = Services::All);
  ~MenuWorld();

  /// The frame is up, the five unfiltered seconds have passed, the first child shows a page.
  void Start();
  /// As Start, but the child has been closed.
  void StartWithoutChild();

  fakes::FakeForm& Frame();
  fakes::FakeForm& Child(int number = 1);
  fakes::FakeWebBrowser& Browser(int number = 1);
  fakes::FakeWebBrowser& BannerControl();
  fakes::FakeCommonDialog& Dialog();
  /// A person chooses a menu entry.
  void Choose(const std::string& name);

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
  FrameServices Parts(Services services);
};

}  // namespace kivandra
