// SPDX-License-Identifier: GPL-3.0-or-later
// The tree: what a person sees of it and does with it.
#include "platform/tree_view.h"

#include "contract/tree_view_contract.h"
#include "platform/gtk/controls/tree_row.h"
#include "platform_gtk/control_test.h"

namespace kivandra::gtk {
namespace {

class TreeViewTest : public ControlTest {
 protected:
  TreeViewTest() {
    form = forms.Load("frmFav");
    tree = &form->Get<TreeView>("tvw");
    tree->OnNodeClick([this](int node) { told.push_back("click " + tree->Text(node)); });
    tree->OnNodeSelect([this](int node) { told.push_back("to " + tree->Text(node)); });
  }

  int Add(int parent, const std::string& text, bool open = false) {
    const int node = tree->AddNode(parent, {}, text);
    if (open) {
      tree->SetExpanded(node, true);
    }
    return node;
  }
  /// Two roots: one open with a closed folder, an empty one and a leaf; shows the window.
  void Fill() {
    root = Add(0, "Root", true);
    folder = Add(root, "Folder");
    inner = Add(folder, "Inner");
    Add(folder, "Other");
    Add(root, "Empty");
    leaf = Add(root, "Leaf");
    tree->SetImage(leaf, "Leaf");
    tree->SetImage(folder, "ClosedFolder");
    tree->SetExpandedImage(folder, "OpenFolder");
    Show();
  }
  void Show() {
    form->SetVisible(true);
    Settle();
    ASSERT_TRUE(Until([&] { return tree->NodeCount() == 0 || !Rows().empty(); }));
  }
  Gtk::Widget& List() { return WidgetOf(*tree); }
  /// The rows on the screen from the top down, and no others.
  std::vector<TreeRow*> Rows() {
    std::vector<TreeRow*> rows;
    for (Gtk::Widget* each : WidgetsBelow(List(), [](Gtk::Widget& widget) {
           auto* row = dynamic_cast<TreeRow*>(&widget);
           return row != nullptr && row->Node() != 0 && row->get_mapped();
         })) {
      rows.push_back(dynamic_cast<TreeRow*>(each));
    }
    return rows;
  }
  template <typename Part>
  static Part& In(TreeRow& row, std::size_t place = 0) {
    return dynamic_cast<Part&>(*WidgetsBelow(row, [](Gtk::Widget& each) {
                                  return dynamic_cast<Part*>(&each) != nullptr;
                                }).at(place));
  }
  std::vector<std::string> Seen() {
    std::vector<std::string> texts;
    for (TreeRow* row : Rows()) {
      texts.push_back(In<Gtk::Label>(*row).get_text().raw());
    }
    return texts;
  }
  TreeRow& Row(int node) {
    for (TreeRow* row : Rows()) {
      if (row->Node() == node) {
        return *row;
      }
    }
    throw std::runtime_error("no row of " + tree->Text(node));
  }
  Gtk::Image& Arrow(int node) { return In<Gtk::Image>(Row(node), 0); }
  std::string Picture(int node) { return In<Gtk::Image>(Row(node), 1).get_icon_name().raw(); }
  bool Sees(const std::vector<std::string>& wanted) {
    return Until([&] { return Seen() == wanted; });
  }
  bool Told(const Journal& wanted) {
    return Until([&] { return told == wanted; });
  }
  /// The text of the row that has the keyboard.
  std::string Focus() {
    for (TreeRow* row : Rows()) {
      if (row->get_parent()->has_focus()) {
        return In<Gtk::Label>(*row).get_text().raw();
      }
    }
    return {};
  }
  bool StandsOn(const std::string& text) {
    return Until([&] {
      return tree->SelectedNode() != 0 && tree->Text(tree->SelectedNode()) == text && Focus() == text;
    });
  }

