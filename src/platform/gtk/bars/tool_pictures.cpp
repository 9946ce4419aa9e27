// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gtk/bars/tool_pictures.h"

#include <gdk-pixbuf/gdk-pixbuf.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace kivandra::gtk {
namespace {

/// The title stands at the head of a picture, so only the head is read.
std::string TitleOf(const std::string& file) {
  constexpr std::size_t kHead = 512;
  const std::string open = "<title>";
  std::string head(kHead, '\0');
  std::ifstream stream(file, std::ios::binary);
  stream.read(head.data(), static_cast<std::streamsize>(head.size()));
  head.resize(static_cast<std::size_t>(stream.gcount()));
  const auto begin = head.find(open);
  const auto end = head.find("</title>");
  if (begin == std::string::npos || end == std::string::npos || end < begin) {
    return {};
  }
  return head.substr(begin + open.size(), end - begin - open.size());
}

}  // namespace

ToolPictures::ToolPictures(const std::string& directory) {
  constexpr std::size_t kDigits = 3;
  std::error_code error;
  for (const auto& file : std::filesystem::directory_iterator(directory, error)) {
    const std::string name = file.path().filename().string();
    if (name.find_first_not_of("0123456789") == kDigits && name[kDigits] == '-') {
      files_[std::atoi(name.substr(0, kDigits).c_str())] = file.path().string();
    }
  }
}

std::string ToolPictures::File(int number) const {
  const auto found = files_.find(number);
  return found == files_.end() ? std::string() : found->second;
}

std::string WordsOfPicture(const std::string& file) {
  if (file.empty()) {
    return {};
  }
  if (std::string title = TitleOf(file); !title.empty()) {
    return title;
  }
  std::string words = std::filesystem::path(file).stem().string();
  words = words.substr(words.find('-') + 1);
  bool begins = true;
  for (char& letter : words) {
    letter = letter == '-' ? ' ' : begins ? g_ascii_toupper(letter) : letter;
    begins = letter == ' ';
  }
  return words;
}

PictureSize SizeOfPicture(const std::string& file) {
  PictureSize size;
  if (file.empty() || gdk_pixbuf_get_file_info(file.c_str(), &size.width, &size.height) == nullptr) {
    return {};
  }
  return size;
}

}  // namespace kivandra::gtk
