// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/gtk/controls/widget_control.h"
#include "platform/gtk/engine_factory.h"
#include "platform/page_view.h"

namespace kivandra::gtk {

/// A view on a picture file, on a page file or on a page of the product's own site. Both come into being when
/// they are first asked for, so that a box which only holds other controls stays a box.
class PageViewControl : public WidgetControl, public PageView {
 public:
  PageViewControl(Gtk::Box& place, EngineFactory& engine);

  void Navigate(const std::string& address) override;
  void Stop() override;

 private:
  Gtk::Box& Place();
  void ShowFile(const std::string& path);
  void ShowPage(const std::string& address);

  EngineFactory& engine_;
  GtkWidget* picture_ = nullptr;  // owned by the place
  Gtk::Box* pagePlace_ = nullptr;
  std::unique_ptr<PageView> page_;
};

}  // namespace kivandra::gtk
