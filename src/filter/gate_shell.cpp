// SPDX-License-Identifier: GPL-3.0-or-later
#include "filter/gate_shell.h"

#include <utility>

#include "core/settings.h"
#include "filter/filter_values.h"
#include "support/attempt.h"

namespace kivandra {

namespace {

constexpr const char* kProductName = "Kivandra";
constexpr const char* kMailRefused = "Sorry, Mail has been dis-abled";
constexpr const char* kBlockCaption =
    "Possible Adult Content Has Been Detected.  Page will not be displayed.";
constexpr int kBeepsOfABlock = 30;

/// Refuses the navigation at the end of the scope if it is then neither answered nor handed on: what breaks
/// off the judging refuses.
class AnswerGuard {
 public:
  explicit AnswerGuard(Navigation& navigation) : navigation_(&navigation) {}
  AnswerGuard(const AnswerGuard&) = delete;
  AnswerGuard& operator=(const AnswerGuard&) = delete;
  ~AnswerGuard() {
    if (navigation_ != nullptr) {
      navigation_->Refuse();  // does nothing to one that is answered
    }
  }
  void HandedOn() { navigation_ = nullptr; }

 private:
  Navigation* navigation_;
};

void RefuseAll(std::deque<std::shared_ptr<Navigation>>& navigations) {
  for (const auto& navigation : std::exchange(navigations, {})) {
    navigation->Refuse();
  }
}

/// Refuses at the end of the scope what then still waits in the list.
class RefusedAtTheEnd {
 public:
  explicit RefusedAtTheEnd(std::deque<std::shared_ptr<Navigation>>& navigations)
      : navigations_(navigations) {}
  RefusedAtTheEnd(const RefusedAtTheEnd&) = delete;
  RefusedAtTheEnd& operator=(const RefusedAtTheEnd&) = delete;
  ~RefusedAtTheEnd() { RefuseAll(navigations_); }

