// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/clipboard.h"

namespace kivandra::gtk {

/// The desktop's clipboard.
class GtkClipboard : public Clipboard {
 public:
  void Clear() override;
  [[nodiscard]] std::string GetText() override;
};

}  // namespace kivandra::gtk
