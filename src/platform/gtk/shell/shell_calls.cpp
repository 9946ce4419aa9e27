// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gtk/shell/shell_calls.h"

#include <array>
#include <cstdlib>
#include <string_view>
#include <utility>

#include "platform/gtk/forms/form_loader.h"
#include "platform/gtk/guard.h"
#include "platform/gtk/shell/desktop_programs.h"
#include "platform/gtk/shell/program_file.h"
#include "platform/gtk/web/find_bar.h"
#include "platform/platform_error.h"

namespace kivandra::gtk {
namespace {

constexpr std::string_view kOptions = "rundll32.exe shell32.dll,Control_RunDLL inetcpl.cpl,,";
constexpr const char* kUpdater = "/update.exe";
constexpr long kFileNotFound = 53;

struct KnownProgram {
  std::string_view commandLine;
  DesktopProgram program;
};
constexpr std::array kPrograms{
    KnownProgram{"notepad.exe", DesktopProgram::Notepad},
    KnownProgram{"Wordpad", DesktopProgram::Wordpad},
    KnownProgram{"calc.exe", DesktopProgram::Calculator},
    KnownProgram{"sndvol32.exe", DesktopProgram::Volume},
};

}  // namespace

GtkShellCalls::GtkShellCalls(const FormLoader& forms, PictureChoice pictures)
    : forms_(forms), pictures_(std::move(pictures)) {}

GtkShellCalls::~GtkShellCalls() = default;

void GtkShellCalls::Shell(const std::string& commandLine, int /*windowStyle*/) {
  if (commandLine.starts_with(kOptions)) {
    OpenOptions(std::atoi(commandLine.c_str() + kOptions.size()));
    return;
  }
  for (const KnownProgram& known : kPrograms) {
    if (commandLine == known.commandLine) {
      // A desktop without such a program is no failure: nothing happens and nothing is said.
      if (const auto program = FindDesktopProgram(known.program)) {
        StartDesktopProgram(program);
      }
      return;
    }
  }
  if (commandLine == forms_.AssetsDirectory() + kUpdater) {
    StartProgramFile(commandLine);
    return;
  }
  throw PlatformError(kFileNotFound, "There is no program for " + commandLine);
}

void GtkShellCalls::OpenOptions(int page) {
  if (options_) {
    options_->ShowPage(page);
    return;
  }
  options_ = std::make_shared<InternetOptions>(forms_.ActiveWindow(), page, pictures_, [this] {
    // It is inside one of its own handlers.
    Glib::signal_idle().connect_once([gone = std::exchange(options_, nullptr)] { static_cast<void>(gone); });
  });
}

void GtkShellCalls::SendKeys(const std::string& keys) {
  for (const SentKey& key : ReadSentKeys(keys)) {
    if (const auto options = options_) {
      options->Send(key);
    } else if (key == SentKey{"f", true, false, false}) {
      if (Gtk::Window* window = forms_.ActiveWindow()) {
        Gtk::Widget* focus = window->get_focus();
        ShowFindBar(focus != nullptr ? focus->gobj() : GTK_WIDGET(window->gobj()));
      }
    }
  }
}

}  // namespace kivandra::gtk
