// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/control.h"

namespace kivandra {

/// A tree of named nodes. A node is known by its number: the nodes count from 1 in the order of adding, which
/// is the order of the collection, and keep their numbers until Clear. An operation on a number that no node
/// has throws PlatformError. Texts are bytes as a folder tells them: what is not UTF-8 in them is shown by a
/// mark and kept as it is. Adding a node must cost no more with many nodes than with few: trees of 10,000 are
/// filled at once.
class TreeView : public virtual Control {
 public:
  static constexpr ControlKind kKind = ControlKind::TreeView;
  /// What stands between the texts of a full path.
  static constexpr char kPathSeparator = '\\';

  /// Takes every node away.
  virtual void Clear() = 0;
  /// Adds a node behind the children of `parent`, or as a root if that is 0, and gives its number. It has no
  /// tag and no image, is not sorted and not expanded. An empty key is no key; a key that another node has
  /// throws PlatformError.
  virtual int AddNode(int parent, const std::string& key, const std::string& text) = 0;
  [[nodiscard]] virtual int NodeCount() const = 0;
  /// Number of the children of a node.
  [[nodiscard]] virtual int Children(int node) const = 0;
  [[nodiscard]] virtual std::string Text(int node) const = 0;
  virtual void SetText(int node, const std::string& text) = 0;
  /// A text that goes with the node and is not shown.
  [[nodiscard]] virtual std::string Tag(int node) const = 0;
  virtual void SetTag(int node, const std::string& tag) = 0;
  /// Names of pictures: "Leaf", "ClosedBook", "OpenBook", "Library", "ClosedFolder", "OpenFolder"; another
  /// name shows none. Without an image for its expanded state a node keeps the other one.
  virtual void SetImage(int node, const std::string& image) = 0;
  virtual void SetExpandedImage(int node, const std::string& image) = 0;
  /// Whether the children are shown in the order of their texts, as the desktop's language has it and without
  /// regard to case, instead of the order of adding.
  virtual void SetSorted(int node, bool sorted) = 0;
  virtual void SetExpanded(int node, bool expanded) = 0;
  /// The texts of the ancestors and the node from the root down, joined by kPathSeparator.
  [[nodiscard]] virtual std::string FullPath(int node) const = 0;
  /// The node that the cursor stands on, 0 if none. Setting it opens the folders above it and raises no
  /// event.
  [[nodiscard]] virtual int SelectedNode() const = 0;
  virtual void SetSelectedNode(int node) = 0;
  /// A person has clicked a node, or pressed Enter or the space bar on it. The window may close inside.
  virtual void OnNodeClick(std::function<void(int node)> handler) = 0;
  /// A person has brought the cursor to another node, by the mouse or by the keyboard; before the click is
  /// told. The window may close inside.
  virtual void OnNodeSelect(std::function<void(int node)> handler) = 0;
};

}  // namespace kivandra
