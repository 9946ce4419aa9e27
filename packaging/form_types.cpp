// SPDX-License-Identifier: GPL-3.0-or-later
// Preloaded into a program of the toolkit, it registers the types that our forms are made of besides the
// toolkit's own.
#include <cstdlib>

#include "platform/gtk/controls/common_dialog.h"
#include "platform/gtk/controls/picture.h"
#include "platform/gtk/controls/skin_control.h"
#include "platform/gtk/controls/timer_control.h"

namespace {

[[gnu::constructor]] void RegisterFormTypes() {
  const char* const assets = std::getenv("KIVANDRA_ASSETS");
  kivandra::gtk::RegisterPictureType(assets != nullptr ? assets : "");
  kivandra::gtk::RegisterTimerType();
  kivandra::gtk::RegisterSkinType();
  kivandra::gtk::RegisterCommonDialogType();
}

}  // namespace
