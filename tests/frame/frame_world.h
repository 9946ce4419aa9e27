// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "fakes/whole_program.h"
#include "frame/frm_main.h"

namespace kivandra {

/// The whole program some time after its start, with one child window in front, at the home page, and an
/// empty journal.
struct FrameWorld : fakes::WholeProgram {
  FrameWorld();
  ~FrameWorld();

  frmMain& Main();
  /// Starts the program once more on the same machine, after its end.
  void StartAgain();

  void PutSearchText(const std::string& text);
  /// Clicks a tool that need not stand on a bar.
  void ClickTool(const std::string& name, const std::string& caption);
  void CloseChild(int number = 1);
  /// What the journal tells of boxes, outside programs, keys and pages; the moving logo and the gate left
  /// out.
  [[nodiscard]] std::vector<std::string> Effects() const;

 private:
  std::unique_ptr<Program> again_;
};

}  // namespace kivandra
