// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/default_application.h"
#include "platform/message_box.h"
#include "platform/registry_calls.h"
#include "platform/system_info.h"

namespace kivandra {

struct DefaultBrowserServices {
  RegistryCalls& registry;
  MessageBoxes& boxes;
  const SystemInfo& system;
  DefaultApplication& desktop;
};

/// Makes this program the one for web pages and addresses: a fixed run of writes into the settings tree, then
/// the desktop's own registration, then one box. Nothing is read, compared or undone, and what fails is
/// skipped by itself, without a word.
void SetAsDefaultBrowser(const DefaultBrowserServices& services);

}  // namespace kivandra
