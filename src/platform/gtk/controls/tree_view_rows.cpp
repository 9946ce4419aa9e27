// SPDX-License-Identifier: GPL-3.0-or-later
// The rows of a tree: what of its nodes the list holds, and the widgets for those in sight.
#include <algorithm>
#include <utility>

#include "platform/gtk/controls/tree_view_control.h"
#include "platform/gtk/guard.h"

namespace kivandra::gtk {
namespace {

constexpr const char* kNode = "kv-node";  // the number that an object of the list stands for

int NodeOf(GtkListItem* item) {
  gpointer object = gtk_list_item_get_item(item);
  return object == nullptr ? 0 : GPOINTER_TO_INT(g_object_get_data(G_OBJECT(object), kNode));
}

TreeRow* RowOf(const Glib::RefPtr<Gtk::ListItem>& item) { return dynamic_cast<TreeRow*>(item->get_child()); }

}  // namespace

void TreeViewControl::WatchRows(Gtk::ListView& list) {
  auto factory = Gtk::SignalListItemFactory::create();
  connections_.emplace_back(factory->signal_setup().connect([this](const Glib::RefPtr<Gtk::ListItem>& item) {
    auto* row = Gtk::make_managed<TreeRow>();
    row->clicked = [this](TreeRow& clicked, int times) { RowClicked(clicked.Node(), times == 1); };
    row->arrowClicked = [this](TreeRow& clicked) {
      if (const int node = clicked.Node(); node != 0) {
        Open(node, !nodes_.Of(node).expanded);
      }
    };
    item->set_child(*row);
    item->set_activatable(false);
  }));
  connections_.emplace_back(factory->signal_bind().connect([this](const Glib::RefPtr<Gtk::ListItem>& item) {
    TreeRow* row = RowOf(item);
    const int node = NodeOf(item->gobj());
    if (row != nullptr && node != 0 && node <= nodes_.Count()) {
      row->Show(node, nodes_);
      bound_[node] = row;
      if (focusWanted_ && node == selected_) {
        Changed();  // not from inside of the list's layout
      }
    }
  }));
  connections_.emplace_back(factory->signal_unbind().connect([this](const Glib::RefPtr<Gtk::ListItem>& item) {
    if (TreeRow* row = RowOf(item)) {
      const auto found = bound_.find(row->Node());
      if (found != bound_.end() && found->second == row) {
        bound_.erase(found);
      }
      row->Forget();
    }
  }));
  list.set_factory(factory);
}

void TreeViewControl::Changed() {
  if (!waiting_.connected()) {
    // Before the window is laid out and drawn again.
    waiting_ = Glib::signal_idle().connect([this] { return Guarded([this] { ShowChanges(); }), false; },
                                           Glib::PRIORITY_DEFAULT);
  }
}

void TreeViewControl::ShowChanges() {
  waiting_.disconnect();
  const bool focused = gtk_widget_get_focus_child(Widget().gobj()) != nullptr || focusWanted_;
  if (std::vector<int> shown = nodes_.Shown(); shown != shown_) {
    Splice(0, shown_.size(), shown);
  }
  for (const auto& [node, row] : bound_) {
    row->Show(node, nodes_);
  }
  if (selected_ == 0 && focused) {
    selected_ = Cursor();
  }
  Select(selected_, focused);
}

void TreeViewControl::Splice(std::size_t at, std::size_t removed, const std::vector<int>& added) {
  std::vector<GObject*> items;
  items.reserve(added.size());
  for (const int node : added) {
    items.push_back(G_OBJECT(g_object_new(G_TYPE_OBJECT, nullptr)));
    g_object_set_data(items.back(), kNode, GINT_TO_POINTER(node));
  }
  const auto from = shown_.begin() + static_cast<std::ptrdiff_t>(at);
  shown_.insert(shown_.erase(from, from + static_cast<std::ptrdiff_t>(removed)), added.begin(), added.end());
  const bool outer = std::exchange(changing_, true);
  g_list_store_splice(rows_->gobj(), static_cast<guint>(at), static_cast<guint>(removed),
                      reinterpret_cast<gpointer*>(items.data()), static_cast<guint>(items.size()));
  changing_ = outer;
  std::for_each(items.begin(), items.end(), g_object_unref);
}

void TreeViewControl::Redraw(int node) {
  if (const auto found = bound_.find(node); found != bound_.end()) {
    found->second->Show(node, nodes_);
  }
}

int TreeViewControl::PlaceOf(int node) const {
  const auto found = std::find(shown_.begin(), shown_.end(), node);
  return found == shown_.end() ? -1 : static_cast<int>(found - shown_.begin());
}

/// Lays the cursor on a shown node and brings it into sight; with `focus` it gets the keyboard.
void TreeViewControl::Select(int node, bool focus) {
  const int place = node == 0 ? -1 : PlaceOf(node);
  if (place < 0) {
    return;
  }
  selected_ = node;
  const bool outer = std::exchange(changing_, true);
  selection_->set_selected(static_cast<guint>(place));
  changing_ = outer;
  gtk_widget_activate_action(Widget().gobj(), "list.scroll-to-item", "u", static_cast<guint>(place));
  // The list makes the row of the place that it scrolls to at once, if it has been laid out.
  const auto row = bound_.find(node);
  focusWanted_ = focus && row == bound_.end();
  if (focus && row != bound_.end()) {
    row->second->get_parent()->grab_focus();
  }
}

void TreeViewControl::OpenAncestors(int node) {
  for (int each = nodes_.Of(node).parent; each != 0; each = nodes_.Of(each).parent) {
    nodes_.Of(each).expanded = true;
  }
}

}  // namespace kivandra::gtk
