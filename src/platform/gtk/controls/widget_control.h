// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtkmm.h>

#include "platform/control.h"
#include "platform/platform_error.h"

namespace kivandra::gtk {

/// Twips to a pixel at scale 1.
inline constexpr Twips kTwipsPerPixel = 15;

/// The operations that every control has, over one widget. The widget belongs to its window; when the window
/// is gone every operation throws PlatformError, so a handler that runs on after a close does no harm.
class WidgetControl : public virtual Control {
 public:
  explicit WidgetControl(Gtk::Widget& widget);
  ~WidgetControl() override;
  WidgetControl(const WidgetControl&) = delete;
  WidgetControl& operator=(const WidgetControl&) = delete;

  [[nodiscard]] bool Enabled() const override;
  void SetEnabled(bool enabled) override;
  [[nodiscard]] bool Visible() const override;
  void SetVisible(bool visible) override;
  void SetFocus() override;
  [[nodiscard]] Twips Left() const override;
  [[nodiscard]] Twips Top() const override;
  [[nodiscard]] Twips Width() const override;
  [[nodiscard]] Twips Height() const override;
  /// Only inside a `GtkFixed`; elsewhere the form file lays the control out and this does nothing.
  void Move(Twips left, Twips top, Twips width, Twips height) override;

  /// The widget itself, for the adapters; throws PlatformError if it is gone.
  [[nodiscard]] Gtk::Widget& Widget() const;
  /// The control's window is unloaded: every operation throws from here on, also while the widget itself
  /// still waits for the event loop to take it away. Called by the form. A control with handlers drops them
  /// here.
  virtual void LetGo();

 protected:
  /// Throws PlatformError if the widget is gone.
  void Alive() const { (void)Widget(); }

 private:
  Gtk::Widget* widget_;  // null once the widget is destroyed
  sigc::connection destroyed_;
};

}  // namespace kivandra::gtk
