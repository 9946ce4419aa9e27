// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gio/gio.h>

#include <string>

namespace kivandra::linux_impl {

/// The session bus and the running program's automation object on it, as another program sees them.
class AutomationClient {
 public:
  /// What the object answered.
  enum class Answer { kTaken, kNotThere, kNoWindow, kRefused };

  /// Connects; events run inside, ten seconds at the most.
  AutomationClient();
  ~AutomationClient();
  AutomationClient(const AutomationClient&) = delete;
  AutomationClient& operator=(const AutomationClient&) = delete;

  /// Whether there is a bus.
  [[nodiscard]] bool There() const { return connection_ != nullptr; }
  [[nodiscard]] GDBusConnection* Connection() const { return connection_; }
  /// In words, why the object refused its last call.
  [[nodiscard]] const std::string& Words() const { return words_; }

  /// Shows the frame if it is hidden, opens the address if it is not empty, and brings the frame to the
  /// front. Waits for the answers.
  Answer Open(const std::string& address);

 private:
  Answer Navigate(const std::string& address);
  Answer ReadVisible(bool& visible);
  Answer Call(const char* interface, const char* method, GVariant* arguments, GVariant** reply = nullptr);
  Answer Refusal(GError* error);

  GDBusConnection* connection_ = nullptr;
  std::string words_;
};

}  // namespace kivandra::linux_impl
