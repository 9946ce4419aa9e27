// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gtk/web/web_commands.h"

#include <array>

#include "platform/gtk/web/web_copy.h"
#include "platform/gtk/web/web_dialogs.h"
#include "platform/platform_error.h"
#include "platform/web_browser.h"

namespace kivandra::gtk {
namespace {

/// Letters alone grow and shrink; the page keeps its layout.
void SetTextSize(WebKitWebView* view, int size) {
  constexpr std::array<double, 5> kSizes{0.75, 0.875, 1.0, 1.25, 1.5};
  if (size < 0 || size >= static_cast<int>(kSizes.size())) {
    throw PlatformError(kInvalidCall, "There is no such size of letters.");
  }
  webkit_settings_set_zoom_text_only(webkit_web_view_get_settings(view), TRUE);
  webkit_web_view_set_zoom_level(view, kSizes[static_cast<std::size_t>(size)]);
}

}  // namespace

int CommandStatus(int command) {
  constexpr int kSupportedAndEnabled = 3;
  switch (command) {
    case OLECMDID_SAVEAS:
    case OLECMDID_PRINT:
    case OLECMDID_PRINTPREVIEW:
    case OLECMDID_PAGESETUP:
    case OLECMDID_PROPERTIES:
    case OLECMDID_CUT:
    case OLECMDID_COPY:
    case OLECMDID_PASTE:
    case OLECMDID_SELECTALL:
    case OLECMDID_ZOOM:
    case OLECMDID_UPDATECOMMANDS:
      return kSupportedAndEnabled;
    default:
      throw PlatformError(kInvalidCall, "The engine does not know this command.");
  }
}

void ExecuteCommand(WebKitWebView* view, int command, int option, int value) {
  switch (command) {
    case OLECMDID_SAVEAS:
      return AskSaveAs(view);
    case OLECMDID_PRINT:
      return option == 2 ? PrintPage(view) : AskPrint(view);
    case OLECMDID_PRINTPREVIEW:
      return AskPrint(view);
    case OLECMDID_PAGESETUP:
      return AskPageSetup(view);
    case OLECMDID_PROPERTIES:
      return ShowProperties(view);
    case OLECMDID_CUT:
      return TakeSelection(view, WEBKIT_EDITING_COMMAND_CUT);
    case OLECMDID_COPY:
      return TakeSelection(view, WEBKIT_EDITING_COMMAND_COPY);
    case OLECMDID_PASTE:
      return webkit_web_view_execute_editing_command(view, WEBKIT_EDITING_COMMAND_PASTE);
    case OLECMDID_SELECTALL:
      return webkit_web_view_execute_editing_command(view, WEBKIT_EDITING_COMMAND_SELECT_ALL);
    case OLECMDID_ZOOM:
      return SetTextSize(view, value);
    case OLECMDID_UPDATECOMMANDS:
      return;
    default:
      throw PlatformError(kInvalidCall, "The engine does not know this command.");
  }
}

}  // namespace kivandra::gtk
