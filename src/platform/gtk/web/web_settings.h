// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <webkit/webkit.h>

namespace kivandra::gtk {

/// The engine's settings for a view in which a child reads. The caller owns them; every view has its own, so
/// that a page can be zoomed apart from the others.
[[nodiscard]] WebKitSettings* MakeReaderSettings();

/// Refuses, in one view, everything by which a page could step out of its window or pass for the program:
/// prompts, permissions, full screen, printing, file and login questions, and the engine's own commands in
/// the context menu.
void RefuseExtras(WebKitWebView* view);

}  // namespace kivandra::gtk
