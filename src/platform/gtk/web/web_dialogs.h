// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gio/gio.h>
#include <webkit/webkit.h>

#include <string>

namespace kivandra::gtk {

// The dialogs that belong to a page. Each returns at once, is at home in the page's window and goes with it,
// in whatever state it is. While one of a kind is open for a page, asking again only brings it to the front.

/// Asks where to save the page, and saves it: by the name's ending as one file with its pictures (".mhtml"),
/// else as the page alone, as it stands now, in UTF-8 and with its links leading to where they led. What is
/// no HTML is saved as it came. A failure is said in plain words.
void AskSaveAs(WebKitWebView* view);
/// Saves the page there; the same, without a question.
void SavePage(WebKitWebView* view, GFile* file);
/// A file name for a page of that title and type of content: one name, never a path, no longer than file
/// systems take, whatever the page has put into its title.
[[nodiscard]] std::string FileNameFor(const std::string& title, const std::string& type);
/// Why saving failed, in plain words.
[[nodiscard]] std::string WordsForSaving(const GError* error);

/// Asks how to print the page, and prints it. One such dialog is open at a time in the whole program.
void AskPrint(WebKitWebView* view);
/// Prints on the usual printer without a question.
void PrintPage(WebKitWebView* view);
/// Asks for paper and margins, which hold for all windows.
void AskPageSetup(WebKitWebView* view);

/// Title, address, and whether others can read along.
void ShowProperties(WebKitWebView* view);

/// Says something about a page in a box of its own, in the page's window if it has one.
void SayOf(WebKitWebView* view, const std::string& title, const std::string& text);

// For the dialogs themselves.

/// The window that a view lies in, or null.
[[nodiscard]] GtkWindow* WindowOf(WebKitWebView* view);
/// The open dialog of that name for the view, brought to the front; null if there is none.
[[nodiscard]] GtkWindow* OpenDialog(WebKitWebView* view, const char* name);
/// Dresses a new dialog, ties it to the view under that name and shows it.
void PresentDialog(WebKitWebView* view, const char* name, GtkWindow* dialog);

}  // namespace kivandra::gtk
