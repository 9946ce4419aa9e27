// SPDX-License-Identifier: GPL-3.0-or-later
// The frame's skin. A change reaches the frame at once, the other windows when they are loaded next.
#include "core/core_values.h"
#include "core/program_files.h"
#include "core/settings.h"
#include "frame/frm_main.h"
#include "platform/skin_form.h"
#include "support/attempt.h"

namespace kivandra {

void frmMain::ApplySkin(const std::string& path) {
  attempt([&] { Window().Get<SkinForm>("SkinForm1").SetSkinFile(path); });
}

void frmMain::mnuskins_Click() {
  const auto form = form_;
  // 1.
  attempt([&] { CommonDialog1().SetInitDir(ProgramFile(services_.system, "KVDSkins/")); });
  // 2.
  attempt([&] { CommonDialog1().SetFilter("KVD Skins (*.skn)|*.skn"); });
  attempt([&] { CommonDialog1().SetFilterIndex(1); });
  attempt([&] { CommonDialog1().SetFlags(OFN_FILEMUSTEXIST + OFN_HIDEREADONLY); });
  // 3 and 4.
  std::string name;
  attempt([&] {
    CommonDialog1().ShowOpen();
    name = CommonDialog1().FileName();
  });
  if (name.empty()) {
    return;
  }
  // 5.
  ApplySkin(name);
  // 6. kept on purpose: a file that is no skin is remembered all the same.
  SkinFile = name;
  // 7.
  attempt([&] { SaveItem(services_.registry, "skin", SkinFile); });
}

}  // namespace kivandra
