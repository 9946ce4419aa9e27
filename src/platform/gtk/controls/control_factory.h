// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtkmm.h>

#include <memory>
#include <string>

#include "platform/control.h"

namespace kivandra::gtk {

class FormBase;
class FormLoader;

/// The wrapper of one control of a form file; one kind of wrapper for each kind of control, none for a
/// window. Throws PlatformError if the file has no object of that name, or one of another kind.
[[nodiscard]] std::unique_ptr<Control> MakeControl(FormBase& form, FormLoader& loader,
                                                   const Glib::RefPtr<Gtk::Builder>& builder,
                                                   const std::string& name, ControlKind kind);
[[nodiscard]] bool IsKind(Control& control, ControlKind kind);

}  // namespace kivandra::gtk
