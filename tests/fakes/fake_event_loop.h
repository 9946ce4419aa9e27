// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <map>
#include <stdexcept>
#include <vector>

#include "fakes/journal.h"
#include "platform/event_loop.h"

namespace kivandra::fakes {

class FakeTimer;

/// Thrown out of a wait for which no event can ever come: the program would hang there for ever.
struct HangsForEver : std::logic_error {
  HangsForEver();
};

/// Time moves by hand: a wait jumps to the next event that the test planned or the next tick of an enabled
/// timer.
class FakeEventLoop : public EventLoop {
 public:
  explicit FakeEventLoop(Journal& journal);
  ~FakeEventLoop() override;

  /// Plans an event `milliseconds` from the present moment.
  void After(long milliseconds, std::function<void()> event);
  [[nodiscard]] long Now() const;
  [[nodiscard]] bool Ended() const;

  void DoEvents() override;
  void WaitForEvents() override;
  void EndProgram() override;
  /// Lets time pass: runs all that is due within `milliseconds`.
  void Advance(long milliseconds);

  /// A timer is known here while it is enabled; `due` is its next tick.
  void Arm(FakeTimer* timer, long interval);
  void Disarm(FakeTimer* timer);

 private:
  bool RunNext(long until);

  Journal& journal_;
  long now_ = 0;
  bool ended_ = false;
  std::multimap<long, std::function<void()>> planned_;
  std::map<FakeTimer*, long> timers_;
};

}  // namespace kivandra::fakes
