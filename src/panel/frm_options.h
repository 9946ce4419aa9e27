// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "panel/host_list_editor.h"
#include "panel/navigation_viewer.h"
#include "panel/options_help.h"
#include "panel/panel_frame.h"
#include "platform/file_calls.h"
#include "platform/form.h"
#include "platform/message_box.h"
#include "platform/registry_calls.h"
#include "platform/system_info.h"

namespace kivandra {

/// The parent's panel: every switch of the filter, the home page, the password, the two lists, the calendar
/// of the log, and help. It asks nothing: what leads here asks for the password. A box is stored the moment
/// it is clicked; the home page alone waits for its button.
///
/// Every handler goes on with its next step after a step that fails, and nobody is told. Message boxes run
/// events, and the panel may close inside.
class frmOptions : public FormEvents {
 public:
  struct Services {
    Forms& forms;
    MessageBoxes& boxes;
    RegistryCalls& registry;
    FileCalls& files;
    const SystemInfo& system;
    PanelFrame& frame;
    std::function<void()> DB;                ///< makes this the default browser; may be empty
    std::function<void()> Prevent_IE;        ///< keeps that browser from starting, or lets it; may be empty
    std::function<void()> Prevent_Netscape;  ///< the same for the other one; may be empty
  };
  explicit frmOptions(Services services);
  ~frmOptions() override;
  frmOptions(const frmOptions&) = delete;
  frmOptions& operator=(const frmOptions&) = delete;

  /// Shows the panel, in front; one that is open already stays as it is. Throws PlatformError if it can't be
  /// loaded.
  void Show();

  void Form_Unload() override;

 private:
  void Form_Load();
  void Wire();
  void ApplySkin(Form& form);
  void LoadBoxes(Form& form);
  void CheckBox_Click(const char* box, const char* setting, const std::function<void()>& then);
  void Skinbutton1_Click();
  void Command1_Click();
  bool NewPassword_KeyDown(int index, int keyCode);
  void NewPasswordButton_Click();
  void Calendar1_Click();
  void cmdCancel_Click();

  Services services_;
  HostListEditor lists_;
  OptionsHelp help_;
  std::shared_ptr<Form> form_;
  /// The load sets the boxes, which clicks them; nothing must be written then.
  bool PanelLoading_ = false;
  std::vector<std::unique_ptr<NavigationViewer>> viewers_;  // a link's window outlives its viewer
};

}  // namespace kivandra
