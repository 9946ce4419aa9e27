// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gtk/web/web_presses.h"

#include <utility>

namespace kivandra::gtk {
namespace {

/// How long a press counts: a page may have to fetch something before it answers.
constexpr gint64 kMoment = 5 * G_USEC_PER_SEC;

}  // namespace

void Presses::Start(WebKitWebView* view) {
  GtkEventController* controller = gtk_event_controller_legacy_new();
  gtk_event_controller_set_propagation_phase(controller, GTK_PHASE_CAPTURE);  // before the engine's own
  signals_.Connect<&Presses::OnEvent>(controller, "event", this);
  gtk_widget_add_controller(GTK_WIDGET(view), controller);
}

bool Presses::Take() {
  const gint64 pressed = std::exchange(pressed_, 0);
  return pressed != 0 && g_get_monotonic_time() - pressed < kMoment;
}

gboolean Presses::OnEvent(GdkEvent* event) {
  const GdkEventType type = gdk_event_get_event_type(event);
  const bool isPress = type == GDK_BUTTON_PRESS || type == GDK_KEY_PRESS || type == GDK_TOUCH_BEGIN;
  const guint32 stamp = gdk_event_get_time(event);
  const bool isLater = stamp_ == 0 || static_cast<gint32>(stamp - stamp_) > 0;  // the stamps go round
  if (isPress && isLater) {
    stamp_ = stamp;
    pressed_ = g_get_monotonic_time();
  }
  return FALSE;
}

}  // namespace kivandra::gtk
