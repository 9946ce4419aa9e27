// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <string>

#include "filter/gate.h"
#include "platform/form.h"
#include "platform/message_box.h"
#include "platform/navigation.h"
#include "platform/page_fetch.h"
#include "platform/registry_calls.h"
#include "platform/sound.h"

namespace kivandra {

/// What the gate asks of the frame. Every operation may throw PlatformError.
class GateFrame {
 public:
  virtual ~GateFrame() = default;

  /// The tool `Lock` of the band `MainBar`.
  virtual void SetLockEnabled(bool enabled) = 0;
  virtual void SetCaption(const std::string& caption) = 0;
  virtual void Logo_Animate() = 0;
  virtual void Logo_AnimateStop() = 0;
  /// Text of the frame's address box `TheAddress`.
  [[nodiscard]] virtual std::string TheAddressText() const = 0;
  /// Whether the timer `StartUp` runs: the first five seconds after the frame's load.
  [[nodiscard]] virtual bool StartUpEnabled() const = 0;
};

/// What the gate asks of the child window whose navigation it judges. Every operation may throw
/// PlatformError.
class GateWindow {
 public:
  virtual ~GateWindow() = default;

  /// Text of the window's own address box `cboAddress`.
  virtual void SetAddressText(const std::string& text) = 0;
  /// `Stop` of `brwWebBrowser`. Other navigations of the window that are held are dropped inside.
  virtual void StopBrowser() = 0;
  [[nodiscard]] virtual enum WindowState WindowState() const = 0;
  virtual void SetWindowState(enum WindowState state) = 0;
};

/// The gate as the windows see it: asks DecideNavigation's two halves and carries out the effects of the
/// verdict.
///
/// Invariant: a navigation is allowed by a passing verdict on its own address and by nothing else. One that
/// is dropped, whose window has gone, that an exception cuts off or that is still held when the gate ends is
/// refused. While a page is on its way the window lives on and other navigations, of this window and of
/// others, are judged.
class NavigationGate {
 public:
  /// All of them must outlive the gate.
  NavigationGate(GateFrame& frame, PageFetch& fetch, MessageBoxes& boxes, Sound& sound,
                 RegistryCalls& registry);
  NavigationGate(const NavigationGate&) = delete;
  NavigationGate& operator=(const NavigationGate&) = delete;
  ~NavigationGate();

  /// Judges the navigation and answers it, inside the call or, if its page must be seen, later from the event
  /// loop. Events run inside only while the box of a refused mail link stands. Mail links that come meanwhile
  /// wait for theirs, one box after the other, so that no page can pile up boxes.
  void BeforeNavigate2(std::shared_ptr<GateWindow> window, std::shared_ptr<Navigation> navigation);

  /// Number of navigations whose page is on its way.
  [[nodiscard]] std::size_t HeldNavigations() const { return held_.size(); }

 private:
  /// A navigation whose page is on its way. It keeps the navigation alive but not the window.
  struct Held {
    std::weak_ptr<GateWindow> window;
    std::shared_ptr<Navigation> navigation;
    std::unique_ptr<FetchTicket> ticket;
  };
  using HeldId = std::uint64_t;
  /// Refused mail links in the order of asking; the box of the first one stands.
  using MailLinks = std::deque<std::shared_ptr<Navigation>>;

  [[nodiscard]] AddressJudgement Judge(const std::string& url);
  void Hold(const std::shared_ptr<GateWindow>& window, const std::shared_ptr<Navigation>& navigation);
  void PageArrived(HeldId id, std::string page);
  void Conclude(GateVerdict verdict, GateWindow& window, Navigation& navigation);
  void RefuseMail(const std::shared_ptr<Navigation>& navigation);
  void ShowAddress(GateWindow& window, const std::string& url);
  void BlockSequence(GateWindow& window, Navigation& navigation);

  GateFrame& frame_;
  PageFetch& fetch_;
  MessageBoxes& boxes_;
  Sound& sound_;
  RegistryCalls& registry_;
  std::map<HeldId, Held> held_;
  HeldId lastId_ = 0;
  std::shared_ptr<MailLinks> mailLinks_ = std::make_shared<MailLinks>();  // the gate may end inside a box
};

}  // namespace kivandra
