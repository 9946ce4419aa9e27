// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/form.h"
#include "support/attempt.h"

namespace kivandra {

/// Takes a window away whose owner ends, without asking it: its controls' handlers lead to the owner, and a
/// hidden window that nobody owns would keep the process alive for ever. Does nothing for null or an unloaded
/// window.
inline void UnloadWithOwner(Form* form) {
  if (form != nullptr && form->Loaded()) {
    attempt([form] { form->SetEvents(nullptr); });
    attempt([form] { form->Unload(); });
  }
}

}  // namespace kivandra
