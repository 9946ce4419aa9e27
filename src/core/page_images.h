// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/registry_calls.h"

namespace kivandra {

/// Whether pages show their pictures, as this user chose last. They do if there is no choice yet, and if it
/// can't be read.
[[nodiscard]] bool StoredImagesShown(RegistryCalls& calls);

/// Keeps this user's choice for later starts; a choice that can't be stored is forgotten with the program.
void StoreImagesShown(RegistryCalls& calls, bool shown);

}  // namespace kivandra
