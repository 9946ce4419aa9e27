// SPDX-License-Identifier: GPL-3.0-or-later
// The dialog in which a person chooses a file.
#include "platform/common_dialog.h"

#include <filesystem>
#include <fstream>

#include "platform/platform_error.h"
#include "platform_gtk/own_forms.h"

namespace kivandra::gtk {
namespace {

class CommonDialogTest : public WindowTest {
 protected:
  CommonDialogTest() {
    own.Write("frmTest", "<object class='KvCommonDialog' id='CommonDialog1'/>", "");
    std::filesystem::create_directory(Folder());
    for (const char* name : {"a.skn", "b.SKN", "c.txt"}) {
      std::ofstream(Folder() + "/" + name) << "x";
    }
    form = loader.Load("frmTest");
    form->SetVisible(true);
    dialog = &form->Get<CommonDialog>("CommonDialog1");
    dialog->SetFilter("Skins (*.skn)|*.skn|Other|*.txt");
    dialog->SetFilterIndex(1);
    dialog->SetFlags(OFN_FILEMUSTEXIST | OFN_HIDEREADONLY);
  }
  ~CommonDialogTest() override {
    if (form->Loaded()) {
      form->Unload();
    }
  }

  std::string Folder() const { return own.Folder() + "/files"; }
  static Gtk::FileChooserDialog* Open() { return dynamic_cast<Gtk::FileChooserDialog*>(ShownWindow("Open")); }

  /// Does `work` again and again, from the event loop, while the dialog is open, until it says that it is
  /// done.
  void WhileOpen(std::function<bool(Gtk::FileChooserDialog&)> work) {
    constexpr int kMostRounds = 300;
    helper = Glib::signal_timeout().connect(
        [work = std::move(work), rounds = 0]() mutable {
          Gtk::FileChooserDialog* open = Open();
          if (++rounds == kMostRounds) {
            ADD_FAILURE() << "the dialog is not answered";
            EXPECT_NE(open, nullptr);
            if (open != nullptr) {
              open->response(static_cast<int>(Gtk::ResponseType::CANCEL));
            }
            return false;
          }
          return open == nullptr || !work(*open);
        },
        10);
  }

  void Choose(const std::string& path) {
    WhileOpen([path](Gtk::FileChooserDialog& open) {
      if (!open.get_file() || open.get_file()->get_path() != path) {
        open.set_file(Gio::File::create_for_path(path));  // it is chosen when the folder has been read
        return false;
      }
      open.response(static_cast<int>(Gtk::ResponseType::ACCEPT));
      return true;
    });
  }

