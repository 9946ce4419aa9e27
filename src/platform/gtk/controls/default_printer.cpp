// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gtk/controls/default_printer.h"

#include <gtk/gtkunixprint.h>

#include <memory>

#include "platform/platform_error.h"

namespace kivandra::gtk {
namespace {

/// What the search for a printer has found so far; it may go on after the one who asked has given up.
struct Search {
  std::string printer;
  bool ended = false;
};
using SharedSearch = std::shared_ptr<Search>;

gboolean OnPrinter(GtkPrinter* printer, gpointer search) {
  Search& found = **static_cast<SharedSearch*>(search);
  const bool isDefault = gtk_printer_is_default(printer) != FALSE;
  if (gtk_printer_is_virtual(printer) == FALSE && (isDefault || found.printer.empty())) {
    found.printer = gtk_printer_get_name(printer);
    return isDefault ? TRUE : FALSE;
  }
  return FALSE;
}

void OnSearchEnded(gpointer search) {
  auto* shared = static_cast<SharedSearch*>(search);
  (*shared)->ended = true;
  delete shared;
}

}  // namespace

std::string FindPrinter() {
  constexpr guint kPatience = 3000;  // milliseconds
  const auto search = std::make_shared<Search>();
  gtk_enumerate_printers(OnPrinter, new SharedSearch(search), OnSearchEnded, FALSE);
  bool late = false;
  const guint timer = g_timeout_add(
      kPatience,
      +[](gpointer flag) -> gboolean { return *static_cast<bool*>(flag) = true, G_SOURCE_CONTINUE; }, &late);
  while (!search->ended && !late) {
    g_main_context_iteration(nullptr, TRUE);
  }
  g_source_remove(timer);
  if (search->printer.empty()) {
    throw PlatformError(kPrinterError, "there is no printer");
  }
  return search->printer;
}

}  // namespace kivandra::gtk
