// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace kivandra::linux_impl {

/// Looks whether the session bus answers, two seconds at the most, before anything of this process asks for
/// it. If it does not, the toolkit and the engine are told that there is none: the one would complain and
/// wait without end, the other end the process at the first page. A bus that is lost later ends nothing here.
void SettleSessionBus();

}  // namespace kivandra::linux_impl
