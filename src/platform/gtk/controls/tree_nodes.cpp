// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gtk/controls/tree_nodes.h"

#include <glib.h>

#include <algorithm>
#include <memory>
#include <utility>

#include "platform/gtk/utf8_text.h"
#include "platform/platform_error.h"
#include "platform/tree_view.h"

namespace kivandra::gtk {
namespace {

constexpr long kIndexOutOfBounds = 35600;
constexpr long kKeyNotUnique = 35602;

/// What the desktop's language sorts a text by, without regard to case.
std::string SortKey(const std::string& text) {
  using Text = std::unique_ptr<char, decltype(&g_free)>;
  const Text folded(g_utf8_casefold(ValidText(text).c_str(), -1), &g_free);
  const Text key(g_utf8_collate_key(folded.get(), -1), &g_free);
  return key.get();
}

}  // namespace

void TreeNodes::Clear() {
  nodes_.clear();
  roots_.clear();
  keys_.clear();
}

int TreeNodes::Add(int parent, const std::string& key, const std::string& text) {
  const int level = parent == 0 ? 1 : Of(parent).level + 1;
  const int number = Count() + 1;
  if (!key.empty() && !keys_.emplace(key, number).second) {
    throw PlatformError(kKeyNotUnique, "another node has the key " + key);
  }
  Node made;
  made.parent = parent;
  made.level = level;
  made.key = key;
  made.text = text;
  nodes_.push_back(std::move(made));
  (parent == 0 ? roots_ : Of(parent).children).push_back(number);
  return number;
}

const TreeNodes::Node& TreeNodes::Of(int node) const {
  if (node < 1 || node > Count()) {
    throw PlatformError(kIndexOutOfBounds, "the tree has no node " + std::to_string(node));
  }
  return nodes_[static_cast<std::size_t>(node) - 1];
}

TreeNodes::Node& TreeNodes::Of(int node) { return const_cast<Node&>(std::as_const(*this).Of(node)); }

std::string TreeNodes::FullPath(int node) const {
  std::vector<int> way;
  (void)Of(node);
  for (int each = node; each != 0; each = Of(each).parent) {
    way.push_back(each);
  }
  std::string path;
  std::for_each(way.rbegin(), way.rend(), [&](int each) {
    path += (each == way.back() ? "" : std::string(1, TreeView::kPathSeparator)) + Of(each).text;
  });
  return path;
}

std::string TreeNodes::ImageNow(int node) const {
  const Node& found = Of(node);
  const bool open = found.expanded && !found.children.empty() && !found.expandedImage.empty();
  return open ? found.expandedImage : found.image;
}

std::vector<int> TreeNodes::InOrder(const std::vector<int>& children, bool sorted) const {
  if (!sorted) {
    return children;
  }
  std::vector<std::pair<std::string, int>> keyed;
  keyed.reserve(children.size());
  for (const int child : children) {
    keyed.emplace_back(SortKey(Of(child).text), child);
  }
  std::sort(keyed.begin(), keyed.end());  // those with one key in the order of adding
  std::vector<int> order;
  order.reserve(keyed.size());
  for (const auto& [key, child] : keyed) {
    order.push_back(child);
  }
  return order;
}

void TreeNodes::Append(int node, std::vector<int>& shown) const {
  shown.push_back(node);
  if (Of(node).expanded) {
    for (const int child : InOrder(Of(node).children, Of(node).sorted)) {
      Append(child, shown);
    }
  }
}

std::vector<int> TreeNodes::Shown() const {
  std::vector<int> shown;
  for (const int root : roots_) {
    Append(root, shown);
  }
  return shown;
}

std::vector<int> TreeNodes::ShownBelow(int node) const {
  std::vector<int> shown;
  for (const int child : InOrder(Of(node).children, Of(node).sorted)) {
    Append(child, shown);
  }
  return shown;
}

bool TreeNodes::IsBelow(int node, int above) const {
  for (int each = node == 0 ? 0 : Of(node).parent; each != 0; each = Of(each).parent) {
    if (each == above) {
      return true;
    }
  }
  return false;
}

}  // namespace kivandra::gtk
