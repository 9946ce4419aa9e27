// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <webkit/webkit.h>

#include <string>

namespace kivandra::gtk {

/// A text of the engine; empty for none.
inline std::string Text(const char* text) { return text != nullptr ? text : ""; }

/// The address that an action of a page leads to.
inline std::string AddressOf(WebKitNavigationAction* action) {
  return Text(webkit_uri_request_get_uri(webkit_navigation_action_get_request(action)));
}

}  // namespace kivandra::gtk
