// SPDX-License-Identifier: GPL-3.0-or-later
// The one program file that is ever started: the updater beside the program.
#include <fcntl.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <iterator>

#include "platform/gtk/shell/shell_calls.h"
#include "platform/platform_error.h"
#include "platform_gtk/own_forms.h"

namespace kivandra::gtk {
namespace {

class UpdaterTest : public WindowTest {
 protected:
  void PutUpdater(const std::string& text) const {
    std::ofstream(updater) << text;
    std::filesystem::permissions(updater, std::filesystem::perms::owner_all);
  }
  bool UntilStarted() {
    return Until([&] {
      g_usleep(1000);
      return std::filesystem::exists(Started());
    });
  }
  std::string Said() const {
    std::ifstream file(Started());
    return {std::istreambuf_iterator<char>(file), {}};
  }
  std::string Started() const { return own.Folder() + "/started"; }

  OwnForms own;
  // A program whose own folder is the test's.
  const std::string updater = own.Folder() + "/update.exe";
  FormLoader besideForms{own.Folder(), pages};
  GtkShellCalls beside{besideForms, {}};
};

TEST_F(UpdaterTest, IsStartedFromBesideTheProgramAloneAndWithoutArguments) {
  PutUpdater("#!/bin/sh\necho \"$0 $#\" > '" + own.Folder() + "/said'\nmv '" + own.Folder() + "/said' '" +
             Started() + "'\n");
  const std::string folder = own.Folder();
  std::filesystem::copy_file(updater, folder + "/other.exe");
  for (const std::string& other :
       {std::string("update.exe"), std::string("./update.exe"), folder + "/other.exe",
        folder + "//update.exe", folder + "/css/../update.exe", updater + " ", updater + " /S",
        updater + "\n", "\"" + updater + "\"", kAssets + "/update.exe"}) {
    EXPECT_THROW(beside.Shell(other, kMinimizedFocus), PlatformError) << other;
  }
  beside.Shell(updater, kMinimizedFocus);
  ASSERT_TRUE(UntilStarted());
  EXPECT_EQ(Said(), updater + " 0\n");
}

TEST_F(UpdaterTest, HoldsNothingOfTheProgramThatStartsIt) {
  // It must not keep the lock of the running program, nor end with its terminal.
  const int lock = open((own.Folder() + "/lock").c_str(), O_RDWR | O_CREAT, 0600);
  ASSERT_GE(lock, 0);
  setenv("DESKTOP_STARTUP_ID", "mine", 1);
  PutUpdater(
      "#!/bin/sh\n(readlink /proc/$$/fd/*; env; [ $(cut -d' ' -f6 /proc/$$/stat) = $$ ] && echo apart) > "
      "'" +
      own.Folder() + "/said'\nmv '" + own.Folder() + "/said' '" + Started() + "'\n");
  beside.Shell(updater, kMinimizedFocus);
  unsetenv("DESKTOP_STARTUP_ID");
  close(lock);
  ASSERT_TRUE(UntilStarted());
  const std::string said = Said();
  EXPECT_EQ(said.find("/lock"), std::string::npos) << said;
  EXPECT_EQ(said.find("DESKTOP_STARTUP_ID"), std::string::npos) << said;
  EXPECT_NE(said.find("PATH="), std::string::npos) << said;
  EXPECT_TRUE(said.ends_with("apart\n")) << said;
}

TEST_F(UpdaterTest, OneThatIsNoProgramIsAnErrorThatNamesIt) {
  const auto problem = [this] {
    try {
      beside.Shell(updater, kMinimizedFocus);
    } catch (const PlatformError& error) {
      EXPECT_NE(std::string(error.what()).find(updater), std::string::npos) << error.what();
      return error.Number();
    }
    ADD_FAILURE() << "it was started";
    return 0L;
  };
  EXPECT_EQ(problem(), 53) << "it is missing";
  std::ofstream(updater) << "#!/bin/sh\n";
  EXPECT_EQ(problem(), 70) << "it may not be run";
  PutUpdater("");
  EXPECT_NE(problem(), 0) << "it is empty";
  PutUpdater("<!DOCTYPE html>\n");
  EXPECT_NE(problem(), 0) << "it is a page";
  PutUpdater("#!/nowhere/sh\n");
  EXPECT_EQ(problem(), 53) << "what should run it is missing";
  std::filesystem::remove(updater);
  std::filesystem::create_directory(updater);
  EXPECT_EQ(problem(), 70) << "it is a folder";
}

}  // namespace
}  // namespace kivandra::gtk
