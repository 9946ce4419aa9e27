// SPDX-License-Identifier: GPL-3.0-or-later
#include "fakes/fake_world.h"

#include "core/core_values.h"
#include "core/settings.h"

namespace kivandra::fakes {

FakeWorld::FakeWorld() {
  ResetCoreValues();
  FillSettingNames();
}

FakeWorld::~FakeWorld() = default;

std::string FakeWorld::Setting(const std::string& name) { return TextOf(ReadItem(registry, name)); }

}  // namespace kivandra::fakes
