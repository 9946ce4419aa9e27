// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <string>

#include "panel/host_lists.h"
#include "platform/combo_box.h"
#include "platform/form.h"
#include "platform/message_box.h"
#include "platform/registry_calls.h"

namespace kivandra {

/// The two boxes of the panel in which the parent edits the lists, all by keyboard: Enter adds the typed
/// text, Delete removes it. A box can be written in once its button has been pressed. The handlers pass over
/// what fails; message boxes run events, and the panel may close inside.
class HostListEditor {
 public:
  HostListEditor(MessageBoxes& boxes, RegistryCalls& registry) : boxes_(boxes), registry_(registry) {}

  /// Joins the controls of a freshly loaded panel.
  void Wire(const std::shared_ptr<Form>& form);
  /// Fills both boxes anew from the settings tree; what was typed in them goes.
  void RefreshDomainLists(Form& form);

 private:
  bool Combo1_KeyDown(const std::shared_ptr<Form>& form, HostList list, int keyCode);
  void Add(Form& form, HostList list, const std::string& text);

  MessageBoxes& boxes_;
  RegistryCalls& registry_;
};

}  // namespace kivandra
