// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gtk/web/web_drops.h"

#include <array>
#include <sstream>

#include "platform/gtk/web/web_address.h"

namespace kivandra::gtk {
namespace {

constexpr const char* kLinkTypes[] = {"text/uri-list", "_NETSCAPE_URL", nullptr};

bool OffersLink(GdkContentFormats* formats) {
  if (gdk_content_formats_contain_gtype(formats, GDK_TYPE_FILE_LIST) != FALSE) return true;
  for (const char* const* type = kLinkTypes; *type != nullptr; ++type) {
    if (gdk_content_formats_contain_mime_type(formats, *type) != FALSE) return true;
  }
  return false;
}

/// The view on which a button was last pressed; only ever compared.
const LinkDrops* lastPressed = nullptr;

GdkDragAction AnswerTo(GdkDrop* drop) {
  const GdkDragAction offered = gdk_drop_get_actions(drop);
  if ((offered & GDK_ACTION_COPY) != 0) return GDK_ACTION_COPY;
  return (offered & GDK_ACTION_LINK) != 0 ? GDK_ACTION_LINK : GdkDragAction{};
}

/// The first line that is no comment.
std::string FirstLink(const std::string& text) {
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    if (!line.empty() && line.front() != '#') return line;
  }
  return {};
}

}  // namespace

/// A drop whose text is on its way. Every call to GIO holds it.
struct LinkDrops::Reading {
  Reading(std::weak_ptr<LinkDrops> owner, GdkDrop* dropped)
      : drops(std::move(owner)), drop(GDK_DROP(g_object_ref(dropped))) {}
  ~Reading() {
    g_clear_object(&stream);
    g_object_unref(drop);
  }
  Reading(const Reading&) = delete;
  Reading& operator=(const Reading&) = delete;

  static void OnOpened(GObject* /*source*/, GAsyncResult* result, gpointer data) {
    std::unique_ptr<Reading> reading(static_cast<Reading*>(data));
    const char* type = nullptr;
    reading->stream = gdk_drop_read_finish(reading->drop, result, &type, nullptr);
    if (reading->stream == nullptr) {
      gdk_drop_finish(reading->drop, GdkDragAction{});
      return;
    }
    Reading& held = *reading.release();
    g_input_stream_read_all_async(held.stream, held.bytes.data(), held.bytes.size(), G_PRIORITY_DEFAULT,
                                  nullptr, OnRead, &held);
  }
  static void OnRead(GObject* /*source*/, GAsyncResult* result, gpointer data) {
    const std::unique_ptr<Reading> reading(static_cast<Reading*>(data));
    gsize size = 0;
    g_input_stream_read_all_finish(reading->stream, result, &size, nullptr);
    gdk_drop_finish(reading->drop, AnswerTo(reading->drop));
    if (const auto drops = reading->drops.lock()) drops->Dropped(std::string(reading->bytes.data(), size));
  }

  std::weak_ptr<LinkDrops> drops;
  GdkDrop* drop;
  GInputStream* stream = nullptr;
  std::array<char, kLongestAddress> bytes{};
};

void LinkDrops::Start(WebKitWebView* view) {
  GtkEventController* controller = gtk_event_controller_legacy_new();
  gtk_event_controller_set_propagation_phase(controller, GTK_PHASE_CAPTURE);  // before the engine's own
  signals_.Connect<&LinkDrops::OnEvent>(controller, "event", this);
  gtk_widget_add_controller(GTK_WIDGET(view), controller);
}

void LinkDrops::Cut() {
  if (lastPressed == this) lastPressed = nullptr;
  go_ = nullptr;
  signals_.Cut();
}

bool LinkDrops::ComesFromThisPage(GdkDrop* drop) const {
  // A drag begins with a press where it comes from, and a page's link has its HTML beside it.
  return gdk_drop_get_drag(drop) != nullptr && lastPressed == this &&
         gdk_content_formats_contain_mime_type(gdk_drop_get_formats(drop), "text/html") != FALSE;
}

gboolean LinkDrops::OnEvent(GdkEvent* event) {
  const GdkEventType type = gdk_event_get_event_type(event);
  if (type == GDK_BUTTON_PRESS) lastPressed = this;
  if (type != GDK_DROP_START) return FALSE;
  GdkDrop* drop = gdk_dnd_event_get_drop(event);
  if (!OffersLink(gdk_drop_get_formats(drop)) || ComesFromThisPage(drop)) return FALSE;

  gdk_drop_read_async(drop, const_cast<const char**>(kLinkTypes), G_PRIORITY_DEFAULT, nullptr,
                      Reading::OnOpened, new Reading(weak_from_this(), drop));
  return TRUE;
}

void LinkDrops::Dropped(const std::string& text) {
  const std::string link = FirstLink(text);
  const std::string scheme = SchemeOf(link);
  if (go_ && (scheme == "http" || scheme == "https")) go_(link);
}

}  // namespace kivandra::gtk
