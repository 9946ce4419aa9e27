// SPDX-License-Identifier: GPL-3.0-or-later
#include "panel/frm_options.h"

#include <algorithm>
#include <array>
#include <utility>

#include "core/application.h"
#include "core/core_values.h"
#include "core/settings.h"
#include "core/unload_with_owner.h"
#include "core/user_settings.h"
#include "panel/panel_values.h"
#include "platform/button.h"
#include "platform/calendar.h"
#include "platform/check_box.h"
#include "platform/label.h"
#include "platform/picture_box.h"
#include "platform/skin_form.h"
#include "platform/text_box.h"
#include "support/attempt.h"

namespace kivandra {

namespace {

/// A check box and the setting that it stands for, in the order in which the load reads them.
struct OptionBox {
  const char* box;
  const char* setting;
};
constexpr std::array<OptionBox, 9> kOptionBoxes = {{{"Record_Navigation", "R_N"},
                                                    {"Prevent_IE", "P_IE"},
                                                    {"Prevent_Netscape", "P_NS"},
                                                    {"Filter_Check", "F_C"},
                                                    {"Disable_Email", "D_EM"},
                                                    {"Tip_OfDay", "T_OD"},
                                                    {"Back_Button", "B_B"},
                                                    {"Popup", "POP"},
                                                    {"Sound", "Sound"}}};

constexpr std::array<const char*, 2> kNewPasswords = {"NewPassword_0", "NewPassword_1"};

TextBox& NewPassword(Form& form, std::size_t index) { return form.Get<TextBox>(kNewPasswords.at(index)); }

template <typename Kind>
void Dress(Form& form, const std::string& name) {
  attempt([&] { form.Get<SkinForm>("SkinForm1").ApplyTo(form.Get<Kind>(name)); });
}

}  // namespace

frmOptions::frmOptions(Services services)
    : services_(std::move(services)), lists_(services_.boxes, services_.registry), help_(services_.system) {}

frmOptions::~frmOptions() {
  if (form_ && form_->Loaded()) {
    help_.Unwire(*form_);
  }
  UnloadWithOwner(form_.get());
}

void frmOptions::Show() {
  if (!form_ || !form_->Loaded()) {
    Form_Load();
  }
  const auto form = form_;
  form->SetVisible(true);
  form->BringToFront();
}

void frmOptions::Form_Load() {
  form_ = services_.forms.Load("frmOptions");
  const auto form = form_;
  form->SetEvents(this);
  // 1.
  ApplySkin(*form);
  // 2.
  lists_.RefreshDomainLists(*form);
  // 3.
  attempt([&] { form->Get<Calendar>("Calendar1").Today(); });
  // 4. At the top of the screen, in the middle of its width.
  attempt([&] { form->SetLeft((services_.forms.ScreenWidth() - form->Width()) / 2); });
  attempt([&] { form->SetTop(0); });
  Wire();
  // 5 to 7.
  LoadBoxes(*form);
  // 8.
  attempt([&] { form->Get<TextBox>("HomePage").SetText(StoredHomePage(services_.registry)); });
}

void frmOptions::ApplySkin(Form& form) {
  attempt([&] { form.Get<SkinForm>("SkinForm1").SetSkinFile(SkinFile); });
  for (const char* panel : {"SkinPanel1", "SkinPanel2"}) {
    Dress<PictureBox>(form, panel);
  }
  for (const char* button : {"Command1", "DB", "cmdCancel", "Command3", "NewPasswordButton"}) {
    Dress<Button>(form, button);
  }
  constexpr int kLabels = 10;
  for (int label = 0; label < kLabels; ++label) {
    Dress<Label>(form, "SkinLabel1_" + std::to_string(label));
  }
  for (const char* label : {"SkinLabel2", "SkinLabel3"}) {
    Dress<Label>(form, label);
  }
  for (const char* button : {"Skinbutton1", "SkinButton2", "SkinButton3", "SkinButton4"}) {
    Dress<Button>(form, button);
  }
}

void frmOptions::Wire() {
  Form& form = *form_;
  for (const OptionBox& each : kOptionBoxes) {
    const std::string box = each.box;
    const std::function<void()>& then = box == "Prevent_IE"         ? services_.Prevent_IE
                                        : box == "Prevent_Netscape" ? services_.Prevent_Netscape
                                                                    : std::function<void()>();
    form.Get<CheckBox>(box).OnClick([this, each, then] { CheckBox_Click(each.box, each.setting, then); });
  }
  form.Get<Button>("Skinbutton1").OnClick([this] { Skinbutton1_Click(); });
  form.Get<Button>("Command1").OnClick([this] { Command1_Click(); });
  for (int index = 0; index < static_cast<int>(kNewPasswords.size()); ++index) {
    NewPassword(form, static_cast<std::size_t>(index)).OnKeyDown([this, index](int keyCode) {
      return NewPassword_KeyDown(index, keyCode);
    });
  }
  form.Get<Button>("NewPasswordButton").OnClick([this] { NewPasswordButton_Click(); });
  form.Get<Button>("DB").OnClick([this] {
    if (services_.DB) {
      attempt([&] { services_.DB(); });
    }
  });
  form.Get<Calendar>("Calendar1").OnClick([this] { Calendar1_Click(); });
  form.Get<Button>("cmdCancel").OnClick([this] { cmdCancel_Click(); });
  lists_.Wire(form_);
  help_.Wire(form_);
}

void frmOptions::LoadBoxes(Form& form) {
  // 5.
  PanelLoading_ = true;
  // 6. A missing setting leaves its box clear.
  for (const OptionBox& each : kOptionBoxes) {
    attempt([&] {
      const long value = Val(TextOf(ReadItem(services_.registry, each.setting)));
      form.Get<CheckBox>(each.box).SetValue(value != 0 ? 1 : 0);
    });
  }
  // 7.
  OptionsOpen = true;
  PanelLoading_ = false;
}

void frmOptions::CheckBox_Click(const char* box, const char* setting, const std::function<void()>& then) {
  if (PanelLoading_) {
    return;
  }
  const auto form = form_;
  attempt([&] { SaveItem(services_.registry, setting, std::to_string(form->Get<CheckBox>(box).Value())); });
  if (then) {
    attempt([&] { then(); });
  }
}

void frmOptions::Skinbutton1_Click() {
  const auto form = form_;
  attempt([&] {
    SaveSetting(services_.registry, "Kivandra", "Home Page", "URL", form->Get<TextBox>("HomePage").Text());
  });
}

void frmOptions::Command1_Click() {
  const auto form = form_;
  for (std::size_t index = 0; index < kNewPasswords.size(); ++index) {
    attempt([&] { NewPassword(*form, index).SetEnabled(true); });
  }
  attempt([&] { form->Get<Button>("NewPasswordButton").SetEnabled(true); });
  for (std::size_t index = 0; index < kNewPasswords.size(); ++index) {
    attempt([&] { NewPassword(*form, index).SetBackColor(SystemColor::Window); });
  }
  attempt([&] { NewPassword(*form, 0).SetFocus(); });
}

/// Enter goes to the other box, and never records the password.
bool frmOptions::NewPassword_KeyDown(int index, int keyCode) {
  if (keyCode != kKeyReturn) {
    return false;
  }
  const auto form = form_;
  attempt([&] {
    if (!NewPassword(*form, static_cast<std::size_t>(index)).Text().empty()) {
      NewPassword(*form, static_cast<std::size_t>(1 - index)).SetFocus();
    }
  });
  return true;
}

void frmOptions::NewPasswordButton_Click() {
  const auto form = form_;
  const auto emptyBoxes = [&form] {
    for (std::size_t index = 0; index < kNewPasswords.size(); ++index) {
      attempt([&] { NewPassword(*form, index).SetText(""); });
    }
  };
  std::string text;
  std::string again;
  const bool read = attempt([&] {
    text = NewPassword(*form, 0).Text();
    again = NewPassword(*form, 1).Text();
  });
  if (read && text == again && !text.empty()) {
    // kept on purpose: the box comes even if the store would not take it; the old password then stays.
    attempt([&] { SaveItem(services_.registry, "T_PW", text); });
    emptyBoxes();
    for (std::size_t index = 0; index < kNewPasswords.size(); ++index) {
      attempt([&] { NewPassword(*form, index).SetBackColor(SystemColor::Window); });
    }
    for (std::size_t index = 0; index < kNewPasswords.size(); ++index) {
      attempt([&] { NewPassword(*form, index).SetEnabled(false); });
    }
    attempt([&] {
      services_.boxes.MsgBox(
          "Password has been recorded.  Please write down your password and store it in a safe area.");
    });
    return;
  }
  emptyBoxes();
  attempt([&] { NewPassword(*form, 0).SetFocus(); });
  attempt([&] { services_.boxes.MsgBox("Invalid Password, try again!", kMsgOkOnly, "Password Error"); });
}

void frmOptions::Calendar1_Click() {
  // 1. One viewer at a time.
  if (NavigationOpen) {
    return;
  }
  const auto form = form_;
  // 2.
  attempt([&] {
    auto& calendar = form->Get<Calendar>("Calendar1");
    const std::string day = std::to_string(calendar.Day());
    const std::string month = std::to_string(calendar.Month());
    const std::string year = std::to_string(calendar.Year());
    LogDateCaption = day;
    LogDateCaption.append("/").append(month).append("/").append(year);
    LogDateKey = day;
    LogDateKey.append(month).append(year);
  });
  // 3.
  viewers_.erase(
      std::remove_if(viewers_.begin(), viewers_.end(), [](const auto& viewer) { return viewer->Ended(); }),
      viewers_.end());
  viewers_.push_back(std::make_unique<NavigationViewer>(
      NavigationViewer::Services{services_.forms, services_.files, services_.frame}));
  attempt([&] { viewers_.back()->Show(); });
}

void frmOptions::cmdCancel_Click() {
  const auto form = form_;
  attempt([&] { form->Unload(); });
}

void frmOptions::Form_Unload() {
  help_.Unwire(*form_);
  OptionsOpen = false;
}

}  // namespace kivandra
