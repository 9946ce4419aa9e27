// SPDX-License-Identifier: GPL-3.0-or-later
// Choosers of files that others than the program's own dialog open: for saving a page, for printing into a
// file.
#include <filesystem>
#include <fstream>

#include "platform_gtk/hands.h"
#include "platform_gtk/own_forms.h"

namespace kivandra::gtk {
namespace {

class FileChoosersTest : public WindowTest {
 protected:
  static constexpr int kFiles = 40;

  FileChoosersTest() {
    std::filesystem::create_directory(Folder());
    for (int i = 0; i < kFiles; ++i) {
      std::ofstream(Folder() + "/page" + std::to_string(i) + ".html") << "x";
    }
  }
  std::string Folder() const { return own.Folder() + "/files"; }

  /// A chooser of the toolkit that shows the folder.
  GtkWidget* Open(GtkFileChooserAction action) {
    GtkWidget* dialog = gtk_file_chooser_dialog_new("Files", nullptr, action, "_Cancel", GTK_RESPONSE_CANCEL,
                                                    "_Ok", GTK_RESPONSE_ACCEPT, nullptr);
    GFile* folder = g_file_new_for_path(Folder().c_str());
    gtk_file_chooser_set_current_folder(GTK_FILE_CHOOSER(dialog), folder, nullptr);
    g_object_unref(folder);
    gtk_window_present(GTK_WINDOW(dialog));
    return dialog;
  }
  static std::vector<Gtk::Widget*> OpenMenus(Gtk::Widget& window) {
    return WidgetsBelow(
        window, [](Gtk::Widget& each) { return GTK_IS_POPOVER_MENU(each.gobj()) && each.get_mapped(); });
  }
  /// The list of files when it shows them all, or null.
  static Gtk::Widget* FullList(Gtk::Widget& window) {
    const auto lists = WidgetsBelow(window, [](Gtk::Widget& each) {
      if (!GTK_IS_TREE_VIEW(each.gobj()) || !each.get_mapped()) {
        return false;
      }
      GtkTreeModel* files = gtk_tree_view_get_model(GTK_TREE_VIEW(each.gobj()));
      return files != nullptr && gtk_tree_model_iter_n_children(files, nullptr) == kFiles;
    });
    return lists.empty() ? nullptr : lists[0];
  }

  OwnForms own;
};

TEST_F(FileChoosersTest, TheirMenuNeverComes) {
  for (const auto action : {GTK_FILE_CHOOSER_ACTION_SAVE, GTK_FILE_CHOOSER_ACTION_OPEN}) {
    SCOPED_TRACE(action);
    GtkWidget* dialog = Open(action);
    auto& window = *Glib::wrap(GTK_WINDOW(dialog));
    Hands hands(window);
    ASSERT_TRUE(Until([&] { return FullList(window) != nullptr; }));
    Gtk::Widget& list = *FullList(window);
    hands.Click(list, 60, 60);
    hands.Click(list, 60, 60, 3);
    Settle();
    EXPECT_TRUE(OpenMenus(window).empty());
    list.grab_focus();
    for (const char* key : {"shift+F10", "Menu"}) {
      hands.Press({key});
      Settle();
      EXPECT_TRUE(OpenMenus(window).empty()) << key;
    }
    gtk_window_destroy(GTK_WINDOW(dialog));
  }
}

}  // namespace
}  // namespace kivandra::gtk