 private:
  std::deque<std::shared_ptr<Navigation>>& navigations_;
};

}  // namespace

NavigationGate::NavigationGate(GateFrame& frame, PageFetch& fetch, MessageBoxes& boxes, Sound& sound,
                               RegistryCalls& registry)
    : frame_(frame), fetch_(fetch), boxes_(boxes), sound_(sound), registry_(registry) {}

NavigationGate::~NavigationGate() {
  for (auto& [id, held] : held_) {
    held.navigation->Refuse();
  }
  RefuseAll(*mailLinks_);
}

// Both are copies, so that they outlive whatever their owners do while the gate asks around.
// NOLINTBEGIN(performance-unnecessary-value-param)
void NavigationGate::BeforeNavigate2(std::shared_ptr<GateWindow> window,
                                     std::shared_ptr<Navigation> navigation) {
  // NOLINTEND(performance-unnecessary-value-param)
  AnswerGuard guard(*navigation);

  // Entry effects, on every run and before any test.
  attempt([&] { frame_.SetLockEnabled(false); });
  SessionAllowPending = false;

  const AddressJudgement address = Judge(navigation->Url());

  // Both come at their rules' places: before anything that takes time, and only if the run came so far.
  if (address.rule > kCaptionRule) {
    attempt([&] { frame_.SetCaption(kProductName); });
  }
  if (address.rule >= kLogoRule) {
    attempt([&] { frame_.Logo_Animate(); });
  }

  if (!address.verdict) {
    Hold(window, navigation);
    guard.HandedOn();
  } else if (*address.verdict == GateVerdict::RefuseMail) {
    RefuseMail(navigation);
    guard.HandedOn();
  } else {
    Conclude(*address.verdict, *window, *navigation);
  }
}

AddressJudgement NavigationGate::Judge(const std::string& url) {
  // What can't be read counts as the answer that opens nothing: an empty box, a timer that does not run, and
  // a filter that is on. Of mail alone it counts as not switched off, since no failure may refuse a
  // navigation by itself.
  std::string frameAddressText;
  bool startupTimerRunning = false;
  bool mailDisabled = false;
  bool filterEnabled = true;
  attempt([&] { frameAddressText = frame_.TheAddressText(); });
  attempt([&] { startupTimerRunning = frame_.StartUpEnabled(); });
  attempt([&] { mailDisabled = Val(TextOf(ReadItem(registry_, "D_EM"))) == 1; });
  attempt([&] { filterEnabled = Val(TextOf(ReadItem(registry_, "F_C"))) != 0; });
  return JudgeAddress(url, frameAddressText, startupTimerRunning, BackBypass, mailDisabled, filterEnabled,
                      AllowedDomains, BadWords);
}

void NavigationGate::Hold(const std::shared_ptr<GateWindow>& window,
                          const std::shared_ptr<Navigation>& navigation) {
  const HeldId id = ++lastId_;
  std::unique_ptr<FetchTicket> ticket;
  const bool begun = attempt([&] {
    ticket = fetch_.FetchPage(navigation->Url(),
                              [this, id](std::string page) { PageArrived(id, std::move(page)); });
  });
  if (!begun) {
    // A fetch that fails is an empty page.
    Conclude(JudgePage({}, BadWords), *window, *navigation);
    return;
  }
  held_.emplace(id, Held{window, navigation, std::move(ticket)});
  navigation->OnDropped([this, id] { held_.erase(id); });
}

void NavigationGate::PageArrived(HeldId id, std::string page) {
  // Out of the list first: the effects below may drop other navigations.
  const auto held = held_.extract(id);
  if (held.empty()) {
    return;
  }
  const std::shared_ptr<Navigation> navigation = held.mapped().navigation;
  AnswerGuard guard(*navigation);
  const std::shared_ptr<GateWindow> window = held.mapped().window.lock();
  if (window == nullptr || !navigation->Pending()) {
    return;
  }
  // The words as they are at this moment, since the walk through the page begins here: a word that the parent
  // added while the page was on its way counts. What the rules on the address read was fixed when they ran.
  const GateVerdict verdict = JudgePage(page, BadWords);
  page = std::string();  // it may be large, and nothing below needs it
  Conclude(verdict, *window, *navigation);
}

void NavigationGate::Conclude(GateVerdict verdict, GateWindow& window, Navigation& navigation) {
  switch (verdict) {
    case GateVerdict::PassEarly:
    case GateVerdict::PassAllowed:
    case GateVerdict::PassSearchHome:
      navigation.Allow();
      return;
    case GateVerdict::PassUnfiltered:
    case GateVerdict::PassScanned:
      ShowAddress(window, navigation.Url());
      navigation.Allow();
      return;
    case GateVerdict::RefuseMail:  // the address alone decides it, and its box needs more than this
      navigation.Refuse();
      return;
    case GateVerdict::Block:
      BlockSequence(window, navigation);
      return;
  }
}

void NavigationGate::RefuseMail(const std::shared_ptr<Navigation>& navigation) {
  // The boxes run events, and the gate itself may end inside: nothing of it is touched behind the first one.
  const std::shared_ptr<MailLinks> links = mailLinks_;
  MessageBoxes& boxes = boxes_;
  links->push_back(navigation);
  if (links->size() > 1) {
    return;  // asked inside the box of another: the loop there comes to this one
  }
  const RefusedAtTheEnd rest(*links);
  while (!links->empty()) {
    const std::shared_ptr<Navigation> link = links->front();
    if (link->Pending()) {
      attempt([&] { boxes.MsgBox(kMailRefused, kMsgOkOnly, {}); });
      link->Refuse();
    }
    if (!links->empty()) {
      links->pop_front();
    }
  }
}

void NavigationGate::ShowAddress(GateWindow& window, const std::string& url) {
  attempt([&] { window.SetAddressText(url); });
  bool minimized = false;
  attempt([&] { minimized = window.WindowState() == WindowState::Minimized; });
  if (minimized) {
    attempt([&] { window.SetWindowState(WindowState::Normal); });
    attempt([&] { window.SetAddressText(url); });
  }
}

void NavigationGate::BlockSequence(GateWindow& window, Navigation& navigation) {
  // 1: Cancel. It comes first, so that nothing that fails below can open the page.
  navigation.Refuse();
  // 2: what the window still loads
  attempt([&] { window.StopBrowser(); });
  // 3: 30 beeps in a row. kept on purpose: whatever the setting Sound says
  for (int beep = 0; beep < kBeepsOfABlock; ++beep) {
    attempt([&] { sound_.Beep(); });
  }
  // 4: the way out for the parent
  attempt([&] { frame_.SetLockEnabled(true); });
  // 5
  attempt([&] { frame_.Logo_AnimateStop(); });
  // 6: for the grant
  BlockedURL = navigation.Url();
  // 7
  attempt([&] { window.SetAddressText({}); });
  // 8
  SessionAllowPending = true;
  // 9
  attempt([&] { frame_.SetCaption(kBlockCaption); });
  // 10: the box once more
  attempt([&] { window.SetAddressText({}); });
}

}  // namespace kivandra
