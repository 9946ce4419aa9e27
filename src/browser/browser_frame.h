// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>

#include "platform/bar_control.h"
#include "platform/combo_box.h"
#include "platform/status_bar.h"

namespace kivandra {

class frmBrowser;

/// What a child window asks of the frame around it. All windows share what stands there and nobody owns it:
/// the last event wins. Every operation may throw PlatformError; the window then goes on with its next step.
class BrowserFrame {
 public:
  virtual ~BrowserFrame() = default;

  /// The logo begins to move: a page is loading.
  virtual void Logo_Animate() = 0;
  /// The logo control is stopped where it is.
  virtual void Logo_AnimateStop() = 0;
  /// `WebBrowser2` navigates to "smilestop.jpg" of the program's folder: the logo goes from moving to still.
  virtual void ShowStillLogo() = 0;
  virtual void tileme() = 0;
  virtual void cascade() = 0;
  /// Copies the selection of the active page to the clipboard; events may run inside.
  virtual void mnuEditCopy_Click() = 0;

  virtual ComboBox& TheAddress() = 0;
  virtual StatusBar& Status() = 0;
  /// The bars; the child speaks to the tools `Back` and `Forward` of the band `MainBar`.
  virtual BarControl& BonusBar() = 0;

  /// Inside of the area in which the children lie.
  [[nodiscard]] virtual Twips ScaleWidth() const = 0;
  [[nodiscard]] virtual Twips ScaleHeight() const = 0;

  /// The child in front, or null if there is none; a hidden child is never in front.
  [[nodiscard]] virtual std::shared_ptr<frmBrowser> ActiveForm() const = 0;
  /// The public member `LastDeactivated`. kept on purpose: nothing reads it.
  virtual void SetLastDeactivated(std::weak_ptr<frmBrowser> window) = 0;

  /// Makes a new child, hidden, and holds it until BrowserUnloaded.
  virtual std::shared_ptr<frmBrowser> NewBrowser() = 0;
  /// The window goes: the frame lets it out of its list. Called from inside its Form_Unload.
  virtual void BrowserUnloaded(const frmBrowser& window) = 0;
};

}  // namespace kivandra
