// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "platform/linux/page_charset.h"

namespace kivandra::linux_impl {

/// Turns a page's bytes into UTF-8 text, a piece at a time.
///
/// If the engine may show the page in more than one reading, the text is all of them, one behind the other
/// with a line break between, so that a word is found in whichever is shown. In the same way a page with zero
/// bytes is given without them, as the engine shows them in a page, and with a replacement sign in their
/// place, as it shows them in a plain text.
class PageDecoder {
 public:
  PageDecoder(std::string bytes, const std::string& contentType);
  ~PageDecoder();
  PageDecoder(const PageDecoder&) = delete;
  PageDecoder& operator=(const PageDecoder&) = delete;

  /// Decodes the next piece; false once nothing is left to do.
  bool Step();
  /// The text, when Step has returned false.
  [[nodiscard]] std::string TakeText() { return std::move(text_); }

 private:
  class Converter;
  struct Reading {
    Charset charset;
    bool keepsZeros;
  };

  std::string bytes_;
  std::vector<Reading> readings_;  // still to do, the next one last
  std::size_t position_ = 0;
  std::unique_ptr<Converter> converter_;
  std::string text_;
};

/// The whole text at once.
[[nodiscard]] std::string DecodePage(std::string bytes, const std::string& contentType);

}  // namespace kivandra::linux_impl
