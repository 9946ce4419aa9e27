// SPDX-License-Identifier: GPL-3.0-or-later
#include "fakes/whole_program.h"

namespace kivandra::fakes {

WholeProgram::WholeProgram() { ResetFilterValues(); }

WholeProgram::~WholeProgram() = default;

void WholeProgram::StartAsUsual() {
  SaveItem(registry, "T_PW", "Secret");
  SaveItem(registry, "F_C", "1");
  SaveItem(registry, "FirstTime", "1");
  program.Run();
}

void WholeProgram::PassStartUp() { loop.Advance(5000); }

FakeForm& WholeProgram::Frame() { return forms.Of("frmMain"); }

FakeForm& WholeProgram::Child(int number) { return forms.Of("frmBrowser#" + std::to_string(number)); }

FakeWebBrowser& WholeProgram::Browser(int number) { return Child(number).BrowserOf("brwWebBrowser"); }

FakeBarControl::FakeTool& WholeProgram::ToolOf(const std::string& band, const std::string& name) {
  return dynamic_cast<FakeBarControl::FakeTool&>(Frame().BarsOf("BonusBar").Bands(band).Tools(name));
}

void WholeProgram::Click(const std::string& band, const std::string& name) {
  Frame().BarsOf("BonusBar").toolClick(ToolOf(band, name));
}

void WholeProgram::OpenPanel(const std::string& password) {
  Frame().MenusOf("Menu").Choose("mnuAdmin");
  forms.Of("frmPassword").TextBoxOf("txtPassword").text = password.empty() ? Setting("T_PW") : password;
  forms.Of("frmPassword").ButtonOf("cmdOK").Click();
}

void WholeProgram::Type(const std::string& text, int number) {
  auto& box = Child(number).ComboOf("cboAddress");
  box.text = text;
  box.Press(kKeyReturn);
}

}  // namespace kivandra::fakes
