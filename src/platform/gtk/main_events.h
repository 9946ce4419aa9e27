// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/event_loop.h"

namespace kivandra::gtk {

/// The toolkit's own loop, on the thread that started it.
class MainEvents : public EventLoop {
 public:
  void DoEvents() override;
  void WaitForEvents() override;
  void EndProgram() override;
};

}  // namespace kivandra::gtk
