// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtk/gtk.h>

#include <functional>
#include <memory>
#include <string>

#include "platform/gtk/controls/rich_text_pieces.h"

namespace kivandra::gtk {

/// Readies a print and says how it is to run; none: on the default printer, without a dialog.
using PrintRoad = std::function<GtkPrintOperationAction(GtkPrintOperation*)>;

/// Prints the text under the name `document`, links underlined. Runs events until the print is handed over;
/// `window` may be null. Throws PlatformError if there is no printer, if printing fails, or while another
/// text is being printed.
void PrintText(std::shared_ptr<const LinkedText> text, const std::string& document, GtkWindow* window,
               const PrintRoad& road);

}  // namespace kivandra::gtk
