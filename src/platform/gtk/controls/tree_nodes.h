// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <string>
#include <unordered_map>
#include <vector>

namespace kivandra::gtk {

/// The nodes of a tree control, numbered from 1 in the order of adding, and which of them can be seen. Knows
/// no widgets. An operation on a number that no node has throws PlatformError.
class TreeNodes {
 public:
  struct Node {
    int parent = 0;
    int level = 1;  // of a root
    std::string key;
    std::string text;
    std::string tag;
    std::string image;
    std::string expandedImage;
    bool sorted = false;
    bool expanded = false;
    std::vector<int> children;  // in the order of adding
  };

  void Clear();
  int Add(int parent, const std::string& key, const std::string& text);
  [[nodiscard]] int Count() const { return static_cast<int>(nodes_.size()); }
  [[nodiscard]] const Node& Of(int node) const;
  [[nodiscard]] Node& Of(int node);
  [[nodiscard]] std::string FullPath(int node) const;
  /// The image that a node wears now; empty for none.
  [[nodiscard]] std::string ImageNow(int node) const;

  /// Every node whose ancestors are all expanded, from the top down.
  [[nodiscard]] std::vector<int> Shown() const;
  /// What is shown below a node if the node is expanded.
  [[nodiscard]] std::vector<int> ShownBelow(int node) const;
  /// Whether `node` lies anywhere below `above`.
  [[nodiscard]] bool IsBelow(int node, int above) const;

 private:
  [[nodiscard]] std::vector<int> InOrder(const std::vector<int>& children, bool sorted) const;
  void Append(int node, std::vector<int>& shown) const;

  std::vector<Node> nodes_;
  std::vector<int> roots_;
  std::unordered_map<std::string, int> keys_;
};

}  // namespace kivandra::gtk