  TreeView* tree = nullptr;
  int root = 0;
  int folder = 0;
  int inner = 0;
  int leaf = 0;
  Journal told;
};

TEST_F(TreeViewTest, KeepsWhatItIsGiven) { contract::TreeKeepsWhatItIsGiven(*tree); }

TEST_F(TreeViewTest, ANumberOrAKeyThatCannotBeIsAnError) { contract::TreeRefusesWhatCannotBe(*tree); }

TEST_F(TreeViewTest, ShowsWhatIsOpenInTheOrderOfAddingOrSorted) {
  Fill();
  EXPECT_TRUE(Sees({"Root", "Folder", "Empty", "Leaf"}));
  tree->SetExpanded(folder, true);
  EXPECT_TRUE(Sees({"Root", "Folder", "Inner", "Other", "Empty", "Leaf"}));
  Add(root, "apple");
  Add(root, "Banana");
  tree->SetSorted(root, true);
  EXPECT_TRUE(Sees({"Root", "apple", "Banana", "Empty", "Folder", "Inner", "Other", "Leaf"}));
  tree->SetText(leaf, "cherry");
  EXPECT_TRUE(Sees({"Root", "apple", "Banana", "cherry", "Empty", "Folder", "Inner", "Other"}));
  EXPECT_TRUE(told.empty());
}

TEST_F(TreeViewTest, BytesThatAreNoTextAreShownByAMark) {
  Add(0, "caf\xE9");
  Add(0, "two\nlines");
  Show();
  EXPECT_TRUE(Sees({"caf\uFFFD", "two\nlines"}));
  EXPECT_EQ(Rows().at(0)->get_height(), Rows().at(1)->get_height());
}

TEST_F(TreeViewTest, ImagesFollowTheStateOfTheirNode) {
  Fill();
  EXPECT_EQ(Picture(leaf), "fav-leaf");
  EXPECT_EQ(Picture(folder), "fav-closed-folder");
  tree->SetExpanded(folder, true);
  EXPECT_TRUE(Until([&] { return Picture(folder) == "fav-open-folder"; }));
  tree->SetImage(root, "ClosedBook");  // without one for its open state
  EXPECT_EQ(Picture(root), "fav-closed-book");
  tree->SetImage(leaf, "Unheard-of");
  EXPECT_EQ(Picture(leaf), "");
  const auto theme = Gtk::IconTheme::get_for_display(List().get_display());
  for (const char* image : {"Leaf", "ClosedBook", "OpenBook", "Library", "ClosedFolder", "OpenFolder"}) {
    ASSERT_NE(TreeIcon(image), nullptr) << image;
    const auto file = theme->lookup_icon(TreeIcon(image), 20)->get_file();
    ASSERT_TRUE(file) << image;
    EXPECT_EQ(file->get_basename(), TreeIcon(image) + std::string(".svg"));
  }
}

TEST_F(TreeViewTest, AClickIsToldAndMovesTheCursor) {
  Fill();
  Click(Row(leaf));
  EXPECT_TRUE(Told({"to Leaf", "click Leaf"}));
  EXPECT_TRUE(StandsOn("Leaf"));
  Click(Row(leaf));
  EXPECT_TRUE(Told({"to Leaf", "click Leaf", "click Leaf"}));
  Click(Row(leaf), 3);
  EXPECT_EQ(told.size(), 3U);
}

TEST_F(TreeViewTest, AClickOpensAFolderAndASecondOneClosesIt) {
  Fill();
  Click(Row(folder));
  EXPECT_TRUE(Sees({"Root", "Folder", "Inner", "Other", "Empty", "Leaf"}));
  Click(Row(leaf));
  Click(Row(folder));  // it was not chosen: still open
  EXPECT_TRUE(StandsOn("Folder"));
  EXPECT_EQ(Seen().size(), 6U);
  // From the next press on, a click behind it is no part of a double click.
  const auto settings = Gtk::Settings::get_default();
  const int usual = settings->property_gtk_double_click_time();
  settings->property_gtk_double_click_time() = 5;
  Click(Row(folder));  // the second half of a double click
  EXPECT_TRUE(Told(
      {"to Folder", "click Folder", "to Leaf", "click Leaf", "to Folder", "click Folder", "click Folder"}));
  EXPECT_EQ(Seen().size(), 6U);
  Click(Row(folder));
  settings->property_gtk_double_click_time() = usual;
  EXPECT_TRUE(Sees({"Root", "Folder", "Empty", "Leaf"}));
}

TEST_F(TreeViewTest, TheArrowOpensAndClosesWithoutAClickOfItsNode) {
  Fill();
  tree->SetSelectedNode(inner);
  EXPECT_TRUE(Sees({"Root", "Folder", "Inner", "Other", "Empty", "Leaf"}));
  Click(Arrow(folder));
  EXPECT_TRUE(Sees({"Root", "Folder", "Empty", "Leaf"}));
  EXPECT_TRUE(Told({"to Folder"}));  // what it stood on is out of sight
  Click(Arrow(folder));
  EXPECT_TRUE(Sees({"Root", "Folder", "Inner", "Other", "Empty", "Leaf"}));
  EXPECT_TRUE(Told({"to Folder"}));
  Click(Arrow(leaf));  // has none: its place belongs to the row
  EXPECT_TRUE(Told({"to Folder", "to Leaf", "click Leaf"}));
}

TEST_F(TreeViewTest, TheKeyboardWalksOpensAndChooses) {
  Fill();
  const struct {
    const char* key;
    const char* place;
    std::size_t rows;
  } kSteps[] = {
      {"Down", "Folder", 4},        {"Right", "Folder", 6},   {"Right", "Inner", 6},
      {"Left", "Folder", 6},        {"Left", "Folder", 4},    {"Left", "Root", 4},
      {"End", "Leaf", 4},           {"BackSpace", "Root", 4}, {"minus", "Root", 1},
      {"plus", "Root", 4},          {"asterisk", "Root", 6},  {"Down", "Folder", 6},
      {"KP_Subtract", "Folder", 4}, {"KP_Add", "Folder", 6},  {"Home", "Root", 6},
  };
  EXPECT_TRUE(StandsOn("Root"));  // where the window opens
  for (const auto& step : kSteps) {
    Press(List(), {step.key});
    EXPECT_TRUE(StandsOn(step.place)) << step.key << " leads to " << Focus();
    EXPECT_TRUE(Until([&] { return Seen().size() == step.rows; })) << step.key;
  }
  EXPECT_EQ(std::count_if(told.begin(), told.end(), [](auto& each) { return each.starts_with("click"); }), 0);
  told.clear();
  Press(List(), {"End", "Return", "KP_Enter", "space"});
  EXPECT_TRUE(Told({"to Leaf", "click Leaf", "click Leaf", "click Leaf"}));
}

TEST_F(TreeViewTest, LettersLeadToTheNextNodeThatStartsWithThem) {
  Fill();
  Add(root, "lemon pie");
  Add(root, "lemon tree");
  Settle();
  Press(List(), {"l"});
  EXPECT_TRUE(StandsOn("Leaf"));
  Press(List(), {"e", "m", "o", "n", "space", "t"});
  EXPECT_TRUE(StandsOn("lemon tree"));
  EXPECT_EQ(std::count(told.begin(), told.end(), "click Leaf"), 0);
}

TEST_F(TreeViewTest, ALetterFindsItsNodeAlsoWhenTheCursorIsOutOfSight) {
  Fill();
  tree->SetSelectedNode(inner);
  EXPECT_TRUE(StandsOn("Inner"));
  tree->SetExpanded(folder, false);
  EXPECT_TRUE(Sees({"Root", "Folder", "Empty", "Leaf"}));
  Press(List(), {"q", "l"});  // no name starts with the first
  EXPECT_TRUE(StandsOn("Leaf"));
}

TEST_F(TreeViewTest, ItsWindowMayCloseAtALetter) {
  Fill();
  Add(root, "lemon");
  Settle();
  Press(List(), {"l"});
  EXPECT_TRUE(StandsOn("Leaf"));
  tree->OnNodeSelect([this](int) { form->Unload(); });
  Press(List(), {"e", "m"});  // in the middle of a word
  EXPECT_TRUE(Until([&] { return !form->Loaded(); }));
}

TEST_F(TreeViewTest, TheKeyboardStaysInATreeThatIsFilledAnew) {
  Fill();
  Press(List(), {"End"});
  EXPECT_TRUE(StandsOn("Leaf"));
  tree->Clear();
  root = Add(0, "Root", true);
  folder = Add(root, "Folder");
  tree->SetSelectedNode(folder);
  EXPECT_TRUE(StandsOn("Folder"));
  Press(List(), {"Up"});
  EXPECT_TRUE(StandsOn("Root"));
}

TEST_F(TreeViewTest, TheCursorIsSetWithoutAnEventAndItsFoldersOpen) {
  Fill();
  tree->SetSelectedNode(inner);
  EXPECT_EQ(tree->SelectedNode(), inner);
  EXPECT_TRUE(StandsOn("Inner"));
  EXPECT_TRUE(told.empty());
  tree->Clear();
  EXPECT_EQ(tree->SelectedNode(), 0);
  EXPECT_TRUE(Sees({}));
}

TEST_F(TreeViewTest, TenThousandNodesAreThereAtOnceAndTheLastIsBroughtIntoSight) {
  root = Add(0, "Root", true);
  for (int number = 0; number < 10000; ++number) {
    tree->SetImage(Add(root, "node " + std::to_string(10000 + number)), "Leaf");
  }
  tree->SetSorted(root, true);
  Show();
  EXPECT_LT(Rows().size(), 300U);  // the toolkit makes widgets for what is in sight and a little more
  Press(List(), {"End"});
  EXPECT_TRUE(StandsOn("node 19999"));
  tree->SetSelectedNode(2);
  EXPECT_TRUE(StandsOn("node 10000"));
}

TEST_F(TreeViewTest, ALongNameAndADeepNodeStayInsideTheWindow) {
  int node = 0;
  for (int depth = 0; depth < 100; ++depth) {
    node = Add(node, std::string(300, 'w'), true);
  }
  Show();
  EXPECT_LE(WindowOf(List()).get_width(), 400);
  tree->SetSelectedNode(node);
  EXPECT_TRUE(Until([&] { return Focus().size() == 300U; }));
  EXPECT_LE(WindowOf(List()).get_width(), 400);
}

TEST_F(TreeViewTest, AssistiveToolsAreToldItsNodes) {
  Fill();
  EXPECT_EQ(gtk_accessible_get_accessible_role(GTK_ACCESSIBLE(List().gobj())), GTK_ACCESSIBLE_ROLE_TREE);
  EXPECT_TRUE(IsNamed(List(), "Your favorites"));
  Gtk::Widget& row = *Row(folder).get_parent();
  EXPECT_EQ(gtk_accessible_get_accessible_role(GTK_ACCESSIBLE(row.gobj())), GTK_ACCESSIBLE_ROLE_TREE_ITEM);
  EXPECT_TRUE(IsNamed(row, "Folder"));
  EXPECT_TRUE(gtk_test_accessible_has_state(GTK_ACCESSIBLE(row.gobj()), GTK_ACCESSIBLE_STATE_EXPANDED));
}

TEST_F(TreeViewTest, AnArrowThatIsClickedWhileTheTreeIsFilledFurtherHoldsNothingUp) {
  Fill();
  tree->SetSelectedNode(inner);
  EXPECT_TRUE(Sees({"Root", "Folder", "Inner", "Other", "Empty", "Leaf"}));
  tree->OnNodeSelect([this](int) { Add(folder, "Late"); });  // the arrow moves the cursor, then closes
  Click(Arrow(folder));
  EXPECT_TRUE(Sees({"Root", "Folder", "Empty", "Leaf"}));
  Click(Arrow(folder));
  EXPECT_TRUE(Sees({"Root", "Folder", "Inner", "Other", "Late", "Empty", "Leaf"}));
}

TEST_F(TreeViewTest, ItsWindowMayCloseInItsClick) {
  Fill();
  tree->OnNodeClick([this](int) { form->Unload(); });
  Click(Row(leaf));
  EXPECT_TRUE(Until([&] { return !form->Loaded(); }));
  EXPECT_THROW((void)tree->NodeCount(), PlatformError);
}

TEST_F(TreeViewTest, ItMayBeFilledAnewWhileItTells) {
  Fill();
  tree->OnNodeSelect([this](int) {
    tree->Clear();
    Add(0, "New");
  });
  Click(Row(leaf));
  EXPECT_TRUE(Sees({"New"}));
  EXPECT_TRUE(told.empty());
}

}  // namespace
}  // namespace kivandra::gtk
