// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <webkit/webkit.h>

#include <memory>
#include <string>

#include "platform/gtk/web/web_signals.h"
#include "platform/script_object.h"

namespace kivandra::gtk {

/// Offers one object of the program to the scripts of a page, in its top frame alone.
///
/// The page's name for the object is a constant, frozen property of its window; its methods post messages
/// that carry a random word, which stays inside the closure of the injected script. The engine's message
/// channel itself can be reached from every frame, so a message without that word is refused.
class ScriptObjectHost : public std::enable_shared_from_this<ScriptObjectHost> {
 public:
  ScriptObjectHost(WebKitUserContentManager* manager, WebKitWebView* view);
  ~ScriptObjectHost();
  ScriptObjectHost(const ScriptObjectHost&) = delete;
  ScriptObjectHost& operator=(const ScriptObjectHost&) = delete;

  /// To be called once, before the first page.
  void Start();
  /// Offers `object` to the current and to every later page; null takes it away.
  void Set(const std::string& name, ScriptObject* object);
  /// Answers nothing more.
  void Cut();

 private:
  gboolean OnMessage(JSCValue* message, WebKitScriptMessageReply* reply);
  void Inject();
  [[nodiscard]] std::string Description() const;

  WebKitUserContentManager* manager_;  // not owned
  WebKitWebView* view_;                // not owned
  ScriptObject* object_ = nullptr;
  std::string name_;
  const std::string word_;       // what a message must carry
  const std::string wakeEvent_;  // name of the event that brings the object to a page that is there already
  WebKitUserScript* script_ = nullptr;
  SignalConnections signals_;
};

}  // namespace kivandra::gtk
