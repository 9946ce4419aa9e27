// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/status_bar.h"

namespace kivandra {

/// What the parent's windows ask of the frame. Throws PlatformError while there is no frame.
class PanelFrame {
 public:
  virtual ~PanelFrame() = default;

  /// The status bar that all windows share.
  virtual StatusBar& Status() = 0;
};

}  // namespace kivandra
