// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtkmm.h>

#include <memory>
#include <string>

#include "platform/common_dialog.h"
#include "platform/gtk/controls/absent_control.h"

namespace kivandra::gtk {

/// Registers `KvCommonDialog`, a plain object of form files: the place of a window's file dialog.
void RegisterCommonDialogType();
[[nodiscard]] bool IsCommonDialog(GObject* object);

/// The toolkit's own file chooser in the program's plain dress. It is the program's window, not one that the
/// desktop lends, so that it looks and behaves the same everywhere; it shows no menu of its own, since that
/// one renames, deletes, and starts a file manager.
class CommonDialogControl : public AbsentControl, public CommonDialog {
 public:
  /// `window` is the widget that bears the form; the dialog stands over its window.
  explicit CommonDialogControl(Gtk::Widget& window);
  ~CommonDialogControl() override;

  void SetInitDir(const std::string& folder) override;
  void SetFilter(const std::string& filter) override;
  void SetFilterIndex(int index) override;
  void SetFlags(int flags) override;
  /// Returns with an empty name if the form goes meanwhile. Throws PlatformError if it is open already.
  void ShowOpen() override;
  [[nodiscard]] std::string FileName() const override;
  void LetGo() override;

 private:
  struct Showing;

  Gtk::Widget& window_;
  std::string initDir_;
  std::string lastDir_;
  std::string filter_;
  int filterIndex_ = 1;
  int flags_ = 0;
  std::string fileName_;
  std::weak_ptr<Showing> showing_;
  std::shared_ptr<int> alive_ = std::make_shared<int>();
};

}  // namespace kivandra::gtk
