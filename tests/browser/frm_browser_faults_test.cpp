// SPDX-License-Identifier: GPL-3.0-or-later
// Every handler again and again, with its first, second, third … platform call failing: nothing is thrown,
// and every step that does not need the failing one is carried out.
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "browser/browser_world.h"
#include "browser/frm_browser.h"

namespace kivandra {
namespace {

using fakes::BrowserWorld;
using fakes::FakeWebBrowser;

constexpr const char* kAddress = "http://example.org/";

/// A world with one window at a page, to which a scene adds.
struct Stage : BrowserWorld {
  Stage() : window(OpenWindow()) {
    frame.startUp = true;
    engine().locationURL = kAddress;
    frame.onCopy = [this] { clipboard.text = "whale"; };
  }
  FakeWebBrowser& engine() { return EngineOf(*window); }
  std::shared_ptr<frmBrowser> PopUpInFront() {
    auto popUp = OpenWindow();
    FormOf(*popUp).tag = "POP";
    return popUp;
  }

  std::shared_ptr<frmBrowser> window;
};

struct Scene {
  std::string name;
  std::function<void(Stage&)> act;
  std::function<void(Stage&)> prepare = [](Stage&) {};
  /// Whether `line`, which stands at `index` in the clean run, needs the step that `failed`.
  std::function<bool(const std::string& failed, const std::string& line, std::size_t index)> needs =
      [](auto&, auto&, std::size_t) { return false; };
};

bool Has(const std::string& text, const char* part) { return text.find(part) != std::string::npos; }

/// The gate speaks inside Navigate.
bool NeedsNavigate(const std::string& failed, const std::string& line, std::size_t /*index*/) {
  return Has(failed, ".Navigate ") && (Has(line, "Lock.Enabled") || Has(line, "allow "));
}
/// What is read from the clipboard is gone to.
bool NeedsWords(const std::string& failed, const std::string& line, std::size_t /*index*/) {
  return NeedsNavigate(failed, line, 0) ||
         (Has(failed, "GetText") &&
          (Has(line, ".Navigate ") || Has(line, "Lock.Enabled") || Has(line, "allow ")));
}
/// An empty copy ends the search behind the reading of the clipboard.
bool NeedsCopyOrWords(const std::string& failed, const std::string& line, std::size_t index) {
  return NeedsWords(failed, line, index) || (failed == "mnuEditCopy_Click" && index > 2);
}
bool NeedsUnload(const std::string& failed, const std::string& line, std::size_t /*index*/) {
  return Has(failed, ".Unload") && (Has(line, "Logo_AnimateStop") || Has(line, "Status.Text") ||
                                    Has(line, "Remove hook") || Has(line, "BrowserUnloaded"));
}
bool NeedsNewWindow(const std::string& failed, const std::string& line, std::size_t /*index*/) {
  const bool activation = Has(line, "Panels") || Has(line, "LastDeactivated") || Has(line, ".ExecWB") ||
                          Has(line, "cboAddress.Text");
  return (Has(failed, "Load frmBrowser") && (Has(line, "frmBrowser#2") || activation)) ||
         (Has(failed, "Visible = True") && activation);
}

const std::vector<Scene>& Scenes() {
  static const std::vector<Scene> scenes{
      {"ComingToTheFront", [](Stage& s) { s.window->Form_Activate(); },
       [](Stage& s) { s.engine().busy = true; }},
      {"GoingToTheBack", [](Stage& s) { s.window->Form_Deactivate(); }},
      {"Closing", [](Stage& s) { s.window->Form_Unload(); }},
      {"Sizing", [](Stage& s) { s.window->Form_Resize(); }, [](Stage& s) { s.PopUpInFront(); }},
      {"StatusText", [](Stage& s) { s.window->StatusTextChange("text"); }},
      {"Title", [](Stage& s) { s.window->TitleChange("text"); }},
      {"Command", [](Stage& s) { s.window->CommandStateChange(2, false); }},
      {"BeginningDownload", [](Stage& s) { s.window->DownloadBegin(); }},
      {"Arrival", [](Stage& s) { s.window->NavigateComplete2(s.engine().top, kAddress); },
       [](Stage& s) {
         s.frame.Address().items = s.AddressOf(*s.window).items = {"http://a.example/", kAddress};
       }},
      {"FinishedDownloadOfABarePopUp", [](Stage& s) { s.window->DownloadComplete(); },
       [](Stage& s) {
         s.PopUpInFront();
         s.AddressOf(*s.window).visible = false;
       },
       [](const std::string& failed, const std::string& line, std::size_t) {
         // The one to the front makes the other go to the back.
         return Has(failed, "BringToFront") && (Has(line, "Panels") || Has(line, "LastDeactivated") ||
                                                Has(line, "ExecWB") || Has(line, "cboAddress.Text"));
       }},
      {"Quitting", [](Stage& s) { s.window->OnQuit(); }, [](Stage&) {}, NeedsUnload},
      {"Showing", [](Stage& s) { s.window->OnVisible(true); }},
      {"ScriptedLeft", [](Stage& s) { s.window->WindowSetLeft(1); }},
      {"ScriptedTop", [](Stage& s) { s.window->WindowSetTop(1); }},
      {"ScriptedWidth", [](Stage& s) { s.window->WindowSetWidth(1); }},
      {"ScriptedHeight", [](Stage& s) { s.window->WindowSetHeight(1); }},
      {"TimerTick", [](Stage& s) { s.FormOf(*s.window).TimerOf("ResizeTimer").Tick(); }},
      {"TileButton", [](Stage& s) { s.FormOf(*s.window).ButtonOf("btnGo").Click(); }},
      {"CascadeButton", [](Stage& s) { s.FormOf(*s.window).ButtonOf("btnsearch").Click(); }},
      {"Enter", [](Stage& s) { s.AddressOf(*s.window).Press(13); }, [](Stage&) {}, NeedsNavigate},
      {"DoubleClick", [](Stage& s) { s.AddressOf(*s.window).dblClick(); }},
      {"SearchButton", [](Stage& s) { s.FormOf(*s.window).ButtonOf("SearchWeb").Click(); }, [](Stage&) {},
       NeedsCopyOrWords},
      {"F12", [](Stage& s) { s.keyboard.Press(123); }, [](Stage& s) { s.clipboard.text = "whale"; },
       NeedsWords},
      {"NewWindow",
       [](Stage& s) {
         WebBrowser* ppDisp = nullptr;
         bool cancel = false;
         s.window->NewWindow2(ppDisp, cancel);
         EXPECT_FALSE(cancel);
       },
       [](Stage&) {}, NeedsNewWindow},
  };
  return scenes;
}

class FailingStep : public ::testing::TestWithParam<Scene> {};

/// Plays the scene with its n-th call failing (0: none) and gives what the journal says of it.
std::vector<std::string> Play(const Scene& scene, long n) {
  Stage stage;
  scene.prepare(stage);
  stage.journal.Clear();
  stage.journal.failAt = n == 0 ? 0 : stage.journal.calls + n;
  EXPECT_NO_THROW(scene.act(stage)) << "call " << n;
  return stage.journal.lines;
}

/// How often a setting's key is read is not the window's affair.
std::vector<std::string> WithoutReads(std::vector<std::string> lines) {
  std::erase_if(lines, [](const std::string& line) { return line.rfind("Read ", 0) == 0; });
  return lines;
}

TEST_P(FailingStep, LeavesTheOthersToRun) {
  const Scene& scene = GetParam();
  const std::vector<std::string> clean = Play(scene, 0);
  ASSERT_FALSE(clean.empty()) << "a scene in which nothing happens tests nothing";
  long n = 1;
  for (;; ++n) {
    std::vector<std::string> lines = Play(scene, n);
    const auto failed = std::find_if(lines.begin(), lines.end(),
                                     [](const std::string& line) { return line.rfind("FAILED ", 0) == 0; });
    if (failed == lines.end()) {
      EXPECT_EQ(lines, clean);
      break;
    }
    const auto at = failed - lines.begin();
    const std::string what = failed->substr(7);
    lines.erase(failed);
    std::vector<std::string> expected;
    for (std::size_t i = 0; i < clean.size(); ++i) {
      const bool isFailed = static_cast<std::ptrdiff_t>(i) == at;
      if (!isFailed && !scene.needs(what, clean[i], i)) {
        expected.push_back(clean[i]);
      }
    }
    EXPECT_EQ(WithoutReads(lines), WithoutReads(expected)) << "with \"" << what << "\" failing";
  }
  EXPECT_GT(n, 1) << "no call was made to fail";
}

INSTANTIATE_TEST_SUITE_P(Handlers, FailingStep, ::testing::ValuesIn(Scenes()),
                         [](const auto& row) { return row.param.name; });

/// A page that has gone while its event was on its way.
class GonePage : public PageFrame {
 public:
  [[nodiscard]] bool IsTopLevel() const override { return Gone(); }
  void ClearUnloadHandler() override { Gone(); }
  [[nodiscard]] std::shared_ptr<HtmlDocument> Document() override { return Gone() ? nullptr : nullptr; }

