// SPDX-License-Identifier: GPL-3.0-or-later
// The ways from a text to a page: the address box, the button for the selected words, and the F12 key.
#include "browser/frm_browser.h"
#include "browser/routing.h"
#include "support/attempt.h"

namespace kivandra {

std::string frmBrowser::getURL(const std::string& text) { return kivandra::getURL(text); }

bool frmBrowser::cboAddress_KeyDown(int keyCode) {
  if (keyCode != kKeyReturn) {
    return false;
  }
  GoToTypedAddress();
  return true;
}

/// An item that a person chooses from the list is gone to as if it had been typed.
void frmBrowser::cboAddress_Click() { GoToTypedAddress(); }

void frmBrowser::GoToTypedAddress() {
  attempt([&] { brwWebBrowser_.Stop(); });
  attempt([&] { services_.frame.Logo_Animate(); });
  attempt([&] { brwWebBrowser_.Navigate(getURL(cboAddress_.Text())); });
}

void frmBrowser::cboAddress_DblClick() {
  attempt([&] { cboAddress_.SetText(""); });
}

void frmBrowser::SearchWeb_Click() {
  // 1. So that an empty selection does not search for what the clipboard held before.
  attempt([&] { services_.clipboard.Clear(); });
  // 2.
  attempt([&] { services_.frame.mnuEditCopy_Click(); });
  // 3.
  std::string words;
  const bool read = attempt([&] { words = services_.clipboard.GetText(); });
  if (read && words.empty()) {
    return;
  }
  // 4. kept on purpose: always the word search, and in the active window, which need not be this one.
  attempt([&] {
    if (const auto active = services_.frame.ActiveForm(); read && active) {
      active->brwWebBrowser_.Navigate(WordSearchURL(words));
    }
  });
  // 5.
  attempt([&] { services_.clipboard.Clear(); });
}

void frmBrowser::Keyboard_KeyDown(std::int16_t& KeyCode, std::int16_t& /*Shift*/) {
  const auto self = shared_from_this();
  if (KeyCode != kKeyF12) {
    return;
  }
  // 1. kept on purpose: the clipboard is not cleared first, so with nothing selected the search is for what
  // it holds.
  attempt([&] { services_.frame.mnuEditCopy_Click(); });
  // 2.
  std::string words;
  const bool read = attempt([&] { words = services_.clipboard.GetText(); });
  if (read && words.empty()) {
    return;
  }
  // 3.
  if (read) {
    attempt([&] { brwWebBrowser_.Navigate(HotKeySearchURL(words)); });
  }
  // 4.
  attempt([&] { services_.clipboard.Clear(); });
}

}  // namespace kivandra
