// SPDX-License-Identifier: GPL-3.0-or-later
// The tree that the tests know does what the toolkit's does.
#include "contract/tree_view_contract.h"
#include "fakes/fake_tree_view.h"
#include "fakes/journal.h"

namespace kivandra {
namespace {

TEST(FakeTreeViewTest, KeepsWhatItIsGiven) {
  fakes::Journal journal;
  fakes::FakeTreeView tree("tvw", journal);
  contract::TreeKeepsWhatItIsGiven(tree);
}

TEST(FakeTreeViewTest, ANumberOrAKeyThatCannotBeIsAnError) {
  fakes::Journal journal;
  fakes::FakeTreeView tree("tvw", journal);
  contract::TreeRefusesWhatCannotBe(tree);
}

}  // namespace
}  // namespace kivandra
