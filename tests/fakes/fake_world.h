// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/core_values.h"
#include "core/settings.h"
#include "fakes/fake_event_loop.h"
#include "fakes/fake_forms.h"
#include "fakes/fake_inet.h"
#include "fakes/fake_services.h"
#include "fakes/journal.h"
#include "fakes/memory_registry.h"

namespace kivandra::fakes {

/// A machine for one test: every fake, all writing to one journal, and fresh process-wide values.
struct FakeWorld {
  FakeWorld();
  ~FakeWorld();

  /// What a setting holds, as text.
  std::string Setting(const std::string& name);

  Journal journal;
  FakeEventLoop loop{journal};
  FakeForms forms{journal, loop};
  FakeMessageBoxes boxes{journal};
  MemoryRegistry registry;
  FakeInstanceCalls instance{journal};
  FakeSystemInfo system;
  FakeFileCalls files{journal};
  FakeSound sound{journal};
  FakePageFetch inet1{journal, loop};
  FakeClipboard clipboard{journal};
  FakeInternetSession session{journal};
  FakeShellCalls shell{journal};
  FakeInet inet{journal};
  FakeDefaultApplication defaultApplication{journal};
};

}  // namespace kivandra::fakes
