// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include "fakes/fake_keyboard_hook.h"
#include "fakes/fake_world.h"
#include "filter/filter_values.h"
#include "program/program.h"

namespace kivandra::fakes {

/// The whole program over fakes.
struct WholeProgram : FakeWorld {
  WholeProgram();
  ~WholeProgram();

  FakeKeyboardHook keyboard{journal};
  Program program{{forms, loop, boxes, registry, instance, system, files, sound, inet1, clipboard, session,
                   keyboard, shell, inet, defaultApplication}};

  /// A start like any but the first: the password is set, the filter is on, the first page has greeted.
  void StartAsUsual();
  /// Lets the five unfiltered seconds pass, and all that is due in them.
  void PassStartUp();

  FakeForm& Frame();
  FakeForm& Child(int number = 1);
  FakeWebBrowser& Browser(int number = 1);
  FakeBarControl::FakeTool& ToolOf(const std::string& band, const std::string& name);
  void Click(const std::string& band, const std::string& name);
  /// The parent takes the Admin command and gives the password.
  void OpenPanel(const std::string& password = {});
  /// Types into a child's address box and presses Enter.
  void Type(const std::string& text, int number = 1);
};

}  // namespace kivandra::fakes
