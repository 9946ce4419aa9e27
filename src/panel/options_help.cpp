// SPDX-License-Identifier: GPL-3.0-or-later
#include "panel/options_help.h"

#include <string_view>

#include "core/program_files.h"
#include "hosts.h"
#include "platform/button.h"
#include "platform/skin_form.h"
#include "support/attempt.h"

namespace kivandra {

namespace {

constexpr std::string_view kOptionsPage = "help/OptionsHelp.htm";
constexpr std::string_view kCheckBoxPage = "help/CheckBox.htm";

bool StartsWith(std::string_view text, std::string_view start) {
  return text.substr(0, start.size()) == start;
}

int HexValue(char c) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  const auto value = kDigits.find(c >= 'A' && c <= 'F' ? static_cast<char>(c + ('a' - 'A')) : c);
  return value == std::string_view::npos ? -1 : static_cast<int>(value);
}

/// A file address as a path: without query and fragment, its percent signs resolved.
std::string PathOfFileAddress(std::string_view address) {
  address = address.substr(0, address.find_first_of("?#"));
  std::string path;
  for (std::size_t at = 0; at < address.size(); ++at) {
    const int high = address[at] == '%' && at + 2 < address.size() ? HexValue(address[at + 1]) : -1;
    const int low = high >= 0 ? HexValue(address[at + 2]) : -1;
    if (low >= 0) {
      path.push_back(static_cast<char>(high * 16 + low));
      at += 2;
    } else {
      path.push_back(address[at]);
    }
  }
  return path;
}

/// A step up would lead out of a folder.
bool StepsUp(std::string_view path) { return path.find("/..") != std::string_view::npos; }

}  // namespace

std::string OnlineHelpAddress() { return "http://" + std::string(hosts::kProductSite) + "/help"; }

bool IsLocalHelpPage(const std::string& address, const std::string& programDirectory) {
  constexpr std::string_view kFile = "file://";
  std::string path = address;
  if (StartsWith(address, kFile)) {
    path = PathOfFileAddress(std::string_view(address).substr(kFile.size()));
  }
  return StartsWith(path, programDirectory + "/help/") && !StepsUp(path);
}

bool IsOnlineHelpPage(const std::string& address) {
  const std::string online = OnlineHelpAddress();
  if (!StartsWith(address, online)) {
    return false;
  }
  const std::string_view rest = std::string_view(address).substr(online.size());
  return (rest.empty() || rest.front() == '/' || rest.front() == '?' || rest.front() == '#') &&
         !StepsUp(rest);
}

void OptionsHelp::Wire(const std::shared_ptr<Form>& form) {
  form_ = form;
  form->Get<WebBrowser>("Help").SetEvents(this);
  for (const char* button : {"SkinButton2", "SkinButton3"}) {
    form->Get<Button>(button).OnClick([this] { ShowPage(ProgramFile(system_, kOptionsPage)); });
  }
  form->Get<Button>("SkinButton4").OnClick([this] { ShowPage(ProgramFile(system_, kCheckBoxPage)); });
  form->Get<Button>("Command3").OnClick([this] { Command3_Click(); });
}

void OptionsHelp::Unwire(Form& form) {
  attempt([&] { form.Get<WebBrowser>("Help").SetEvents(nullptr); });
}

void OptionsHelp::ShowPage(const std::string& address) {
  if (const auto form = form_.lock()) {
    attempt([&] { form->Get<WebBrowser>("Help").Navigate(address); });
    attempt([&] { form->Get<WebBrowser>("Help").SetVisible(true); });
  }
}

/// kept on purpose: the caption of the form file bears an access key and so is not "Online Help". The first
/// press goes the other way, and only the second opens the help.
void OptionsHelp::Command3_Click() {
  const auto form = form_.lock();
  if (!form) {
    return;
  }
  auto& button = form->Get<Button>("Command3");
  std::string caption;
  attempt([&] { caption = button.Caption(); });
  const bool open = caption == "Online Help";
  if (open) {
    ShowPage(OnlineHelpAddress());
  } else {
    attempt([&] { form->Get<WebBrowser>("Help").SetVisible(false); });
  }
  attempt([&] { button.SetCaption(""); });
  attempt([&] { form->Get<SkinForm>("SkinForm1").ApplyTo(button); });
  attempt([&] { button.SetCaption(open ? "Close Help" : "Online Help"); });
}

void OptionsHelp::BeforeNavigate2(std::shared_ptr<Navigation> navigation) {
  const std::string& address = navigation->Url();
  const bool closes = address.find("CLOSE") != std::string::npos;
  if (closes) {
    // Command3 does not learn of it. The page behind the link loads out of sight.
    if (const auto form = form_.lock()) {
      attempt([&] { form->Get<WebBrowser>("Help").SetVisible(false); });
    }
  }
  if (IsLocalHelpPage(address, system_.ProgramDirectory())) {
    navigation->AllowFile();  // these pages lead to one another
  } else if (closes || IsOnlineHelpPage(address)) {
    navigation->Allow();
  } else {
    navigation->Refuse();
  }
}

}  // namespace kivandra
