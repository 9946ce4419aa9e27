// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtkmm.h>

#include <memory>
#include <string>

namespace kivandra::gtk {

/// One dress: colours and the desk's picture from a skin file, shapes from the program's own sheet. Each has
/// a class of its own, so that windows in different dresses stand side by side; it is forgotten with its last
/// window.
///
/// A skin file is one CSS text of at most 4 MiB, of which 128 KiB stand outside of comments and quotes:
/// `@define-color` for every name that a dress needs, and rules below `.kv-skin`. It can't reach other
/// windows, load other files or fetch anything: pictures are `data:` addresses. Its colours are its own, each
/// begins with `kv_`.
class SkinSheet {
 public:
  /// Loads a skin file; the same file content gives the same dress while a window wears it. Throws
  /// PlatformError if the file can't be read or is no skin.
  [[nodiscard]] static std::shared_ptr<SkinSheet> Load(const std::string& skinFile,
                                                       const std::string& structure);
  ~SkinSheet();
  SkinSheet(const SkinSheet&) = delete;
  SkinSheet& operator=(const SkinSheet&) = delete;

  /// The class of the windows in this dress.
  [[nodiscard]] const std::string& CssClass() const { return cssClass_; }

 private:
  SkinSheet(const std::string& skin, const std::string& structure);

  std::string cssClass_;
  Glib::RefPtr<Gtk::CssProvider> provider_;
};

/// A sheet of the program: what windows wear that no skin was set for, or what looks the same under every
/// skin.
enum class ProgramSheet { DefaultDress, Fixed };
/// Loads such a sheet for the whole display. Throws PlatformError if the file can't be read or is broken.
void LoadProgramSheet(const std::string& path, ProgramSheet kind);
/// Whole text of a plain file of at most 4 MiB; throws PlatformError. Never waits: a pipe or a device is
/// refused.
[[nodiscard]] std::string ReadSheet(const std::string& path);

}  // namespace kivandra::gtk
