// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtkmm.h>

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/gtk/controls/tree_nodes.h"
#include "platform/gtk/controls/tree_row.h"
#include "platform/gtk/controls/widget_control.h"
#include "platform/tree_view.h"

namespace kivandra::gtk {

/// Over a `GtkListView`, whose list is the nodes that can be seen, from the top down: the toolkit has no
/// tree that assistive tools can read. Changes are gathered and shown at once when the event loop comes
/// round, so that a tree of many nodes is laid out a single time.
///
/// A click on a closed node opens it, a click on the node that is open and chosen already closes it, and so
/// does its arrow. Up and Down walk; Right opens or goes to the first child, Left closes or goes to the
/// parent, as Backspace does; +, - and * open, close, and open all that is below. Letters go to the next node
/// that starts with them.
class TreeViewControl : public WidgetControl, public TreeView {
 public:
  explicit TreeViewControl(Gtk::ListView& list);
  ~TreeViewControl() override;

  void SetFocus() override;
  void Clear() override;
  int AddNode(int parent, const std::string& key, const std::string& text) override;
  [[nodiscard]] int NodeCount() const override { return Alive(), nodes_.Count(); }
  [[nodiscard]] int Children(int node) const override;
  [[nodiscard]] std::string Text(int node) const override { return Alive(), nodes_.Of(node).text; }
  void SetText(int node, const std::string& text) override;
  [[nodiscard]] std::string Tag(int node) const override { return Alive(), nodes_.Of(node).tag; }
  void SetTag(int node, const std::string& tag) override { Alive(), nodes_.Of(node).tag = tag; }
  void SetImage(int node, const std::string& image) override;
  void SetExpandedImage(int node, const std::string& image) override;
  void SetSorted(int node, bool sorted) override;
  void SetExpanded(int node, bool expanded) override;
  [[nodiscard]] std::string FullPath(int node) const override { return Alive(), nodes_.FullPath(node); }
  [[nodiscard]] int SelectedNode() const override { return Alive(), selected_; }
  void SetSelectedNode(int node) override;
  void OnNodeClick(std::function<void(int node)> handler) override { Alive(), click_ = std::move(handler); }
  void OnNodeSelect(std::function<void(int node)> handler) override { Alive(), select_ = std::move(handler); }
  void LetGo() override;

 private:
  void WatchRows(Gtk::ListView& list);
  void WatchFocus(Gtk::ListView& list);
  void WatchKeys(Gtk::ListView& list);

  // The rows in sight of the list.
  void Changed();
  void ShowChanges();
  void Splice(std::size_t at, std::size_t removed, const std::vector<int>& added);
  void Redraw(int node);
  [[nodiscard]] int PlaceOf(int node) const;
  void Select(int node, bool focus);
  bool Reach(int node);
  bool Go(int node);
  void OpenAncestors(int node);

  // What a person does.
  void RowClicked(int node, bool single);
  bool Open(int node, bool open);
  void OpenBelow(int node);
  bool KeyPressed(unsigned keyval);
  bool Walk(unsigned keyval, int node);
  bool Typed(unsigned keyval, int node);
  [[nodiscard]] int NodeStarting(const std::string& folded, int place) const;
  [[nodiscard]] int Cursor() const;

  TreeNodes nodes_;
  std::vector<int> shown_;  // what the list holds, as far as no change waits
  Glib::RefPtr<Gio::ListStore<Glib::Object>> rows_;
  Glib::RefPtr<Gtk::SingleSelection> selection_;
  std::map<int, TreeRow*> bound_;
  std::vector<sigc::connection> connections_;
  sigc::connection waiting_;
  std::shared_ptr<int> filling_ = std::make_shared<int>();  // as long as the nodes keep their numbers
  int selected_ = 0;
  int lastClicked_ = 0;    // a second click on an open node closes it
  bool changing_ = false;  // the list changes: what it tells of its selection is no person's doing
  bool focusWanted_ = false;
  std::string typed_;
  gint64 typedAt_ = 0;
  std::function<void(int)> click_;
  std::function<void(int)> select_;
};

}  // namespace kivandra::gtk
