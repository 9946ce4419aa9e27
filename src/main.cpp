// SPDX-License-Identifier: GPL-3.0-or-later
// Picks the platform's adapters and hands them to the program.
#include <csignal>
#include <cstdio>
#include <string>

#include "core/application.h"
#include "core/page_images.h"
#include "hosts.h"
#include "platform/gtk/forms/form_loader.h"
#include "platform/gtk/gtk_clipboard.h"
#include "platform/gtk/gtk_message_boxes.h"
#include "platform/gtk/gtk_start.h"
#include "platform/gtk/keyboard_hook.h"
#include "platform/gtk/main_events.h"
#include "platform/gtk/shell/shell_calls.h"
#include "platform/gtk/web/web_engine.h"
#include "platform/linux/automation_server.h"
#include "platform/linux/default_application.h"
#include "platform/linux/file_calls.h"
#include "platform/linux/inet.h"
#include "platform/linux/instance_calls.h"
#include "platform/linux/page_fetch.h"
#include "platform/linux/session_bus.h"
#include "platform/linux/settings_tree.h"
#include "platform/linux/site_server.h"
#include "platform/linux/sound.h"
#include "platform/linux/system_info.h"
#include "platform/platform_error.h"
#include "program/program.h"

namespace {

using namespace kivandra;

/// The engine's own number, for the test of its age.
constexpr DllVersionInfo kEngineVersion{605, 1};

/// Everything that the program stands on, made in this order and taken down in the other.
struct Machine {
  explicit Machine(const linux_impl::LinuxSystemInfo& systemInfo) : system(systemInfo) {}

  /// Shows pictures in pages or not, from now on and at later starts; one that can't be stored holds for now.
  void ShowImages(bool shown) {
    engine.SetImagesShown(shown);
    StoreImagesShown(registry, shown);
  }

  const linux_impl::LinuxSystemInfo& system;
  gtk::MainEvents events;
  gtk::WebEngine engine{system.ProgramDirectory() + "/pages"};
  gtk::FormLoader forms{system.ProgramDirectory(), engine};
  gtk::GtkMessageBoxes boxes{forms};
  gtk::GtkClipboard clipboard;
  gtk::GtkKeyboardHook keyboard;
  linux_impl::SettingsTree registry{system.GetWindowsDirectoryA() + "/registry.db"};
  gtk::GtkShellCalls shell{
      forms, {[this] { return engine.ImagesShown(); }, [this](bool shown) { ShowImages(shown); }}};
  linux_impl::LinuxInstanceCalls instance;
  linux_impl::LinuxFileCalls files;
  linux_impl::GstSound sound;
  linux_impl::SoupPageFetch fetch{engine.Session()};
  linux_impl::SoupInet inet;
  linux_impl::LinuxDefaultApplication defaultApplication{system.ProgramDirectory()};
  linux_impl::SiteServer site{system.ProgramDirectory() + "/site",
                              {std::string(hosts::kProductDomain), std::string(hosts::kForwarderDomain)}};
};

/// Brings the frame to the front.
void Present(const Forms& forms) {
  for (const auto& form : forms.Loaded()) {
    if (form->Name() == "frmMain") {
      form->BringToFront();
    }
  }
}

/// Runs the program until its last window is gone.
void Run(Machine& machine) {
  machine.system.SetUp();
  machine.engine.SetImagesShown(StoredImagesShown(machine.registry));
  const std::string siteProblem = machine.site.Start(hosts::kSitePort);
  machine.engine.SetHome([&machine] { return HomePage(machine.registry); });
  Program program({machine.forms, machine.events, machine.boxes, machine.registry, machine.instance,
                   machine.system, machine.files, machine.sound, machine.fetch, machine.clipboard,
                   machine.engine.Session(), machine.keyboard, machine.shell, machine.inet,
                   machine.defaultApplication});
  const linux_impl::AutomationServer automation(
      {[&program] { return program.AutomationObject(); }, [&machine] { Present(machine.forms); }});
  program.Run();
  // A second start finds the port taken by the first one, and must end without a word.
  if (!siteProblem.empty() && !machine.forms.Loaded().empty()) {
    std::fprintf(stderr, "kivandra: %s\n", siteProblem.c_str());
  }
  while (!machine.forms.Loaded().empty()) {
    machine.events.WaitForEvents();
  }
}

}  // namespace

int main() {
  // A write beyond the allowed size of a file then fails like one on a full disk, and ends nothing.
  std::signal(SIGXFSZ, SIG_IGN);
  gtk::PrepareEngineEnvironment();
  linux_impl::SettleSessionBus();
  const linux_impl::LinuxSystemInfo system(kEngineVersion);
  if (!gtk::StartToolkit(system.ProgramDirectory())) {
    std::fputs("kivandra: there is no display to open a window on.\n", stderr);
    return 1;
  }
  Machine machine(system);
  // Without its sandbox the engine would end the process at the first page, without a word.
  if (const std::string problem = gtk::SandboxProblem(); !problem.empty()) {
    machine.boxes.MsgBox(problem, kMsgCritical, {});
    return 1;
  }
  try {
    Run(machine);
  } catch (const PlatformError& error) {
    machine.boxes.MsgBox(error.what(), kMsgCritical, {});
    return 1;
  }
  return 0;
}
