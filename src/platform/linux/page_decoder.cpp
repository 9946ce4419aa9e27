// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/page_decoder.h"

#include <unicode/ucnv.h>

#include <algorithm>
#include <array>
#include <utility>

namespace kivandra::linux_impl {
namespace {

constexpr std::size_t kPieceBytes = 64 * 1024;
constexpr char16_t kReplacementSign = 0xFFFD;
constexpr char16_t kByteOrderMark = 0xFEFF;

void AppendUtf8(std::string& text, char32_t character) {
  const auto add = [&text](char32_t byte) { text += static_cast<char>(byte); };
  if (character < 0x80) {
    add(character);
  } else if (character < 0x800) {
    add(0xC0 | (character >> 6));
    add(0x80 | (character & 0x3F));
  } else if (character < 0x10000) {
    add(0xE0 | (character >> 12));
    add(0x80 | ((character >> 6) & 0x3F));
    add(0x80 | (character & 0x3F));
  } else {
    add(0xF0 | (character >> 18));
    add(0x80 | ((character >> 12) & 0x3F));
    add(0x80 | ((character >> 6) & 0x3F));
    add(0x80 | (character & 0x3F));
  }
}

bool HasZeroCharacter(const std::string& bytes, const Charset& charset) {
  if (charset != kUtf16Le && charset != kUtf16Be) return bytes.find('\0') != std::string::npos;
  for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
    if (bytes[i] == '\0' && bytes[i + 1] == '\0') return true;
  }
  return false;
}

bool IsLead(char16_t unit) { return unit >= 0xD800 && unit < 0xDC00; }
bool IsTrail(char16_t unit) { return unit >= 0xDC00 && unit < 0xE000; }

}  // namespace

/// One reading on its way: bytes in, UTF-16 out, what is broken becomes replacement signs.
class PageDecoder::Converter {
 public:
  explicit Converter(Reading reading) : reading_(std::move(reading)) {
    if (reading_.charset == kUserDefined) return;
    UErrorCode error = U_ZERO_ERROR;
    converter_ = ucnv_open(reading_.charset.c_str(), &error);
    if (U_FAILURE(error)) {
      error = U_ZERO_ERROR;
      converter_ = ucnv_open(kWestern, &error);
    }
  }
  ~Converter() {
    if (converter_ != nullptr) ucnv_close(converter_);
  }
  Converter(const Converter&) = delete;
  Converter& operator=(const Converter&) = delete;

  void Convert(const char* begin, const char* end, bool last, std::string& text) {
    if (reading_.charset == kUserDefined) {
      for (const char* byte = begin; byte != end; ++byte) {
        const auto value = static_cast<unsigned char>(*byte);
        Append(value < 0x80 ? value : static_cast<char16_t>(0xF700 + value), text);
      }
      return;
    }
    if (converter_ == nullptr) return;
    std::array<char16_t, 8192> units;
    const char* source = begin;
    UErrorCode error;
    do {
      error = U_ZERO_ERROR;
      char16_t* target = units.data();
      ucnv_toUnicode(converter_, &target, units.data() + units.size(), &source, end, nullptr, last ? 1 : 0,
                     &error);
      for (const char16_t* unit = units.data(); unit != target; ++unit) Append(*unit, text);
    } while (error == U_BUFFER_OVERFLOW_ERROR);
    if (last && lead_ != 0) AppendUtf8(text, kReplacementSign);
  }

 private:
  void Append(char16_t unit, std::string& text) {
    if (const char16_t lead = std::exchange(lead_, u'\0'); lead != 0) {
      if (IsTrail(unit)) {
        AppendUtf8(text, 0x10000 + ((static_cast<char32_t>(lead) - 0xD800) << 10) + (unit - 0xDC00U));
        return;
      }
      AppendUtf8(text, kReplacementSign);
    }
    const bool first = std::exchange(atStart_, false);
    if (IsLead(unit)) {
      lead_ = unit;
    } else if (IsTrail(unit)) {
      AppendUtf8(text, kReplacementSign);
    } else if (unit == 0) {
      if (reading_.keepsZeros) AppendUtf8(text, kReplacementSign);
    } else if (!(first && unit == kByteOrderMark)) {
      AppendUtf8(text, unit);
    }
  }

  Reading reading_;
  UConverter* converter_ = nullptr;
  char16_t lead_ = 0;  // first half of a pair whose second half is still to come
  bool atStart_ = true;
};

PageDecoder::PageDecoder(std::string bytes, const std::string& contentType) : bytes_(std::move(bytes)) {
  for (const Charset& charset : ReadingsOf(bytes_, contentType)) {
    readings_.push_back({charset, false});
    if (HasZeroCharacter(bytes_, charset)) readings_.push_back({charset, true});
  }
  std::reverse(readings_.begin(), readings_.end());
}

PageDecoder::~PageDecoder() = default;

bool PageDecoder::Step() {
  if (!converter_) {
    if (readings_.empty() || bytes_.empty()) return false;
    if (!text_.empty()) text_ += '\n';
    converter_ = std::make_unique<Converter>(std::move(readings_.back()));
    readings_.pop_back();
    position_ = 0;
  }
  const std::size_t length = std::min(kPieceBytes, bytes_.size() - position_);
  const char* begin = bytes_.data() + position_;
  position_ += length;
  const bool last = position_ == bytes_.size();
  converter_->Convert(begin, begin + length, last, text_);
  if (last) converter_.reset();
  return converter_ != nullptr || !readings_.empty();
}

std::string DecodePage(std::string bytes, const std::string& contentType) {
  PageDecoder decoder(std::move(bytes), contentType);
  while (decoder.Step()) {
  }
  return decoder.TakeText();
}

}  // namespace kivandra::linux_impl
