// SPDX-License-Identifier: GPL-3.0-or-later
#include "panel/host_lists.h"

#include <cstddef>

#include "core/registry.h"
#include "core/settings.h"
#include "filter/filter_values.h"
#include "platform/platform_error.h"
#include "support/attempt.h"

namespace kivandra {

namespace {

cRegistry ListRegistry(RegistryCalls& calls, HostList list) {
  cRegistry registry(calls);
  registry.SetClassKey(HKEY_CLASSES_ROOT);
  registry.SetSectionKey(list == HostList::Allowed ? kAllowedSection : kDisallowedSection);
  return registry;
}

void GoToSlot(cRegistry& registry, int slot) {
  registry.SetValueKey(std::to_string(slot));
  registry.SetValueType(REG_SZ);  // anew each time, since reading sets the type that it finds
}

/// The slot's text, with its environment variables expanded; empty if the slot is free.
std::string ReadSlot(cRegistry& registry, int slot) {
  GoToSlot(registry, slot);
  return TextOf(registry.Value());
}

void WriteSlot(cRegistry& registry, int slot, const std::string& text) {
  GoToSlot(registry, slot);
  registry.SetValue(text);
}

/// Carries out one step, and passes over a value that is refused by itself. A store that fails as a whole
/// ends the row of steps.
template <typename Step>
void PassOverRefusal(Step step) {
  try {
    step();
  } catch (const PlatformError& error) {
    if (error.Number() != kRegistryError && error.Number() != kRegistryWriteError) {
      throw;
    }
  }
}

/// The entries that stay, in order. kept on purpose: an empty slot "0" is one of them, and the walk ends at
/// any later empty slot and at "100".
std::vector<std::string> EntriesBut(cRegistry& registry, const std::string& text) {
  std::vector<std::string> kept;
  int slot = 0;
  bool more = true;
  while (more) {
    std::string entry = ReadSlot(registry, slot);
    if (entry != text) {
      kept.push_back(std::move(entry));
    }
    ++slot;
    more = slot != kHostListSlots && !ReadSlot(registry, slot).empty();
  }
  return kept;
}

}  // namespace

std::vector<std::string> HostListEntries(RegistryCalls& calls, HostList list) {
  cRegistry registry = ListRegistry(calls, list);
  std::vector<std::string> entries;
  attempt([&] {
    for (int slot = 0;; ++slot) {
      if (list == HostList::Disallowed) {
        attempt([&] { registry.CreateKey(); });  // kept on purpose: for this list alone, and in every round
      }
      std::string entry = ReadSlot(registry, slot);
      if (entry.empty()) {
        return;
      }
      entries.push_back(std::move(entry));
    }
  });
  return entries;
}

HostListAdding AddToHostList(RegistryCalls& calls, HostList list, const std::string& text, int& slot) {
  cRegistry registry = ListRegistry(calls, list);
  for (slot = 0; slot < kHostListSlots; ++slot) {
    std::string entry;
    // A slot that can't be read may be taken: nothing is stored over it, and nothing behind it.
    if (!attempt([&] { entry = ReadSlot(registry, slot); })) {
      return HostListAdding::Unreadable;
    }
    if (entry == text) {
      return HostListAdding::AlreadyThere;
    }
    if (entry.empty()) {
      attempt([&] { WriteSlot(registry, slot, text); });
      return HostListAdding::Added;
    }
  }
  return HostListAdding::Full;
}

void AppendSlotToBadWords(RegistryCalls& calls, HostList list, int slot) {
  cRegistry registry = ListRegistry(calls, list);
  attempt([&] { BadWords[BadWords.FirstEmptyRow()] = ReadSlot(registry, slot); });
}

void RemoveFromHostList(RegistryCalls& calls, HostList list, const std::string& text) {
  cRegistry registry = ListRegistry(calls, list);
  attempt([&] {
    // All of it or nothing, and one write to the disk in the place of two hundred.
    RegistryBatch batch(calls);
    const std::vector<std::string> kept = EntriesBut(registry, text);
    for (int slot = 0; slot < kHostListSlots; ++slot) {
      PassOverRefusal([&] { WriteSlot(registry, slot, {}); });
    }
    for (std::size_t slot = 0; slot < kept.size(); ++slot) {
      if (!kept[slot].empty()) {
        PassOverRefusal([&] { WriteSlot(registry, static_cast<int>(slot), kept[slot]); });
      }
    }
    batch.Commit();
  });
}

}  // namespace kivandra
