// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <giomm.h>

#include <fstream>
#include <iterator>
#include <string>

namespace kivandra::gtk {

/// Reads what the toolkit prints into a file.
class PdfFile {
 public:
  explicit PdfFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    bytes_.assign(std::istreambuf_iterator<char>(file), {});
  }
  [[nodiscard]] int Pages() const {
    int count = 0;
    constexpr std::string_view kPage = "/Type /Page";
    for (std::size_t at = bytes_.find(kPage); at != std::string::npos; at = bytes_.find(kPage, at + 1)) {
      count += bytes_[at + kPage.size()] != 's' ? 1 : 0;
    }
    return count;
  }
  /// The letters that are shown, in their order; ASCII only.
  [[nodiscard]] std::string Letters() const {
    std::string letters;
    for (std::size_t at = bytes_.find("stream\n"); at != std::string::npos;
         at = bytes_.find("stream\n", at + 1)) {
      if (at < 3 || bytes_.compare(at - 3, 3, "end") != 0) {
        AddShown(Unpacked(bytes_.substr(at + 7)), letters);
      }
    }
    return letters;
  }

 private:
  static std::string Unpacked(const std::string& packed) {
    auto converter = Gio::ZlibDecompressor::create(Gio::ZlibCompressorFormat::ZLIB);
    std::string whole;
    std::string part(1U << 16U, '\0');
    gsize from = 0;
    while (true) {
      gsize read = 0;
      gsize written = 0;
      const auto result =
          g_converter_convert(G_CONVERTER(converter->gobj()), packed.data() + from, packed.size() - from,
                              part.data(), part.size(), G_CONVERTER_NO_FLAGS, &read, &written, nullptr);
      if (result == G_CONVERTER_ERROR) {
        return whole;
      }
      from += read;
      whole.append(part, 0, written);
      if (result == G_CONVERTER_FINISHED) {
        return whole;
      }
    }
  }
  /// The strings between BT and ET.
  static void AddShown(const std::string& content, std::string& letters) {
    for (std::size_t at = content.find("BT\n"); at != std::string::npos; at = content.find("BT\n", at + 1)) {
      const std::size_t end = content.find("\nET", at);
      bool inside = false;
      for (std::size_t i = at; i < end && i < content.size(); ++i) {
        const char c = content[i];
        if (inside && c == '\\') {
          letters += content[++i];
        } else if (c == '(' || c == ')') {
          inside = c == '(';
        } else if (inside) {
          letters += c;
        }
      }
    }
  }

  std::string bytes_;
};

}  // namespace kivandra::gtk
