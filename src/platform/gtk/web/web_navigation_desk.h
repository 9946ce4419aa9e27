// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <webkit/webkit.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/gtk/web/web_navigation.h"

namespace kivandra::gtk {

/// The questions of one view. Every load passes here: those that the program begins ask before the engine is
/// told anything, those that the engine reports are held at the engine until the judge has answered.
///
/// Invariant: a question of the engine is let through without being raised only if it is the first question
/// about the very load that was judged inside Navigate, GoBack, GoForward or Refresh, or if the document has
/// no address.
class NavigationDesk {
 public:
  struct Judge {
    /// Raises BeforeNavigate2.
    std::function<void(std::shared_ptr<Navigation>)> raise;
    /// Learns of the referrer that the engine will send with the question about `url`; empty once it is
    /// answered.
    std::function<void(const std::string& url, const std::string& referrer)> announceReferrer;
  };

  explicit NavigationDesk(Judge judge) : judge_(std::move(judge)) {}

  enum class LoadKind { Address, History, Reload };

  /// Raises `judgedUrl` and runs `load` when it is allowed; the engine's next question about `engineUrl`
  /// belongs to that load. An earlier load of the program that is still being judged is dropped.
  void AskForLoad(const std::string& judgedUrl, const std::string& engineUrl, LoadKind kind,
                  std::function<void()> load);

  /// Raises an address at which the page has arrived without a load; `refused` runs if it may not stay.
  void AskForArrival(const std::string& url, std::function<void(bool allowed)> answer);

  /// The engine's question about a navigation of the page or of a frame in it. Takes the decision over.
  void DecideNavigation(WebKitPolicyDecision* decision, WebKitNavigationAction* action);

  struct AllowedLoad {
    std::string url;  // in the engine's spelling
    LoadKind kind;
  };
  /// The load that was allowed, if the engine has still to ask about it.
  [[nodiscard]] const std::optional<AllowedLoad>& AwaitedLoad() const { return allowed_; }
  /// The engine will ask about this load, which was allowed, once more.
  void AwaitAgain(AllowedLoad load) { allowed_ = std::move(load); }
  /// The engine asks no more about the load that was allowed.
  void ForgetAllowedLoad() { allowed_.reset(); }
  /// Drops what the engine has asked; loads of the program that are still being judged stay.
  void DropEngineQuestions() { Drop(fromEngine_); }
  void DropAll();
  [[nodiscard]] bool Judging() const;

 private:
  using Held = std::vector<std::weak_ptr<HeldNavigation>>;
  static void Drop(Held& held);
  static void Remember(Held& held, const std::shared_ptr<HeldNavigation>& navigation);
  [[nodiscard]] bool TakeAllowedLoad(const std::string& url, WebKitNavigationAction* action);

  Judge judge_;
  std::optional<AllowedLoad> allowed_;
  Held fromEngine_;
  Held fromProgram_;
};

}  // namespace kivandra::gtk
