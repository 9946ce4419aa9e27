// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

namespace kivandra {

class FileCalls {
 public:
  virtual ~FileCalls() = default;

  /// Deletes a file; throws PlatformError if it is not there or can't be deleted.
  virtual void Kill(const std::string& path) = 0;
  /// The file's name without its folder, spelled as on disk, or an empty text if there is no such file.
  /// Folders are not files.
  [[nodiscard]] virtual std::string Dir(const std::string& path) const = 0;
  /// Renames a file; throws PlatformError if it is not there, if the new name is taken or if it can't be
  /// done.
  virtual void Name(const std::string& path, const std::string& newPath) = 0;
  /// The whole file; throws PlatformError if it can't be read.
  [[nodiscard]] virtual std::string ReadFile(const std::string& path) const = 0;
  /// Writes the whole file: all of it is there afterwards or, if the call throws PlatformError or the machine
  /// stops in the middle, what was there before. The folder is not made.
  virtual void WriteFile(const std::string& path, const std::string& bytes) = 0;
};

}  // namespace kivandra
