// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

#include "platform/registry_calls.h"

namespace kivandra {

/// The parent's two lists by the index of their boxes.
enum class HostList { Allowed = 0, Disallowed = 1 };

/// Slots "0" to "99" of a list can hold an entry.
inline constexpr int kHostListSlots = 100;

/// The entries of a list in the order of their slots, up to the first empty one. What can't be read ends the
/// list.
[[nodiscard]] std::vector<std::string> HostListEntries(RegistryCalls& registry, HostList list);

/// How adding ended.
enum class HostListAdding { Added, AlreadyThere, Full, Unreadable };

/// Stores a text, as typed, in the first free slot of a list. An empty text counts as there already as soon
/// as a free slot is met. `slot` is the slot that was chosen; a store that does not take the text leaves it
/// free, and that too counts as added.
[[nodiscard]] HostListAdding AddToHostList(RegistryCalls& registry, HostList list, const std::string& text,
                                           int& slot);

/// Puts what a slot holds behind the last used row of BadWords; a full table takes no more.
void AppendSlotToBadWords(RegistryCalls& registry, HostList list, int slot);

/// Takes a text out of a list and moves the entries behind it up. A slot that is refused by itself is passed
/// over; if the store fails, the list stays as it was. What the filter holds in memory stays as it is: kept
/// on purpose.
void RemoveFromHostList(RegistryCalls& registry, HostList list, const std::string& text);

}  // namespace kivandra
