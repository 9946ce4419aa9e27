// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gtk/controls/tree_view_control.h"

#include <utility>

#include "platform/gtk/guard.h"

namespace kivandra::gtk {

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
  // The row that has the keyboard goes; whoever has it here is to have it in the new nodes too.
  focusWanted_ = focusWanted_ || gtk_widget_get_focus_child(Widget().gobj()) != nullptr;
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

// --- What a person does with the mouse; for the keyboard see tree_view_keys.cpp ---

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
  if (nodes_.Of(node).expanded == open || nodes_.Of(node).children.empty()) {
    return true;
  }
  // Before the rows go, and the keyboard with them.
  if (!open && nodes_.IsBelow(selected_, node) && !Go(node)) {
    return false;
  }
  if (waiting_.connected()) {
    ShowChanges();  // the list must hold what is counted now
  }
  const std::vector<int> below = nodes_.ShownBelow(node);
  nodes_.Of(node).expanded = open;
  if (const int place = PlaceOf(node); place >= 0) {
    Splice(static_cast<std::size_t>(place) + 1, open ? 0 : below.size(), open ? below : std::vector<int>{});
    Redraw(node);
  }
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
