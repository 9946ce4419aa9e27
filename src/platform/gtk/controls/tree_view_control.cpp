// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gtk/controls/tree_view_control.h"

#include <algorithm>
#include <utility>

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

TreeViewControl::TreeViewControl(Gtk::ListView& list)
    : WidgetControl(list),
      rows_(Gio::ListStore<Glib::Object>::create()),
      selection_(Gtk::SingleSelection::create(rows_)) {
  selection_->set_autoselect(false);
  selection_->set_can_unselect(true);
  connections_.emplace_back(selection_->property_selected().signal_changed().connect([this] {
    const guint place = selection_->get_selected();
    if (!changing_ && place < shown_.size()) {
      Reach(shown_[place]);
    }
  }));
  WatchRows(list);
  WatchKeys(list);
  list.set_model(selection_);
  // A window that opens looks for what can have the keyboard: rows, not an empty list.
  connections_.emplace_back(list.signal_realize().connect([this] { Guarded([this] { ShowChanges(); }); }));
  connections_.emplace_back(list.signal_map().connect([this] { Changed(); }));
  WatchFocus(list);
}

TreeViewControl::~TreeViewControl() { TreeViewControl::LetGo(); }

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

/// Who comes in by the keyboard stands on a node.
void TreeViewControl::WatchFocus(Gtk::ListView& list) {
  auto focus = Gtk::EventControllerFocus::create();
  connections_.emplace_back(focus->signal_enter().connect([this] {
    if (selected_ == 0) {
      focusWanted_ = true;
      Changed();
    }
  }));
  list.add_controller(focus);
}

void TreeViewControl::SetFocus() {
  Alive();
  ShowChanges();
  Select(selected_ != 0 || shown_.empty() ? selected_ : shown_.front(), true);
}

void TreeViewControl::Clear() {
  Alive();
  nodes_.Clear();
  selected_ = 0;
  lastClicked_ = 0;
  filling_ = std::make_shared<int>();
  // At once: nothing may be clicked that is no more.
  Splice(0, shown_.size(), {});
}

int TreeViewControl::AddNode(int parent, const std::string& key, const std::string& text) {
  Alive();
  const int node = nodes_.Add(parent, key, text);
  Changed();
  return node;
}

int TreeViewControl::Children(int node) const {
  return Alive(), static_cast<int>(nodes_.Of(node).children.size());
}

void TreeViewControl::SetText(int node, const std::string& text) {
  Alive();
  nodes_.Of(node).text = text;
  const int parent = nodes_.Of(node).parent;
  if (parent != 0 && nodes_.Of(parent).sorted) {
    Changed();
  } else {
    Redraw(node);
  }
}

void TreeViewControl::SetImage(int node, const std::string& image) {
  Alive();
  nodes_.Of(node).image = image;
  Redraw(node);
}

void TreeViewControl::SetExpandedImage(int node, const std::string& image) {
  Alive();
  nodes_.Of(node).expandedImage = image;
  Redraw(node);
}

void TreeViewControl::SetSorted(int node, bool sorted) {
  Alive();
  nodes_.Of(node).sorted = sorted;
  Changed();
}

void TreeViewControl::SetExpanded(int node, bool expanded) {
  Alive();
  nodes_.Of(node).expanded = expanded;
  Changed();
}

void TreeViewControl::SetSelectedNode(int node) {
  Alive();
  (void)nodes_.Of(node);
  OpenAncestors(node);
  selected_ = node;
  Changed();
}

void TreeViewControl::LetGo() {
  for (auto& connection : connections_) {
    connection.disconnect();
  }
  connections_.clear();
  waiting_.disconnect();
  for (auto& [node, row] : bound_) {
    row->clicked = nullptr;
    row->arrowClicked = nullptr;
  }
  bound_.clear();
  filling_.reset();
  click_ = nullptr;
  select_ = nullptr;
  WidgetControl::LetGo();
}

// --- The rows in sight ---

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

/// A person has brought the cursor here. False if the tree is another one afterwards, or gone.
bool TreeViewControl::Reach(int node) {
  const std::weak_ptr<int> tree = filling_;
  if (std::exchange(selected_, node) != node) {
    Raise(select_, node);
  }
  return !tree.expired();
}

/// A person goes to a shown node.
bool TreeViewControl::Go(int node) {
  const int before = selected_;
  Select(node, true);
  selected_ = before;
  return PlaceOf(node) < 0 || Reach(node);
}

void TreeViewControl::OpenAncestors(int node) {
  for (int each = nodes_.Of(node).parent; each != 0; each = nodes_.Of(each).parent) {
    nodes_.Of(each).expanded = true;
  }
}

// --- What a person does with the mouse; for the keyboard see tree_view_keys.cpp ---

void TreeViewControl::RowClicked(int node, bool single) {
  if (node == 0 || node > nodes_.Count()) {
    return;
  }
  const bool again = std::exchange(lastClicked_, node) == node;
  if (Go(node) && Open(node, !(nodes_.Of(node).expanded && again && single))) {
    Raise(click_, node);  // nothing of this object behind it, since it may be gone
  }
}

/// A person opens or closes a shown node. False if the tree is another one afterwards, or gone.
bool TreeViewControl::Open(int node, bool open) {
  TreeNodes::Node& found = nodes_.Of(node);
  const int place = PlaceOf(node);
  if (found.expanded == open || found.children.empty() || place < 0) {
    return true;
  }
  // Before the rows go, and the keyboard with them.
  if (!open && nodes_.IsBelow(selected_, node) && !Go(node)) {
    return false;
  }
  const std::vector<int> below = nodes_.ShownBelow(node);
  found.expanded = open;
  const auto next = static_cast<std::size_t>(place) + 1;
  Splice(next, open ? 0 : below.size(), open ? below : std::vector<int>{});
  Redraw(node);
  return true;
}

void TreeViewControl::OpenBelow(int node) {
  nodes_.Of(node).expanded = true;
  for (int each = 1; each <= nodes_.Count(); ++each) {
    if (nodes_.IsBelow(each, node)) {
      nodes_.Of(each).expanded = true;
    }
  }
  ShowChanges();
}

}  // namespace kivandra::gtk
