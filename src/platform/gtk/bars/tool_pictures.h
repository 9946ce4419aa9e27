// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <map>
#include <string>

namespace kivandra::gtk {

/// The numbered pictures of a folder: "051-back.svg" has the number 51.
class ToolPictures {
 public:
  explicit ToolPictures(const std::string& directory);

  /// The picture file of a number, or an empty string.
  [[nodiscard]] std::string File(int number) const;

 private:
  std::map<int, std::string> files_;
};

/// The words that a picture shows or means: its title, or else the words of its file's name ("061-go.svg" is
/// "Go"). Empty for no file.
[[nodiscard]] std::string WordsOfPicture(const std::string& file);

/// The size in pixels that a picture was drawn for; 0 x 0 if it can't be read.
struct PictureSize {
  int width = 0;
  int height = 0;
};
[[nodiscard]] PictureSize SizeOfPicture(const std::string& file);

}  // namespace kivandra::gtk
