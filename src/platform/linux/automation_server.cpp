// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/automation_server.h"

namespace kivandra::linux_impl {

struct AutomationServer::Connection {};

AutomationServer::AutomationServer() = default;
AutomationServer::~AutomationServer() = default;

void AutomationServer::Offer(ScriptObject& /*object*/) {}

}  // namespace kivandra::linux_impl
