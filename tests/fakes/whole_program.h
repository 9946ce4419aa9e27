// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

#include "fakes/fake_keyboard_hook.h"
#include "fakes/fake_world.h"
#include "filter/filter_values.h"
#include "program/program.h"

namespace kivandra::fakes {

/// The whole program over fakes.
struct WholeProgram : FakeWorld {
  WholeProgram() { ResetFilterValues(); }

  FakeKeyboardHook keyboard{journal};
  Program program{{forms, loop, boxes, registry, instance, system, files, sound, inet1, clipboard, session,
                   keyboard, shell, inet, defaultApplication}};

  /// A start like any but the first: the password is set, the filter is on, the first page has greeted.
  void StartAsUsual() {
    SaveItem(registry, "T_PW", "Secret");
    SaveItem(registry, "F_C", "1");
    SaveItem(registry, "FirstTime", "1");
    program.Run();
  }
  /// Lets the five unfiltered seconds pass, and all that is due in them.
  void PassStartUp() { loop.Advance(5000); }

  FakeForm& Frame() { return forms.Of("frmMain"); }
  FakeForm& Child(int number = 1) { return forms.Of("frmBrowser#" + std::to_string(number)); }
  FakeWebBrowser& Browser(int number = 1) { return Child(number).BrowserOf("brwWebBrowser"); }
  FakeBarControl::FakeTool& ToolOf(const std::string& band, const std::string& name) {
    return dynamic_cast<FakeBarControl::FakeTool&>(Frame().BarsOf("BonusBar").Bands(band).Tools(name));
  }
  void Click(const std::string& band, const std::string& name) {
    Frame().BarsOf("BonusBar").toolClick(ToolOf(band, name));
  }
  /// The parent takes the Admin command and gives the password.
  void OpenPanel(const std::string& password = {}) {
    Frame().MenusOf("Menu").Choose("mnuAdmin");
    forms.Of("frmPassword").TextBoxOf("txtPassword").text = password.empty() ? Setting("T_PW") : password;
    forms.Of("frmPassword").ButtonOf("cmdOK").Click();
  }
  /// Types into a child's address box and presses Enter.
  void Type(const std::string& text, int number = 1) {
    auto& box = Child(number).ComboOf("cboAddress");
    box.text = text;
    box.Press(kKeyReturn);
  }
};

}  // namespace kivandra::fakes
