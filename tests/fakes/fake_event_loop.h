// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <map>
#include <stdexcept>
#include <vector>

#include "fakes/journal.h"
#include "platform/event_loop.h"

namespace kivandra::fakes {

class FakeTimer;

/// Thrown out of a wait for which no event can ever come: the program would hang there for ever.
struct HangsForEver : std::logic_error {
  HangsForEver() : std::logic_error("a wait that no event can end") {}
};

/// Time moves by hand: a wait jumps to the next event that the test planned or the next tick of an enabled
/// timer.
class FakeEventLoop : public EventLoop {
 public:
  explicit FakeEventLoop(Journal& journal) : journal_(journal) {}

  /// Plans an event `milliseconds` from the present moment.
  void After(long milliseconds, std::function<void()> event) {
    planned_.emplace(now_ + milliseconds, std::move(event));
  }
  [[nodiscard]] long Now() const { return now_; }
  [[nodiscard]] bool Ended() const { return ended_; }

  void DoEvents() override {
    journal_.Call("DoEvents");
    while (RunNext(now_)) {
    }
  }
  void WaitForEvents() override {
    if (ended_ || !RunNext(std::numeric_limits<long>::max())) {
      ADD_FAILURE() << "waits for events, and none can come";
      throw HangsForEver();
    }
  }
  void EndProgram() override {
    journal_.Note("EndProgram");
    ended_ = true;
  }
  /// Lets time pass: runs all that is due within `milliseconds`.
  void Advance(long milliseconds) {
    const long until = now_ + milliseconds;
    while (RunNext(until)) {
    }
    now_ = until;
  }

  /// A timer is known here while it is enabled; `due` is its next tick.
  void Arm(FakeTimer* timer, long interval) { timers_[timer] = now_ + interval; }
  void Disarm(FakeTimer* timer) { timers_.erase(timer); }

 private:
  bool RunNext(long until);

  Journal& journal_;
  long now_ = 0;
  bool ended_ = false;
  std::multimap<long, std::function<void()>> planned_;
  std::map<FakeTimer*, long> timers_;
};

}  // namespace kivandra::fakes
