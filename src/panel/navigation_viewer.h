// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>

#include "panel/bare_browser.h"
#include "panel/panel_frame.h"
#include "platform/file_calls.h"
#include "platform/form.h"
#include "platform/rich_text_box.h"

namespace kivandra {

/// The window `Navigation`: the log of one day, its addresses as links. It writes nothing and does not follow
/// later entries. Its handlers pass over what fails. The window that it opens for links, one a viewer, stays
/// when the viewer closes, so the owner keeps the object until Ended.
class NavigationViewer : public FormEvents {
 public:
  struct Services {
    Forms& forms;
    FileCalls& files;
    PanelFrame& frame;
  };
  explicit NavigationViewer(const Services& services) : services_(services) {}
  ~NavigationViewer() override;
  NavigationViewer(const NavigationViewer&) = delete;
  NavigationViewer& operator=(const NavigationViewer&) = delete;

  /// Loads the window with the log of the day that LogDateKey names, and shows it. Throws PlatformError if
  /// the window can't be loaded.
  void Show();
  /// Whether neither the window nor the one for its links stands any more.
  [[nodiscard]] bool Ended() const;

  void Form_Unload() override;

 private:
  void Form_Load();
  void CancelButton_Click();
  void OKButton_Click();
  void URLS_LinkOver(unsigned message, TextSpan link);

  Services services_;
  std::shared_ptr<Form> form_;
  std::unique_ptr<parentbrowse> parentbrowse_;
};

}  // namespace kivandra
