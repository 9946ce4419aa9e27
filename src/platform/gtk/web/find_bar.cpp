// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gtk/web/find_bar.h"

#include <gtkmm.h>

#include <memory>
#include <string>

#include "platform/gtk/mdi/mdi_area.h"
#include "platform/gtk/web/web_signals.h"

namespace kivandra::gtk {
namespace {

/// The data of a view under this name: the view itself if it has no open bar, else the bar's box.
constexpr char kBarOfView[] = "kivandra-find-bar";
/// What a bar's box holds alive under this name.
constexpr char kBarOfBox[] = "kivandra-find";

/// More are not counted.
constexpr guint kMostCounted = 1000;

/// A button with a picture alone; the name is for those who can't see it, and its tool tip.
GtkWidget* NewButton(const char* symbol, const char* name) {
  GtkWidget* button = gtk_button_new_from_icon_name(symbol);
  gtk_widget_add_css_class(button, "kv-child-btn");
  gtk_widget_set_tooltip_text(button, name);
  gtk_accessible_update_property(GTK_ACCESSIBLE(button), GTK_ACCESSIBLE_PROPERTY_LABEL, name, -1);
  return button;
}

/// One open bar. Its box holds it, and lies in the place of the view.
class FindBar : public std::enable_shared_from_this<FindBar> {
 public:
  static void Open(WebKitWebView* view, GtkBox* place) {
    auto bar = std::shared_ptr<FindBar>(new FindBar(view));
    bar->Start(place);
    g_object_set_data_full(G_OBJECT(bar->box_), kBarOfBox, new std::shared_ptr<FindBar>(bar),
                           [](gpointer held) { delete static_cast<std::shared_ptr<FindBar>*>(held); });
    g_object_set_data(G_OBJECT(view), kBarOfView, bar->box_);
    bar->TakeFocus();
  }
  static FindBar& In(gpointer box) {
    return **static_cast<std::shared_ptr<FindBar>*>(g_object_get_data(G_OBJECT(box), kBarOfBox));
  }
  ~FindBar() {
    signals_.Cut();
    g_object_set_data(G_OBJECT(view_), kBarOfView, view_);
    g_object_unref(view_);
  }
  FindBar(const FindBar&) = delete;
  FindBar& operator=(const FindBar&) = delete;

  void TakeFocus() {
    gtk_widget_grab_focus(entry_);
    gtk_editable_select_region(GTK_EDITABLE(entry_), 0, -1);
  }

 private:
  explicit FindBar(WebKitWebView* view)
      : view_(WEBKIT_WEB_VIEW(g_object_ref(view))), finder_(webkit_web_view_get_find_controller(view)) {}

  void Start(GtkBox* place) {
    Build();
    signals_.Connect<&FindBar::OnChanged>(entry_, "changed", this);
    signals_.Connect<&FindBar::OnNext>(next_, "clicked", this);
    signals_.Connect<&FindBar::OnPrevious>(previous_, "clicked", this);
    signals_.Connect<&FindBar::OnClose>(close_, "clicked", this);
    signals_.Connect<&FindBar::OnCounted>(finder_, "counted-matches", this);
    signals_.Connect<&FindBar::OnLoadChanged>(view_, "load-changed", this);
    GtkEventController* keys = gtk_event_controller_key_new();
    gtk_event_controller_set_propagation_phase(keys, GTK_PHASE_CAPTURE);  // before the entry's own keys
    signals_.Connect<&FindBar::OnKey>(keys, "key-pressed", this);
    gtk_widget_add_controller(box_, keys);
    gtk_orientable_set_orientation(GTK_ORIENTABLE(place), GTK_ORIENTATION_VERTICAL);
    gtk_box_prepend(place, box_);
  }

  void Build() {
    box_ = gtk_box_new(GTK_ORIENTATION_HORIZONTAL, 6);
    gtk_widget_add_css_class(box_, "kv-child-row");
    gtk_widget_add_css_class(box_, "kv-find");
    gtk_accessible_update_property(GTK_ACCESSIBLE(box_), GTK_ACCESSIBLE_PROPERTY_LABEL, "Find on this page",
                                   -1);
    entry_ = gtk_entry_new();
    gtk_widget_set_hexpand(entry_, TRUE);
    gtk_editable_set_width_chars(GTK_EDITABLE(entry_), 1);
    gtk_entry_set_placeholder_text(GTK_ENTRY(entry_), "Find on this page");
    gtk_accessible_update_property(GTK_ACCESSIBLE(entry_), GTK_ACCESSIBLE_PROPERTY_LABEL,
                                   "Words to find on this page", -1);
    previous_ = NewButton("chevron-up-symbolic", "Previous place");
    next_ = NewButton("chevron-down-symbolic", "Next place");
    close_ = NewButton("win-close-symbolic", "Close the search");
    count_ = GTK_WIDGET(g_object_new(GTK_TYPE_LABEL, "accessible-role", GTK_ACCESSIBLE_ROLE_STATUS, nullptr));
    gtk_widget_add_css_class(count_, "kv-find-count");
    for (GtkWidget* part : {entry_, previous_, next_, count_, close_}) gtk_box_append(GTK_BOX(box_), part);
    ShowCount("");
  }

  [[nodiscard]] const char* Words() const { return gtk_editable_get_text(GTK_EDITABLE(entry_)); }

  void ShowCount(const std::string& text) {
    gtk_label_set_text(GTK_LABEL(count_), text.c_str());
    gtk_accessible_update_property(GTK_ACCESSIBLE(count_), GTK_ACCESSIBLE_PROPERTY_LABEL, text.c_str(), -1);
    gtk_widget_set_visible(count_, text.empty() ? FALSE : TRUE);
  }

