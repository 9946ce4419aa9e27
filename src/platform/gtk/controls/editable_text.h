// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtk/gtk.h>

#include <optional>
#include <string>

namespace kivandra::gtk {

/// The text of an entry. What the program sets is given back byte by byte until a person edits it, even where
/// the entry can't show it as it is (invalid UTF-8, or more than an entry can lay out in good time).
class EditableText {
 public:
  explicit EditableText(GtkEditable* entry);

  [[nodiscard]] std::string Get() const;
  void Set(const std::string& text);

 private:
  static void Changed(GtkEditable*, gpointer self);

  GtkEditable* entry_;
  std::optional<std::string> whole_;
  bool setting_ = false;
};

}  // namespace kivandra::gtk
