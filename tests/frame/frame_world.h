// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <array>
#include <memory>
#include <string>
#include <vector>

#include "fakes/whole_program.h"
#include "frame/frm_main.h"

namespace kivandra {

/// The whole program some time after its start, with one child window in front, at the home page, and an
/// empty journal.
struct FrameWorld : fakes::WholeProgram {
  FrameWorld() {
    StartAsUsual();
    PassStartUp();
    journal.Clear();
  }

  frmMain& Main() { return dynamic_cast<frmMain&>(*Frame().events); }
  /// Starts the program once more on the same machine, after its end.
  void StartAgain() {
    again_ = std::make_unique<Program>(Platform{forms, loop, boxes, registry, instance, system, files, sound,
                                                inet1, clipboard, session, keyboard, shell, inet,
                                                defaultApplication});
    again_->Run();
  }

  void PutSearchText(const std::string& text) { ToolOf("Bonus Bar", "SearchCriteria").text = text; }
  /// Clicks a tool that need not stand on a bar.
  void ClickTool(const std::string& name, const std::string& caption) {
    ToolData data;
    data.name = name;
    data.caption = caption;
    auto& bars = Frame().BarsOf("BonusBar");
    fakes::FakeBarControl::FakeTool tool(bars, "", data);
    bars.toolClick(tool);
  }
  void CloseChild(int number = 1) {
    Child(number).Close(UnloadMode::ControlMenu);
    journal.Clear();
  }
  /// What the journal tells of boxes, outside programs, keys and pages; the moving logo and the gate left
  /// out.
  [[nodiscard]] std::vector<std::string> Effects() const {
    constexpr std::array kEffects = {"MsgBox ", "Shell ", "SendKeys ", "Load "};
    constexpr std::array kByItself = {".ExecWB 21,", ".ScriptObject ", ".RegisterAsBrowser "};
    std::vector<std::string> effects;
    std::copy_if(journal.lines.begin(), journal.lines.end(), std::back_inserter(effects),
                 [&](const std::string& line) {
                   const auto has = [&](const char* part) { return line.find(part) != std::string::npos; };
                   return (has(".brwWebBrowser.") && std::none_of(kByItself.begin(), kByItself.end(), has)) ||
                          std::any_of(kEffects.begin(), kEffects.end(),
                                      [&](const char* effect) { return line.starts_with(effect); });
                 });
    return effects;
  }

 private:
  std::unique_ptr<Program> again_;
};

}  // namespace kivandra
