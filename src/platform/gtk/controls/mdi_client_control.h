// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/gtk/controls/widget_control.h"
#include "platform/gtk/mdi/mdi_area.h"
#include "platform/mdi_client.h"

namespace kivandra::gtk {

class MdiClientControl : public WidgetControl, public MdiClient {
 public:
  MdiClientControl(Gtk::Widget& place, MdiArea& area) : WidgetControl(place), area_(area) {}

  [[nodiscard]] Form* ActiveForm() const override;
  void SendMessageA(unsigned message, unsigned wParam, long lParam) override;

 private:
  MdiArea& area_;
};

}  // namespace kivandra::gtk
