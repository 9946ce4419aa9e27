// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gtk/controls/common_dialog.h"

#include <unistd.h>

#include <optional>
#include <string_view>
#include <vector>

#include "platform/gtk/controls/file_choosers.h"
#include "platform/gtk/forms/title_bar.h"
#include "platform/gtk/guard.h"
#include "platform/gtk/utf8_text.h"

namespace {

struct KvCommonDialog {
  GObject parent;
};

struct KvCommonDialogClass {
  GObjectClass parent;
};

G_DEFINE_TYPE(KvCommonDialog, kv_common_dialog, G_TYPE_OBJECT)

void kv_common_dialog_class_init(KvCommonDialogClass*) {}
void kv_common_dialog_init(KvCommonDialog*) {}

}  // namespace

namespace kivandra::gtk {
namespace {

constexpr int kWidth = 760;
constexpr int kHeight = 500;
constexpr int kButtonWidth = 96;
constexpr int kGap = 8;

std::vector<std::string> Parted(std::string_view text, char mark) {
  std::vector<std::string> parts;
  while (true) {
    const std::size_t at = text.find(mark);
    parts.emplace_back(text.substr(0, at));
    if (at == std::string_view::npos) {
      return parts;
    }
    text.remove_prefix(at + 1);
  }
}

/// "*.htm" finds "A.HTM" too; other patterns are taken as they stand.
void AddPattern(Gtk::FileFilter& filter, const std::string& pattern) {
  const bool suffix = pattern.size() > 2 && pattern.compare(0, 2, "*.") == 0 &&
                      pattern.find_first_of("*?[", 2) == std::string::npos;
  if (suffix) {
    gtk_file_filter_add_suffix(filter.gobj(), pattern.c_str() + 2);
  } else if (pattern == "*.*") {
    filter.add_pattern("*");
  } else if (!pattern.empty()) {
    filter.add_pattern(ShownText(pattern));
  }
}

bool IsReadableFolder(const std::string& path) {
  return !path.empty() && g_file_test(path.c_str(), G_FILE_TEST_IS_DIR) &&
         access(path.c_str(), R_OK | X_OK) == 0;
}

}  // namespace

void RegisterCommonDialogType() {
  g_type_ensure(kv_common_dialog_get_type());
  WatchFileChoosers();
}

bool IsCommonDialog(GObject* object) {
  return G_TYPE_CHECK_INSTANCE_TYPE(object, kv_common_dialog_get_type());
}

/// One opening of the dialog. It is held by the one who waits for the answer, so that the control may go.
struct CommonDialogControl::Showing {
  explicit Showing(bool mustBeThere) : mustExist(mustBeThere), titleBar(dialog, [this] { Answer({}); }) {
    dialog.add_css_class("kv-plain");
    dialog.add_css_class("kv-files");
    if (!dialog.get_display()->is_composited()) {
      dialog.add_css_class("kv-opaque");
    }
    dialog.set_modal(true);
    dialog.set_default_size(kWidth, kHeight);
    titleBar.SetCaption("Open");
    AddButton("_Open", Gtk::ResponseType::ACCEPT)->add_css_class("kv-primary");
    AddButton("_Cancel", Gtk::ResponseType::CANCEL);
    dialog.set_default_response(static_cast<int>(Gtk::ResponseType::ACCEPT));
    dialog.signal_response().connect([this](int response) {
      Guarded([&] {
        if (response != static_cast<int>(Gtk::ResponseType::ACCEPT)) {
          Answer({});
        } else if (const std::string path = Chosen(); !path.empty()) {
          Answer(path);
        }
      });
    });
    // The one who waits takes the window away.
    dialog.signal_close_request().connect([this] { return Answer({}), true; }, false);
  }
  ~Showing() { gtk_window_destroy(GTK_WINDOW(dialog.gobj())); }
  Showing(const Showing&) = delete;
  Showing& operator=(const Showing&) = delete;

  Gtk::Widget* AddButton(const char* caption, Gtk::ResponseType response) {
    Gtk::Button* button = dialog.add_button(caption, static_cast<int>(response));
    gtk_accessible_reset_property(GTK_ACCESSIBLE(button->gobj()), GTK_ACCESSIBLE_PROPERTY_LABEL);
    button->add_css_class("kv-btn");
    button->set_size_request(kButtonWidth, -1);
    if (auto* row = dynamic_cast<Gtk::Box*>(button->get_parent()); row != nullptr) {
      row->set_spacing(kGap);
      row->set_homogeneous(false);
    }
    return button;
  }

