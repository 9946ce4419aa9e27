// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>

#include "platform/clipboard.h"
#include "platform/default_application.h"
#include "platform/event_loop.h"
#include "platform/file_calls.h"
#include "platform/form.h"
#include "platform/inet.h"
#include "platform/instance_calls.h"
#include "platform/internet_session.h"
#include "platform/keyboard_hook.h"
#include "platform/message_box.h"
#include "platform/page_fetch.h"
#include "platform/registry_calls.h"
#include "platform/script_object.h"
#include "platform/shell_calls.h"
#include "platform/sound.h"
#include "platform/system_info.h"

namespace kivandra {

/// Everything that the program needs of the machine. The owner keeps them alive longer than the Program.
struct Platform {
  Forms& forms;
  EventLoop& events;
  MessageBoxes& boxes;
  RegistryCalls& registry;
  InstanceCalls& instance;
  const SystemInfo& system;
  FileCalls& files;
  Sound& sound;
  PageFetch& inet1;
  Clipboard& clipboard;
  InternetSession& session;
  KeyboardHook& keyboard;
  ShellCalls& shell;
  Inet& inet;
  DefaultApplication& defaultApplication;
};

/// The whole program: makes every object once and joins them.
class Program {
 public:
  explicit Program(const Platform& platform);
  ~Program();
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;

  /// The entry. Returns when the frame is up, or at once in a later instance; the caller then runs events for
  /// as long as a window is loaded.
  void Run();

  /// The automation object for other programs; null until the frame is up and its unfiltered first seconds
  /// are over, so that whatever they ask for is judged.
  [[nodiscard]] ScriptObject* AutomationObject();

 private:
  struct Parts;
  std::unique_ptr<Parts> parts_;
};

}  // namespace kivandra
