// SPDX-License-Identifier: GPL-3.0-or-later
#include "frame/frame_world.h"

#include <algorithm>
#include <array>

namespace kivandra {

FrameWorld::FrameWorld() {
  StartAsUsual();
  PassStartUp();
  journal.Clear();
}

FrameWorld::~FrameWorld() = default;

frmMain& FrameWorld::Main() { return dynamic_cast<frmMain&>(*Frame().events); }

void FrameWorld::StartAgain() {
  again_ =
      std::make_unique<Program>(Platform{forms, loop, boxes, registry, instance, system, files, sound, inet1,
                                         clipboard, session, keyboard, shell, inet, defaultApplication});
  again_->Run();
}

void FrameWorld::PutSearchText(const std::string& text) { ToolOf("Bonus Bar", "SearchCriteria").text = text; }

void FrameWorld::ClickTool(const std::string& name, const std::string& caption) {
  ToolData data;
  data.name = name;
  data.caption = caption;
  auto& bars = Frame().BarsOf("BonusBar");
  fakes::FakeBarControl::FakeTool tool(bars, "", data);
  bars.toolClick(tool);
}

void FrameWorld::CloseChild(int number) {
  Child(number).Close(UnloadMode::ControlMenu);
  journal.Clear();
}

std::vector<std::string> FrameWorld::Effects() const {
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

}  // namespace kivandra