  void AddFilters(const std::string& filter, int index) {
    const auto parts = Parted(filter, '|');
    for (std::size_t i = 0; i + 1 < parts.size(); i += 2) {
      auto each = Gtk::FileFilter::create();
      each->set_name(ShownText(parts[i]));
      for (const std::string& pattern : Parted(parts[i + 1], ';')) {
        AddPattern(*each, pattern);
      }
      dialog.add_filter(each);
      if (static_cast<int>(i / 2) + 1 == index) {
        dialog.set_filter(each);
      }
    }
  }

  /// The path, or nothing if the dialog must stay open.
  [[nodiscard]] std::string Chosen() {
    const auto file = dialog.get_file();
    const std::string path = file ? file->get_path() : std::string();
    return mustExist && !g_file_test(path.c_str(), G_FILE_TEST_IS_REGULAR) ? std::string() : path;
  }

  void Answer(const std::string& path) {
    if (!answer) {
      answer = path;
      dialog.set_visible(false);
    }
  }

  bool mustExist;
  // One of the toolkit itself: the wrapper's own class complains when it is taken down.
  Gtk::FileChooserDialog& dialog = *dynamic_cast<Gtk::FileChooserDialog*>(
      Glib::wrap(GTK_WIDGET(g_object_new(GTK_TYPE_FILE_CHOOSER_DIALOG, "title", "Open", "action",
                                         GTK_FILE_CHOOSER_ACTION_OPEN, "use-header-bar", 0, nullptr))));
  TitleBar titleBar;
  std::optional<std::string> answer;
};

CommonDialogControl::CommonDialogControl(Gtk::Widget& window) : window_(window) {}

CommonDialogControl::~CommonDialogControl() {
  if (const auto showing = showing_.lock()) {
    showing->Answer({});
  }
}

void CommonDialogControl::SetInitDir(const std::string& folder) { Alive(), initDir_ = folder; }

void CommonDialogControl::SetFilter(const std::string& filter) { Alive(), filter_ = filter; }

void CommonDialogControl::SetFilterIndex(int index) { Alive(), filterIndex_ = index; }

void CommonDialogControl::SetFlags(int flags) { Alive(), flags_ = flags; }

void CommonDialogControl::ShowOpen() {
  Alive();
  if (!showing_.expired()) {
    throw PlatformError(kInvalidCall, "the dialog is open already");
  }
  fileName_.clear();
  const auto showing = std::make_shared<Showing>((flags_ & OFN_FILEMUSTEXIST) != 0);
  showing_ = showing;
  showing->AddFilters(filter_, filterIndex_);
  for (const std::string& folder : {initDir_, lastDir_, std::string(g_get_home_dir())}) {
    if (IsReadableFolder(folder)) {
      Guarded([&] { showing->dialog.set_current_folder(Gio::File::create_for_path(folder)); });
      break;
    }
  }
  auto* parent = dynamic_cast<Gtk::Window*>(window_.get_root());
  if (parent != nullptr) {
    showing->dialog.set_transient_for(*parent);
  }
  showing->dialog.present();
  showing->dialog.present();  // the second time for desktops that leave the focus to the window itself
  // The form may go meanwhile, and this object with it; the window that held the form is not touched then.
  const std::weak_ptr<int> alive = alive_;
  while (!showing->answer) {
    g_main_context_iteration(nullptr, TRUE);
  }
  if (alive.expired() || Gone()) {
    return;
  }
  fileName_ = *showing->answer;
  if (!fileName_.empty()) {
    lastDir_ = Glib::path_get_dirname(fileName_);
  }
  if (parent != nullptr) {
    parent->present();
  }
}

std::string CommonDialogControl::FileName() const { return Alive(), fileName_; }

void CommonDialogControl::LetGo() {
  AbsentControl::LetGo();
  if (const auto showing = showing_.lock()) {
    showing->Answer({});
  }
}

}  // namespace kivandra::gtk
