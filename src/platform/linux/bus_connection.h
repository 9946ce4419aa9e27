// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gio/gio.h>

#include <chrono>

namespace kivandra::linux_impl {

/// Connects to the session bus; events run inside, `most` at the most. Null if there is none or it does not
/// answer. The end of the connection does not end the process. The caller owns a reference.
[[nodiscard]] GDBusConnection* ConnectToSessionBus(std::chrono::seconds most);

}  // namespace kivandra::linux_impl
