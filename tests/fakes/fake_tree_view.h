// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "fakes/fake_controls.h"
#include "platform/tree_view.h"

namespace kivandra::fakes {

/// A tree in memory. What it shows is what a person would see of it.
class FakeTreeView : public FakeControl, public TreeView {
 public:
  struct Node {
    int parent = 0;
    std::string key;
    std::string text;
    std::string tag;
    std::string image;
    std::string expandedImage;
    bool sorted = false;
    bool expanded = false;
    std::vector<int> children;
  };

  using FakeControl::FakeControl;
  void Clear() override;
  int AddNode(int parent, const std::string& key, const std::string& text) override;
  [[nodiscard]] int NodeCount() const override;
  [[nodiscard]] int Children(int node) const override;
  [[nodiscard]] std::string Text(int node) const override;
  void SetText(int node, const std::string& text) override;
  [[nodiscard]] std::string Tag(int node) const override;
  void SetTag(int node, const std::string& tag) override;
  void SetImage(int node, const std::string& image) override;
  void SetExpandedImage(int node, const std::string& image) override;
  void SetSorted(int node, bool sorted) override;
  void SetExpanded(int node, bool expanded) override;
  [[nodiscard]] std::string FullPath(int node) const override;
  [[nodiscard]] int SelectedNode() const override;
  void SetSelectedNode(int node) override;
  void OnNodeClick(std::function<void(int)> handler) override;
  void OnNodeSelect(std::function<void(int)> handler) override;

  /// A person clicks the node with this text; it must be there.
  void Click(const std::string& text);
  /// A person walks to the node with this text by the keyboard; it must be there.
  void WalkTo(const std::string& text);
  /// Number of the first node with this text, 0 if there is none.
  [[nodiscard]] int Find(const std::string& text) const;
  [[nodiscard]] const Node& At(const std::string& text) const;
  /// The texts of a node's children as they are shown.
  [[nodiscard]] std::vector<std::string> Shown(const std::string& text) const;

  std::vector<Node> nodes;
  int selected = 0;
  std::function<void(int)> click;
  std::function<void(int)> select;

 private:
  [[nodiscard]] const Node& Of(int node) const;
  Node& Of(int node);
  void Set(int node, const char* what, std::string Node::*place, const std::string& value);
};

}  // namespace kivandra::fakes