  /// Begins at the page's selection, or at its beginning, and goes on from place to place.
  void Search(bool backwards) {
    if (*Words() == '\0') return;
    if (!searching_) {
      searching_ = true;
      webkit_find_controller_search(finder_, Words(), Options(backwards), kMostCounted);
    } else if (backwards) {
      webkit_find_controller_search_previous(finder_);
    } else {
      webkit_find_controller_search_next(finder_);
    }
  }

  void Count() { webkit_find_controller_count_matches(finder_, Words(), Options(false), kMostCounted); }

  static guint32 Options(bool backwards) {
    constexpr guint32 kForwards = WEBKIT_FIND_OPTIONS_CASE_INSENSITIVE | WEBKIT_FIND_OPTIONS_WRAP_AROUND;
    return backwards ? kForwards | WEBKIT_FIND_OPTIONS_BACKWARDS : kForwards;
  }

  void OnChanged() {
    searching_ = false;
    if (*Words() == '\0') {
      webkit_find_controller_search_finish(finder_);
      ShowCount("");
      return;
    }
    Search(false);
    Count();
  }
  void OnNext() { Search(false); }
  void OnPrevious() { Search(true); }

  void OnClose() {
    signals_.Cut();
    webkit_find_controller_search_finish(finder_);
    gtk_widget_grab_focus(GTK_WIDGET(view_));
    gtk_box_remove(GTK_BOX(gtk_widget_get_parent(box_)), box_);
  }

  void OnCounted(guint matches) {
    if (*Words() == '\0') return;
    if (matches == 0) {
      ShowCount("Not on this page");
    } else if (matches > kMostCounted) {
      ShowCount("More than " + std::to_string(kMostCounted));
    } else {
      ShowCount(std::to_string(matches) + " found");
    }
  }

  void OnLoadChanged(WebKitLoadEvent event) {
    if (event == WEBKIT_LOAD_COMMITTED) {
      searching_ = false;  // the new page has no place where the search stood
      ShowCount("");
    } else if (event == WEBKIT_LOAD_FINISHED && *Words() != '\0') {
      Count();
    }
  }

  gboolean OnKey(guint keyval, guint /*keycode*/, GdkModifierType state) {
    if (keyval == GDK_KEY_Escape) {
      OnClose();
      return TRUE;
    }
    const bool enter = keyval == GDK_KEY_Return || keyval == GDK_KEY_KP_Enter || keyval == GDK_KEY_ISO_Enter;
    if (!enter || gtk_widget_is_ancestor(gtk_root_get_focus(gtk_widget_get_root(box_)), entry_) == FALSE) {
      return FALSE;  // on a button it presses the button
    }
    Search((state & GDK_SHIFT_MASK) != 0);
    return TRUE;
  }

  WebKitWebView* view_;
  WebKitFindController* finder_;  // the view's
  // Parts of the box, which holds this object.
  GtkWidget* box_ = nullptr;
  GtkWidget* entry_ = nullptr;
  GtkWidget* previous_ = nullptr;
  GtkWidget* next_ = nullptr;
  GtkWidget* count_ = nullptr;
  GtkWidget* close_ = nullptr;
  bool searching_ = false;  // the engine knows the words, on this page
  SignalConnections signals_;
};

/// The widget as one of the program's own kinds; null if it is none.
template <typename Kind>
Kind* As(GtkWidget* widget) {
  return dynamic_cast<Kind*>(Glib::ObjectBase::_get_current_wrapper(G_OBJECT(widget)));
}

/// The first view at or below a widget that shows pages to search; among child windows, only in the active
/// one.
WebKitWebView* PageInside(GtkWidget* widget) {
  if (WEBKIT_IS_WEB_VIEW(widget)) {
    return g_object_get_data(G_OBJECT(widget), kBarOfView) != nullptr ? WEBKIT_WEB_VIEW(widget) : nullptr;
  }
  if (const auto* area = As<MdiArea>(widget)) {
    MdiChild* active = area->Active();
    return active != nullptr ? PageInside(GTK_WIDGET(active->gobj())) : nullptr;
  }
  for (GtkWidget* child = gtk_widget_get_first_child(widget); child != nullptr;
       child = gtk_widget_get_next_sibling(child)) {
    if (WebKitWebView* page = PageInside(child); page != nullptr) return page;
  }
  return nullptr;
}

WebKitWebView* PageOf(GtkWidget* anywhere) {
  for (GtkWidget* widget = anywhere; widget != nullptr; widget = gtk_widget_get_parent(widget)) {
    if (WebKitWebView* page = PageInside(widget); page != nullptr) return page;
    if (As<MdiChild>(widget) != nullptr) return nullptr;
  }
  return nullptr;
}

}  // namespace

bool ShowFindBar(GtkWidget* anywhere) {
  WebKitWebView* view = PageOf(anywhere);
  GtkWidget* place = view != nullptr ? gtk_widget_get_parent(GTK_WIDGET(view)) : nullptr;
  if (!GTK_IS_BOX(place)) return false;
  gpointer box = g_object_get_data(G_OBJECT(view), kBarOfView);
  if (box == view) {
    FindBar::Open(view, GTK_BOX(place));
  } else {
    FindBar::In(box).TakeFocus();
  }
  return true;
}

void OfferFindBar(WebKitWebView* view) { g_object_set_data(G_OBJECT(view), kBarOfView, view); }

}  // namespace kivandra::gtk
