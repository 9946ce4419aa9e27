// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/control.h"

namespace kivandra {

/// A control that shows what lies at an address, with no filter and no events of its own: a picture file of
/// the program (an animated one moves until Stop or the next Navigate), or a page of the product's own site.
class PageView : public virtual Control {
 public:
  static constexpr ControlKind kKind = ControlKind::PageView;

  /// Begins to show the address or file path and returns at once. A missing file or page shows nothing and is
  /// no error.
  virtual void Navigate(const std::string& address) = 0;
  virtual void Stop() = 0;
};

}  // namespace kivandra
