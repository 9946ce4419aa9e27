// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <cctype>
#include <functional>
#include <string>
#include <utility>
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
  void Clear() override {
    Say("Clear");
    nodes.clear();
    selected = 0;
  }
  int AddNode(int parent, const std::string& key, const std::string& text) override {
    if (parent != 0) {
      (void)Of(parent);
    }
    if (!key.empty() &&
        std::any_of(nodes.begin(), nodes.end(), [&](const Node& node) { return node.key == key; })) {
      throw PlatformError(35602, "Key is not unique in collection");
    }
    Say("AddNode " + std::to_string(parent) + ", " + Quoted(key) + ", " + Quoted(text));
    Node made;
    made.parent = parent;
    made.key = key;
    made.text = text;
    nodes.push_back(std::move(made));
    const int number = static_cast<int>(nodes.size());
    if (parent != 0) {
      Of(parent).children.push_back(number);
    }
    return number;
  }
  [[nodiscard]] int NodeCount() const override { return Say("NodeCount"), static_cast<int>(nodes.size()); }
  [[nodiscard]] int Children(int node) const override {
    Say("Children " + std::to_string(node));
    return static_cast<int>(Of(node).children.size());
  }
  [[nodiscard]] std::string Text(int node) const override { return Of(node).text; }
  void SetText(int node, const std::string& text) override { Set(node, "Text", &Node::text, text); }
  [[nodiscard]] std::string Tag(int node) const override {
    return Say("Tag " + std::to_string(node)), Of(node).tag;
  }
  void SetTag(int node, const std::string& tag) override { Set(node, "Tag", &Node::tag, tag); }
  void SetImage(int node, const std::string& image) override { Set(node, "Image", &Node::image, image); }
  void SetExpandedImage(int node, const std::string& image) override {
    Set(node, "ExpandedImage", &Node::expandedImage, image);
  }
  void SetSorted(int node, bool sorted) override {
    Say("Sorted " + std::to_string(node));
    Of(node).sorted = sorted;
  }
  void SetExpanded(int node, bool expanded) override {
    Say("Expanded " + std::to_string(node));
    Of(node).expanded = expanded;
  }
  [[nodiscard]] std::string FullPath(int node) const override {
    const Node& found = Of(node);
    return found.parent == 0 ? found.text : FullPath(found.parent) + kPathSeparator + found.text;
  }
  [[nodiscard]] int SelectedNode() const override { return Say("SelectedNode"), selected; }
  void SetSelectedNode(int node) override {
    (void)Of(node);
    Say("SelectedNode = " + std::to_string(node));
    selected = node;
  }
  void OnNodeClick(std::function<void(int)> handler) override { click = std::move(handler); }
  void OnNodeSelect(std::function<void(int)> handler) override { select = std::move(handler); }

  /// A person clicks the node with this text; it must be there.
  void Click(const std::string& text) {
    WalkTo(text);
    if (const auto handler = click) {
      handler(selected);
    }
  }
  /// A person walks to the node with this text by the keyboard; it must be there.
  void WalkTo(const std::string& text) {
    const int node = Find(text);
    if (const auto handler = select; std::exchange(selected, node) != node && handler) {
      handler(node);
    }
  }
  /// Number of the first node with this text, 0 if there is none.
  [[nodiscard]] int Find(const std::string& text) const {
    for (std::size_t at = 0; at < nodes.size(); ++at) {
      if (nodes[at].text == text) {
        return static_cast<int>(at) + 1;
      }
    }
    return 0;
  }
  [[nodiscard]] const Node& At(const std::string& text) const { return Of(Find(text)); }
  /// The texts of a node's children as they are shown.
  [[nodiscard]] std::vector<std::string> Shown(const std::string& text) const {
    std::vector<std::string> texts;
    for (const int child : At(text).children) {
      texts.push_back(Of(child).text);
    }
    if (At(text).sorted) {
      std::stable_sort(texts.begin(), texts.end(), [](const std::string& one, const std::string& other) {
        return std::lexicographical_compare(
            one.begin(), one.end(), other.begin(), other.end(),
            [](unsigned char a, unsigned char b) { return std::tolower(a) < std::tolower(b); });
      });
    }
    return texts;
  }

  std::vector<Node> nodes;
  int selected = 0;
  std::function<void(int)> click;
  std::function<void(int)> select;

 private:
  [[nodiscard]] const Node& Of(int node) const {
    if (node < 1 || static_cast<std::size_t>(node) > nodes.size()) {
      throw PlatformError(35600, "Index out of bounds");
    }
    return nodes[static_cast<std::size_t>(node) - 1];
  }
  Node& Of(int node) { return const_cast<Node&>(std::as_const(*this).Of(node)); }
  void Set(int node, const char* what, std::string Node::*place, const std::string& value) {
    Node& found = Of(node);
    Say(std::string(what) + " " + std::to_string(node) + " = " + Quoted(value));
    found.*place = value;
  }
};

}  // namespace kivandra::fakes
