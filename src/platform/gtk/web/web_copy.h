// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <webkit/webkit.h>

namespace kivandra::gtk {

/// Copies or cuts what is selected on a page (`command` is the engine's name of it), and returns when it is
/// on the clipboard: whoever copies may read the clipboard next. With nothing selected the clipboard keeps
/// what it holds. A page that does not answer is not waited for longer than a second. Events run inside.
void TakeSelection(WebKitWebView* view, const char* command);

}  // namespace kivandra::gtk
