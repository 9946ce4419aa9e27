// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/combo_box.h"
#include "platform/web_browser.h"

namespace kivandra {

/// Brings the address of the browser's page to the top of an address box, in its list and in its field, and
/// gives the box the focus. An address that is equal to it to the letter leaves its old place. The list has
/// no length limit. A step that fails is passed over.
void PutOnTop(ComboBox& box, const WebBrowser& browser);

}  // namespace kivandra
