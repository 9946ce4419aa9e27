// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gtk/controls/mdi_client_control.h"

namespace kivandra::gtk {

Form* MdiClientControl::ActiveForm() const {
  Alive();
  MdiChild* active = area_.Active();
  return active != nullptr ? dynamic_cast<Form*>(&active->GetOwner()) : nullptr;
}

void MdiClientControl::SendMessageA(unsigned message, unsigned wParam, long) {
  Alive();
  switch (message) {
    case WM_MDITILE:
      area_.Tile((wParam & 1U) != 0);
      break;
    case WM_MDICASCADE:
      area_.Cascade();
      break;
    case WM_MDIICONARRANGE:
      area_.ArrangeIcons();
      break;
    default:
      break;  // the area knows no other message, and a message that is not known does nothing
  }
}

}  // namespace kivandra::gtk
