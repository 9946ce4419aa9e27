// SPDX-License-Identifier: GPL-3.0-or-later
#include "filter/filter_values.h"

namespace kivandra {

void ResetFilterValues() {
  BadWords = {};
  AllowedDomains = {};
  BlockedURL.clear();
  AskedURL.reset();
  SessionAllowPending = false;
  BackBypass = false;
}

}  // namespace kivandra
