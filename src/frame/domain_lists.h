// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include "platform/event_loop.h"
#include "platform/registry_calls.h"

namespace kivandra {

/// Loads the parent's two lists into the filter's tables: the disallowed list behind the last used row of
/// BadWords, the allowed list into AllowedDomains from row 1. Waits, running events, until the built-in rows
/// are in place. What finds no row is lost without a word. Throws PlatformError if the settings tree fails.
void LoadDomainLists(RegistryCalls& registry, EventLoop& events, const std::string& programFileName);

}  // namespace kivandra
