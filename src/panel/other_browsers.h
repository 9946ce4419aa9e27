// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include "platform/file_calls.h"
#include "platform/registry_calls.h"

namespace kivandra {

struct OtherBrowserServices {
  RegistryCalls& registry;
  FileCalls& files;
  std::string programFileName;
};

// Hides another browser's program file from its start, or brings it back, as its setting says. The file is
// the one that the settings tree names; hiding adds an "X" to its name. Whatever fails is passed over without
// a word.

/// By setting "P_IE".
void PreventInternetExplorer(const OtherBrowserServices& services);
/// By setting "P_NS".
void PreventNetscape(const OtherBrowserServices& services);

}  // namespace kivandra
