// SPDX-License-Identifier: GPL-3.0-or-later
#include "fakes/fake_tree_view.h"

#include <algorithm>
#include <cctype>
#include <utility>

namespace kivandra::fakes {

void FakeTreeView::Clear() {
  Say("Clear");
  nodes.clear();
  selected = 0;
}

int FakeTreeView::AddNode(int parent, const std::string& key, const std::string& text) {
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

int FakeTreeView::NodeCount() const { return Say("NodeCount"), static_cast<int>(nodes.size()); }

int FakeTreeView::Children(int node) const {
  Say("Children " + std::to_string(node));
  return static_cast<int>(Of(node).children.size());
}

std::string FakeTreeView::Text(int node) const { return Of(node).text; }

void FakeTreeView::SetText(int node, const std::string& text) { Set(node, "Text", &Node::text, text); }

std::string FakeTreeView::Tag(int node) const { return Say("Tag " + std::to_string(node)), Of(node).tag; }

void FakeTreeView::SetTag(int node, const std::string& tag) { Set(node, "Tag", &Node::tag, tag); }

void FakeTreeView::SetImage(int node, const std::string& image) { Set(node, "Image", &Node::image, image); }

void FakeTreeView::SetExpandedImage(int node, const std::string& image) {
  Set(node, "ExpandedImage", &Node::expandedImage, image);
}

void FakeTreeView::SetSorted(int node, bool sorted) {
  Say("Sorted " + std::to_string(node));
  Of(node).sorted = sorted;
}

void FakeTreeView::SetExpanded(int node, bool expanded) {
  Say("Expanded " + std::to_string(node));
  Of(node).expanded = expanded;
}

std::string FakeTreeView::FullPath(int node) const {
  const Node& found = Of(node);
  return found.parent == 0 ? found.text : FullPath(found.parent) + kPathSeparator + found.text;
}

int FakeTreeView::SelectedNode() const { return Say("SelectedNode"), selected; }

void FakeTreeView::SetSelectedNode(int node) {
  (void)Of(node);
  Say("SelectedNode = " + std::to_string(node));
  selected = node;
}

void FakeTreeView::OnNodeClick(std::function<void(int)> handler) { click = std::move(handler); }

void FakeTreeView::OnNodeSelect(std::function<void(int)> handler) { select = std::move(handler); }

void FakeTreeView::Click(const std::string& text) {
  WalkTo(text);
  if (const auto handler = click) {
    handler(selected);
  }
}

void FakeTreeView::WalkTo(const std::string& text) {
  const int node = Find(text);
  if (const auto handler = select; std::exchange(selected, node) != node && handler) {
    handler(node);
  }
}

int FakeTreeView::Find(const std::string& text) const {
  for (std::size_t at = 0; at < nodes.size(); ++at) {
    if (nodes[at].text == text) {
      return static_cast<int>(at) + 1;
    }
  }
  return 0;
}

const FakeTreeView::Node& FakeTreeView::At(const std::string& text) const { return Of(Find(text)); }

std::vector<std::string> FakeTreeView::Shown(const std::string& text) const {
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

const FakeTreeView::Node& FakeTreeView::Of(int node) const {
  if (node < 1 || static_cast<std::size_t>(node) > nodes.size()) {
    throw PlatformError(35600, "Index out of bounds");
  }
  return nodes[static_cast<std::size_t>(node) - 1];
}

FakeTreeView::Node& FakeTreeView::Of(int node) { return const_cast<Node&>(std::as_const(*this).Of(node)); }

void FakeTreeView::Set(int node, const char* what, std::string Node::*place, const std::string& value) {
  Node& found = Of(node);
  Say(std::string(what) + " " + std::to_string(node) + " = " + Quoted(value));
  found.*place = value;
}

}  // namespace kivandra::fakes
