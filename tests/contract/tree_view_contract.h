// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>

#include "platform/platform_error.h"
#include "platform/tree_view.h"

namespace kivandra::contract {

// What a tree without nodes must do, the fake one and that of the toolkit.

inline void TreeKeepsWhatItIsGiven(TreeView& tree) {
  const int one = tree.AddNode(0, "Root", "/home/kid");
  const int two = tree.AddNode(one, {}, "caf\xE9");
  const int three = tree.AddNode(two, {}, "inner");
  tree.SetTag(two, "http://x/");
  EXPECT_EQ(one, 1);
  EXPECT_EQ(two, 2);
  EXPECT_EQ(tree.NodeCount(), 3);
  EXPECT_EQ(tree.Children(one), 1);
  EXPECT_EQ(tree.Children(three), 0);
  EXPECT_EQ(tree.Text(two), "caf\xE9");
  EXPECT_EQ(tree.Tag(one), "");
  EXPECT_EQ(tree.Tag(two), "http://x/");
  EXPECT_EQ(tree.FullPath(one), "/home/kid");
  EXPECT_EQ(tree.FullPath(three), "/home/kid\\caf\xE9\\inner");
  tree.SetText(one, "");
  EXPECT_EQ(tree.FullPath(two), "\\caf\xE9");
  EXPECT_EQ(tree.SelectedNode(), 0);
  tree.SetSelectedNode(three);
  EXPECT_EQ(tree.SelectedNode(), three);
  tree.Clear();
  EXPECT_EQ(tree.NodeCount(), 0);
  EXPECT_EQ(tree.SelectedNode(), 0);
  EXPECT_EQ(tree.AddNode(0, "Root", "again"), 1);  // its key is free again
}

inline void TreeRefusesWhatCannotBe(TreeView& tree) {
  tree.AddNode(0, "Root", "r");
  EXPECT_THROW(tree.AddNode(0, "Root", "s"), PlatformError);
  EXPECT_THROW(tree.AddNode(7, {}, "x"), PlatformError);
  EXPECT_EQ(tree.NodeCount(), 1);
  for (const int node : {-1, 0, 2}) {
    EXPECT_THROW((void)tree.Text(node), PlatformError);
    EXPECT_THROW((void)tree.Tag(node), PlatformError);
    EXPECT_THROW((void)tree.Children(node), PlatformError);
    EXPECT_THROW((void)tree.FullPath(node), PlatformError);
    EXPECT_THROW(tree.SetText(node, "x"), PlatformError);
    EXPECT_THROW(tree.SetTag(node, "x"), PlatformError);
    EXPECT_THROW(tree.SetImage(node, "Leaf"), PlatformError);
    EXPECT_THROW(tree.SetExpandedImage(node, "Leaf"), PlatformError);
    EXPECT_THROW(tree.SetSorted(node, true), PlatformError);
    EXPECT_THROW(tree.SetExpanded(node, true), PlatformError);
    EXPECT_THROW(tree.SetSelectedNode(node), PlatformError);
  }
}

}  // namespace kivandra::contract
