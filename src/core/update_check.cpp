// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/update_check.h"

#include "core/program_files.h"
#include "core/program_sound.h"
#include "core/site_page.h"
#include "platform/page_view.h"
#include "platform/picture_box.h"
#include "platform/platform_error.h"
#include "support/attempt.h"
#include "support/raised.h"
#include "version.h"

namespace kivandra {
namespace {

constexpr const char* kPackage = "browser_update.exe";
/// The version is a word, and a start waits for it with nothing on the screen.
constexpr InetLimits kVersionLimits{.time = std::chrono::seconds(15), .bytes = std::size_t{1024} * 1024};

}  // namespace

void UpdateCheck::CheckForUpdate(Inet& inet1, bool quiet) {
  // The fetch lets events run, and a person may ask again meanwhile.
  if (running_) {
    return;
  }
  const Raised running(running_);
  try {
    Check(inet1, quiet);
  } catch (const PlatformError& error) {
    // Whoever closes the frame meanwhile wants nothing more of it.
    if (!services_.windows.FrameStands()) {
      return;
    }
    StillNotice();
    services_.boxes.MsgBox(std::string("Error when loading update file\r") + error.what());
  }
}

void UpdateCheck::Check(Inet& inet1, bool quiet) {
  // 1. to 3.
  const std::string current = Fetch(inet1, "/BrowserVer.dat", kVersionLimits);
  // 4. A test for equality, to the byte: there is no order between versions.
  if (current == kOwnVersion) {
    // 5.
    if (!quiet) {
      services_.windows.SetFrameCaption("You have the most recent version of the Kivandra.");
    }
    return;
  }
  // 6.
  if (services_.boxes.MsgBox("A more recent version of Kivandra exists. Would you like to update it now?",
                             kMsgYesNo) == MsgBoxResult::Yes) {
    Update(inet1);
  }
}

void UpdateCheck::Update(Inet& inet1) {
  // 7.
  services_.windows.UnloadActiveChild();
  ShowNotice();
  // 8. and 9.
  services_.files.WriteFile(ProgramFile(services_.system, kPackage),
                            Fetch(inet1, "/browser_update.exe", InetLimits()));
  // 10.
  Updateform_->Unload();
  // 11.
  PlayProgramSound(services_.registry, services_.sound, services_.system, "complete.wav");
  // 12. kept on purpose: the date in the text.
  services_.boxes.MsgBox(
      "Kivandra needs to be restarted.  Click OK.  When the update is complete, simply restart Kivandra!  "
      "Happy New "
      "Years 2002!");
  // 13. A program of its own, which lies beside this one.
  services_.shell.Shell(ProgramFile(services_.system, "update.exe"), kMinimizedFocus);
  // 14.
  services_.events.EndProgram();
}

void UpdateCheck::ShowNotice() {
  // A download that failed has left its notice open.
  if (!Updateform_ || !Updateform_->Loaded()) {
    Updateform_ = services_.forms.Load("Updateform");
    Updateform_->Get<PageView>("WebBrowser1").Navigate(SitePage("/update/update1.html"));
  }
  Updateform_->Get<PictureBox>("Progress").SetEnabled(true);
  Updateform_->SetVisible(true);
}

void UpdateCheck::StillNotice() {
  if (Updateform_) {
    attempt([this] { Updateform_->Get<PictureBox>("Progress").SetEnabled(false); });
  }
}

std::string UpdateCheck::Fetch(Inet& inet1, const char* path, const InetLimits& limits) const {
  return inet1.OpenURL(SitePage(path), limits, [this] { return services_.windows.FrameStands(); });
}

}  // namespace kivandra