 private:
  static bool Gone() { throw PlatformError(kObjectNotSet, "the page is gone"); }
};

TEST(GoneParts, APageThatHasGoneStillPutsItsAddressIntoTheLists) {
  Stage stage;
  GonePage gone;
  EXPECT_NO_THROW(stage.window->NavigateComplete2(gone, kAddress));
  EXPECT_EQ(stage.AddressOf(*stage.window).items, std::vector<std::string>{kAddress});
  EXPECT_EQ(stage.frame.Address().items, std::vector<std::string>{kAddress});
}

TEST(GoneParts, APageThatHasGoneLeavesNoDocument) {
  Stage stage;
  stage.window->DocumentComplete(stage.engine().top, kAddress);
  ASSERT_TRUE(stage.window->mWbrDoc);
  GonePage gone;
  EXPECT_NO_THROW(stage.window->DocumentComplete(gone, kAddress));
  EXPECT_FALSE(stage.window->mWbrDoc);
}

TEST(GoneParts, AHiddenWindowThatCannotBeClosedGetsTheStepsBehind) {
  Stage stage;
  stage.FormOf(*stage.window).visible = false;
  stage.journal.Clear();
  stage.journal.failAt = stage.journal.calls + 2;
  stage.window->DownloadComplete();
  EXPECT_EQ(stage.journal.lines,
            (std::vector<std::string>{"ShowStillLogo", "FAILED frmBrowser#1.Unload",
                                      "frmBrowser#1.brwWebBrowser.ScriptObject KVD set", "log step"}));
}

TEST(GoneParts, ASettingThatCannotBeReadRefusesNoWindow) {
  Stage stage;
  stage.registry.PutSetting("POP", "1");
  stage.journal.failAt = stage.journal.calls + 1;
  WebBrowser* ppDisp = nullptr;
  bool cancel = false;
  stage.window->NewWindow2(ppDisp, cancel);
  EXPECT_EQ(stage.journal.lines.front(), "FAILED Read POP");
  EXPECT_FALSE(cancel);
  EXPECT_NE(ppDisp, nullptr);
}

TEST(GoneParts, AFrameWithoutItsBarsChangesNoTool) {
  Stage stage;
  stage.frame.Bars().bands.clear();
  EXPECT_NO_THROW(stage.window->CommandStateChange(1, true));
}

}  // namespace
}  // namespace kivandra
