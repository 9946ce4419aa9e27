// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

namespace kivandra {

/// What a folder holds, by name, in the order of the file system.
struct FolderListing {
  struct Folder {
    std::string name;
    bool link = false;  ///< a link to a folder, which may lead round in a ring
  };
  std::vector<Folder> folders;
  std::vector<std::string> files;  ///< files and links to files
};

class FileCalls {
 public:
  virtual ~FileCalls() = default;

  /// Deletes a file; throws PlatformError if it is not there or can't be deleted.
  virtual void Kill(const std::string& path) = 0;
  /// The file's name without its folder, spelled as on disk, or an empty text if there is no such file.
  /// Folders are not files.
  [[nodiscard]] virtual std::string Dir(const std::string& path) const = 0;
  /// Renames or moves a file, or a folder with all that it holds; throws PlatformError if it is not there, if
  /// the new name is taken or if it can't be done (a folder never goes into itself).
  virtual void Name(const std::string& path, const std::string& newPath) = 0;
  /// The whole file; throws PlatformError if it can't be read.
  [[nodiscard]] virtual std::string ReadFile(const std::string& path) const = 0;
  /// Writes the whole file: all of it is there afterwards or, if the call throws PlatformError or the machine
  /// stops in the middle, what was there before. The folder is not made.
  virtual void WriteFile(const std::string& path, const std::string& bytes) = 0;
  /// What the folder holds. Pipes, devices and links that lead nowhere are left out. Throws PlatformError if
  /// it can't be read.
  [[nodiscard]] virtual FolderListing ListFolder(const std::string& path) const = 0;
  /// Makes a folder with the folders above it, for this user alone; one that is there stays as it is. Throws
  /// PlatformError if it can't be made.
  virtual void MakeFolder(const std::string& path) = 0;
  /// Deletes a folder with all that it holds. Links go, what they lead to stays; so it is if the folder
  /// itself is a link. Throws PlatformError if it is not there or if something of it stays.
  virtual void DeleteFolder(const std::string& path) = 0;
};

}  // namespace kivandra
