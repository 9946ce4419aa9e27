// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtk/gtk.h>
#include <webkit/webkit.h>

namespace kivandra::gtk {

/// Opens the strip above a page in which a person searches that page, and puts the keyboard's focus into it;
/// if it is open already, it only gets the focus. The page is the one in which `anywhere` lies, or the one
/// that lies in the same child window; in the frame beside its child windows, that of the active child.
/// Returns false, and does nothing, where there is none; null is nowhere.
///
/// The strip: the words to find, "previous", "next", how many there are, "close". Enter goes to the next
/// place, Shift+Enter to the one before, both round the page's end; Escape closes. Case does not matter. It
/// stays, with its words, when the window goes to another page, and goes with its window.
bool ShowFindBar(GtkWidget* anywhere);

/// Says that this view shows pages in which a person searches. Other views are passed over.
void OfferFindBar(WebKitWebView* view);

}  // namespace kivandra::gtk
