// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include "core/registry.h"
#include "fakes/fake_world.h"
#include "filter/filter_values.h"
#include "panel/frm_options.h"
#include "panel/panel_values.h"

namespace kivandra::fakes {

/// The frame as the parent's windows see it: its status bar.
class FakePanelFrame : public PanelFrame {
 public:
  explicit FakePanelFrame(Journal& journal);
  ~FakePanelFrame() override;
  StatusBar& Status() override;
  FakeStatusBar bar;
};

/// The panel and what it needs; every process-wide value is fresh.
struct PanelWorld : FakeWorld {
  PanelWorld();
  ~PanelWorld();

  FakeForm& Panel();
  FakeForm& Viewer();
  FakeForm& LinkWindow();
  FakeComboBox& Combo(int index);
  /// Types into one of the two lists' boxes and presses a key.
  bool Press(int index, const std::string& text, int keyCode);
  /// A slot of a list as it stands in the settings tree.
  std::string Slot(const std::string& section, int slot);
  void PutSlot(const std::string& section, int slot, Variant value, std::uint32_t type = REG_SZ);

  FakePanelFrame frame{journal};
  frmOptions panel{{forms, boxes, registry, files, system, frame, [this] { journal.Call("DB"); },
                    [this] { journal.Call("Prevent_IE"); }, [this] { journal.Call("Prevent_Netscape"); }}};
};

}  // namespace kivandra::fakes
