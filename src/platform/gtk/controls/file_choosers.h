// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace kivandra::gtk {

/// From now on every file chooser of the toolkit, whoever opens it, keeps a child inside the program: its own
/// menu, which deletes files and opens the desktop's file manager, never comes, and its boxes wear the
/// program's dress and go with it. To be called once.
void WatchFileChoosers();

}  // namespace kivandra::gtk
