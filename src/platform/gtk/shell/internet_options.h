// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtkmm.h>

#include <functional>
#include <string>
#include <vector>

#include "platform/gtk/forms/title_bar.h"
#include "platform/gtk/shell/sent_keys.h"

namespace kivandra::gtk {

/// Whether pages show their pictures: read when the window opens, written by its OK.
struct PictureChoice {
  std::function<bool()> shown;
  std::function<void(bool)> setShown;
};

/// What this browser is set up to do, in words, as the list of the window shows it: every row is fixed but
/// the one for pictures, which is the row number `kPicturesRow`, counted from 0.
inline constexpr int kPicturesRow = 45;
[[nodiscard]] const std::vector<const char*>& FixedOptions();

/// The window "Internet Options". A child can open it, so that nothing in it loosens what guards the child:
/// it tells how the browser is set up, and lets pictures be switched on and off.
class InternetOptions {
 public:
  /// `page` counts as the commands do: 6 is "Advanced", every other "Content". Events do not run inside.
  InternetOptions(Gtk::Window* parent, int page, PictureChoice pictures, std::function<void()> onClosed);
  ~InternetOptions();
  InternetOptions(const InternetOptions&) = delete;
  InternetOptions& operator=(const InternetOptions&) = delete;

  void ShowPage(int page);
  /// Carries a key out as if it had been typed into the window; one that it has no use for is lost. The
  /// window may be closed afterwards.
  void Send(const SentKey& key);

 private:
  void AddContent();
  void AddAdvanced();
  void AddButtons();
  Gtk::Button* AddButton(Gtk::Box& row, const char* caption, std::function<void()> work);
  void AddRow(const char* text, bool isFixed);
  void Step(int rows);
  void Flip();
  void ShowMark();
  void Ok();
  void Close();

  Gtk::Window window_;
  Gtk::Box body_{Gtk::Orientation::VERTICAL, 12};
  TitleBar titleBar_;
  Gtk::Notebook pages_;
  Gtk::ListBox list_;
  Gtk::Widget* mark_ = nullptr;  // of the row for pictures
  PictureChoice pictures_;
  bool shown_;
  std::function<void()> onClosed_;
};

}  // namespace kivandra::gtk
