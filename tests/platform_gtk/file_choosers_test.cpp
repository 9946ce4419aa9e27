// SPDX-License-Identifier: GPL-3.0-or-later
// Choosers of files that others than the program's own dialog open: for saving a page, for printing into a
// file.
#include <condition_variable>
#include <filesystem>
#include <fstream>
#include <mutex>

#include "platform_gtk/hands.h"
#include "platform_gtk/own_forms.h"

namespace kivandra::gtk {
namespace {

/// While it lives, nothing is read that the toolkit reads in its threads: all of them wait here.
class BusyThreads {
 public:
  BusyThreads() {
    for (int i = 0; i < kTasks; ++i) {
      GTask* task = g_task_new(nullptr, nullptr, nullptr, nullptr);
      g_task_set_priority(task, G_PRIORITY_HIGH);
      g_task_set_task_data(task, this, nullptr);
      g_task_run_in_thread(task, [](GTask*, gpointer, gpointer self, GCancellable*) {
        static_cast<BusyThreads*>(self)->Wait();
      });
      g_object_unref(task);
    }
  }
  ~BusyThreads() {
    std::unique_lock lock(mutex_);
    over_ = true;
    change_.notify_all();
    change_.wait(lock, [this] { return left_ == kTasks; });
  }
  BusyThreads(const BusyThreads&) = delete;
  BusyThreads& operator=(const BusyThreads&) = delete;

 private:
  static constexpr int kTasks = 100;  // the pool grows while they wait, slowly

  void Wait() {
    std::unique_lock lock(mutex_);
    change_.wait(lock, [this] { return over_; });
    ++left_;
    change_.notify_all();
  }

  std::mutex mutex_;
  std::condition_variable change_;
  bool over_ = false;
  int left_ = 0;
};

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

TEST_F(FileChoosersTest, OneIsPaintedWithoutComplaintBeforeItsFolderIsRead) {
  GtkWidget* dialog = nullptr;
  {
    const BusyThreads busy;
    dialog = Open(GTK_FILE_CHOOSER_ACTION_OPEN);
    GdkFrameClock* clock = gtk_widget_get_frame_clock(dialog);
    const gint64 first = gdk_frame_clock_get_frame_counter(clock);
    ASSERT_TRUE(Until([&] {
      gtk_widget_queue_draw(dialog);
      return gtk_widget_get_mapped(dialog) && gdk_frame_clock_get_frame_counter(clock) > first + 2;
    }));
    EXPECT_EQ(nullptr, FullList(*Glib::wrap(GTK_WINDOW(dialog))));
  }
  EXPECT_TRUE(Until([&] { return FullList(*Glib::wrap(GTK_WINDOW(dialog))) != nullptr; }));
  gtk_window_destroy(GTK_WINDOW(dialog));
}

}  // namespace
}  // namespace kivandra::gtk