  OwnForms own;
  FormLoader loader{own.Folder(), pages};
  std::shared_ptr<Form> form;
  CommonDialog* dialog = nullptr;
  sigc::connection helper;
};

TEST_F(CommonDialogTest, GivesThePathOfTheChosenFile) {
  dialog->SetInitDir(Folder());
  const std::string path = Folder() + "/b.SKN";
  Choose(path);
  dialog->ShowOpen();
  EXPECT_EQ(dialog->FileName(), path);
  EXPECT_EQ(ShownWindow("Open"), nullptr);
}

TEST_F(CommonDialogTest, OffersTheFiltersAndBeginsWithTheWantedOne) {
  dialog->SetFilterIndex(2);
  std::vector<std::string> names;
  std::string first;
  WhileOpen([&](Gtk::FileChooserDialog& open) {
    const auto filters = open.get_filters();
    for (guint i = 0; i < filters->get_n_items(); ++i) {
      names.push_back(std::dynamic_pointer_cast<const Gtk::FileFilter>(filters->get_object(i))->get_name());
    }
    first = open.get_filter()->get_name();
    open.response(static_cast<int>(Gtk::ResponseType::CANCEL));
    return true;
  });
  dialog->ShowOpen();
  EXPECT_EQ(names, (std::vector<std::string>{"Skins (*.skn)", "Other"}));
  EXPECT_EQ(first, "Other");
}

TEST_F(CommonDialogTest, CancellingLeavesNoNameOfAnEarlierChoice) {
  dialog->SetInitDir(Folder());
  Choose(Folder() + "/a.skn");
  dialog->ShowOpen();
  EXPECT_EQ(dialog->FileName(), Folder() + "/a.skn");
  WhileOpen([](Gtk::FileChooserDialog& open) { return open.close(), true; });
  dialog->ShowOpen();
  EXPECT_EQ(dialog->FileName(), "");
}

TEST_F(CommonDialogTest, StaysOpenWhileTheFileIsNotThere) {
  dialog->SetInitDir(Folder());
  int asked = 0;
  WhileOpen([&](Gtk::FileChooserDialog& open) {
    if (++asked == 1) {
      open.set_current_folder(Gio::File::create_for_path(Folder()));
      open.response(static_cast<int>(Gtk::ResponseType::ACCEPT));  // nothing is chosen
      EXPECT_TRUE(open.get_visible());
      return false;
    }
    open.response(static_cast<int>(Gtk::ResponseType::CANCEL));
    return true;
  });
  dialog->ShowOpen();
  EXPECT_EQ(asked, 2);
  EXPECT_EQ(dialog->FileName(), "");
}

TEST_F(CommonDialogTest, AFolderThatIsMissingOrShutIsNoFailure) {
  const std::string shut = own.Folder() + "/shut";
  std::filesystem::create_directory(shut);
  std::filesystem::permissions(shut, std::filesystem::perms::none);
  for (const std::string& folder : {own.Folder() + "/nowhere", shut, Folder() + "/a.skn", std::string()}) {
    dialog->SetInitDir(folder);
    WhileOpen([](Gtk::FileChooserDialog& open) {
      return open.response(static_cast<int>(Gtk::ResponseType::CANCEL)), true;
    });
    EXPECT_NO_THROW(dialog->ShowOpen()) << folder;
    EXPECT_EQ(dialog->FileName(), "") << folder;
  }
}

TEST_F(CommonDialogTest, FiltersThatAreNoneAreNoFailure) {
  for (const char* filter : {"", "|", "one", "a|*.a|b", "a|", "|*.x", "a|;;|b|*.[", "a|*.*", "\xff|*.\xff"}) {
    dialog->SetFilter(filter);
    WhileOpen([](Gtk::FileChooserDialog& open) {
      return open.response(static_cast<int>(Gtk::ResponseType::CANCEL)), true;
    });
    EXPECT_NO_THROW(dialog->ShowOpen()) << filter;
  }
}

TEST_F(CommonDialogTest, ItsWindowMayGoWhileItIsOpen) {
  bool went = false;
  WhileOpen([&](Gtk::FileChooserDialog&) {
    form->Unload();
    return went = true;
  });
  dialog->ShowOpen();
  EXPECT_TRUE(went);
  EXPECT_EQ(ShownWindow("Open"), nullptr);
  EXPECT_THROW(static_cast<void>(dialog->FileName()), PlatformError);
}

TEST_F(CommonDialogTest, LeftWhileItStillReadsItLeavesNoBoxBehind) {
  for (int i = 0; i < 3; ++i) {
    dialog->SetInitDir(Folder());
    WhileOpen([](Gtk::FileChooserDialog& open) {
      return open.response(static_cast<int>(Gtk::ResponseType::CANCEL)), true;
    });
    dialog->ShowOpen();
  }
  const auto boxes = [] {
    int shown = 0;
    for (Gtk::Window* window : Gtk::Window::list_toplevels()) {
      shown += dynamic_cast<Gtk::MessageDialog*>(window) != nullptr && window->get_visible() ? 1 : 0;
    }
    return shown;
  };
  bool over = false;
  Glib::signal_timeout().connect_once([&over] { over = true; }, 500);
  Until([&over] { return over; });  // the readers end in threads of their own
  EXPECT_EQ(boxes(), 0);
}

TEST_F(CommonDialogTest, WearsTheProgramsDressAndIsNotOpenedTwice) {
  WhileOpen([&](Gtk::FileChooserDialog& open) {
    EXPECT_TRUE(open.has_css_class("kv-plain"));
    EXPECT_NE(open.get_titlebar(), nullptr);
    EXPECT_THROW(dialog->ShowOpen(), PlatformError);
    return open.response(static_cast<int>(Gtk::ResponseType::CANCEL)), true;
  });
  dialog->ShowOpen();
}

}  // namespace
}  // namespace kivandra::gtk
