// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtkmm.h>

#include <memory>

#include "platform/page_view.h"
#include "platform/web_browser.h"

namespace kivandra::gtk {

/// Makes the engine's controls for the forms. The form loader finds a place-holder box of the control's name
/// in the form file and has it filled here.
class EngineFactory {
 public:
  virtual ~EngineFactory() = default;

  /// A browser control that fills `place`.
  virtual std::unique_ptr<WebBrowser> MakeBrowser(Gtk::Box& place) = 0;
  /// A view that fills `place` with pages of the product's own site (no gate, no scripts' host object).
  virtual std::unique_ptr<PageView> MakePageView(Gtk::Box& place) = 0;
};

}  // namespace kivandra::gtk
