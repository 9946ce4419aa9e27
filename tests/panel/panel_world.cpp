// SPDX-License-Identifier: GPL-3.0-or-later
#include "panel/panel_world.h"

#include <utility>

namespace kivandra::fakes {

FakePanelFrame::FakePanelFrame(Journal& journal) : bar("frmMain.Status", journal) {}

FakePanelFrame::~FakePanelFrame() = default;

StatusBar& FakePanelFrame::Status() { return bar; }

PanelWorld::PanelWorld() {
  ResetFilterValues();
  ResetPanelValues();
  WindowsDirectory = "/data";
  SkinFile = "/program/winaqua.skn";
}

PanelWorld::~PanelWorld() = default;

FakeForm& PanelWorld::Panel() { return forms.Of("frmOptions"); }

FakeForm& PanelWorld::Viewer() { return forms.Of("Navigation"); }

FakeForm& PanelWorld::LinkWindow() { return forms.Of("parentbrowse"); }

FakeComboBox& PanelWorld::Combo(int index) { return Panel().ComboOf("Combo1_" + std::to_string(index)); }

bool PanelWorld::Press(int index, const std::string& text, int keyCode) {
  Combo(index).text = text;
  return Combo(index).Press(keyCode);
}

std::string PanelWorld::Slot(const std::string& section, int slot) {
  cRegistry at(registry);
  at.SetClassKey(HKEY_CLASSES_ROOT);
  at.SetSectionKey(section);
  at.SetValueKey(std::to_string(slot));
  return TextOf(at.Value());
}

void PanelWorld::PutSlot(const std::string& section, int slot, Variant value, std::uint32_t type) {
  cRegistry at(registry);
  at.SetClassKey(HKEY_CLASSES_ROOT);
  at.SetSectionKey(section);
  at.SetValueKey(std::to_string(slot));
  at.SetValueType(type);
  at.SetValue(std::move(value));
}

}  // namespace kivandra::fakes
