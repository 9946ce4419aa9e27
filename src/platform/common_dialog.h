// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include "platform/control.h"

namespace kivandra {

// Flags of the dialog; the numbers are those of commdlg.h.
inline constexpr int OFN_HIDEREADONLY = 4;
inline constexpr int OFN_FILEMUSTEXIST = 4096;

/// The dialog in which a person chooses a file.
class CommonDialog : public virtual Control {
 public:
  static constexpr ControlKind kKind = ControlKind::CommonDialog;

  /// Folder that is shown first; empty for the one shown last.
  virtual void SetInitDir(const std::string& folder) = 0;
  /// Pairs of a description and its patterns, all parted by "|", the patterns of a pair by ";".
  virtual void SetFilter(const std::string& filter) = 0;
  /// Which pair is in force, counted from 1.
  virtual void SetFilterIndex(int index) = 0;
  virtual void SetFlags(int flags) = 0;
  /// Shows the dialog and runs events until it is answered. Cancelling leaves the name empty.
  virtual void ShowOpen() = 0;
  /// Full path of the file that was chosen, or empty.
  [[nodiscard]] virtual std::string FileName() const = 0;
};

}  // namespace kivandra
