// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <string>

#include "platform/event_loop.h"
#include "platform/file_calls.h"
#include "platform/form.h"
#include "platform/inet.h"
#include "platform/message_box.h"
#include "platform/registry_calls.h"
#include "platform/shell_calls.h"
#include "platform/sound.h"
#include "platform/system_info.h"

namespace kivandra {

/// What the update check asks of the windows above it.
class UpdateWindows {
 public:
  virtual ~UpdateWindows() = default;

  /// Whether the frame is there and not about to close.
  [[nodiscard]] virtual bool FrameStands() const = 0;
  virtual void SetFrameCaption(const std::string& caption) = 0;
  /// Throws PlatformError if there is no child.
  virtual void UnloadActiveChild() = 0;
};

/// Compares the program's version with the one on the product's site, and offers and fetches the update.
class UpdateCheck {
 public:
  struct Services {
    Forms& forms;
    EventLoop& events;
    MessageBoxes& boxes;
    FileCalls& files;
    ShellCalls& shell;
    Sound& sound;
    RegistryCalls& registry;
    const SystemInfo& system;
    UpdateWindows& windows;
  };
  explicit UpdateCheck(const Services& services) : services_(services) {}

  /// With `quiet` an equal version is not told. Any failure ends it with one box. Events run inside; while a
  /// check runs, another does nothing. If the frame is closed meanwhile, it ends without a word. After an
  /// update it ends the program at once.
  void CheckForUpdate(Inet& inet1, bool quiet);

 private:
  void Check(Inet& inet1, bool quiet);
  void Update(Inet& inet1);
  void ShowNotice();
  /// Ends the sign of progress on a notice that a failed download leaves open.
  void StillNotice();
  [[nodiscard]] std::string Fetch(Inet& inet1, const char* path, const InetLimits& limits) const;

  Services services_;
  std::shared_ptr<Form> Updateform_;
  bool running_ = false;
};

}  // namespace kivandra
