// SPDX-License-Identifier: GPL-3.0-or-later
#include "fakes/fake_event_loop.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <utility>

#include "fakes/fake_controls.h"

namespace kivandra::fakes {

HangsForEver::HangsForEver() : std::logic_error("a wait that no event can end") {}

FakeEventLoop::FakeEventLoop(Journal& journal) : journal_(journal) {}

FakeEventLoop::~FakeEventLoop() = default;

void FakeEventLoop::After(long milliseconds, std::function<void()> event) {
  planned_.emplace(now_ + milliseconds, std::move(event));
}

long FakeEventLoop::Now() const { return now_; }

bool FakeEventLoop::Ended() const { return ended_; }

void FakeEventLoop::DoEvents() {
  journal_.Call("DoEvents");
  while (RunNext(now_)) {
  }
}

void FakeEventLoop::WaitForEvents() {
  if (ended_ || !RunNext(std::numeric_limits<long>::max())) {
    ADD_FAILURE() << "waits for events, and none can come";
    throw HangsForEver();
  }
}

void FakeEventLoop::EndProgram() {
  journal_.Note("EndProgram");
  ended_ = true;
}

void FakeEventLoop::Advance(long milliseconds) {
  const long until = now_ + milliseconds;
  while (RunNext(until)) {
  }
  now_ = until;
}

void FakeEventLoop::Arm(FakeTimer* timer, long interval) { timers_[timer] = now_ + interval; }

void FakeEventLoop::Disarm(FakeTimer* timer) { timers_.erase(timer); }

bool FakeEventLoop::RunNext(long until) {
  const auto event = planned_.begin();
  auto timer = timers_.end();
  for (auto each = timers_.begin(); each != timers_.end(); ++each) {
    if (timer == timers_.end() || each->second < timer->second) {
      timer = each;
    }
  }
  const bool eventFirst =
      event != planned_.end() && (timer == timers_.end() || event->first <= timer->second);
  if (eventFirst) {
    if (event->first > until) {
      return false;
    }
    now_ = std::max(now_, event->first);
    auto action = std::move(event->second);
    planned_.erase(event);
    action();
    return true;
  }
  if (timer == timers_.end() || timer->second > until) {
    return false;
  }
  now_ = std::max(now_, timer->second);
  timer->first->Tick();
  return true;
}

}  // namespace kivandra::fakes
