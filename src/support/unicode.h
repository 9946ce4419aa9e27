// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace kivandra {

/// What a byte that belongs to no valid UTF-8 sequence is read as. Neither a letter nor a digit.
inline constexpr char32_t kReplacementCharacter = 0xFFFD;

namespace unicode_tables {

enum class CharKind : std::uint8_t { kOther, kLetter, kDecimalDigit };

struct CharRecord {
  std::uint8_t kind;        // a CharKind
  std::int32_t foldOffset;  // what is added to a code point to fold its case
};

inline constexpr unsigned kBlockBits = 7;
inline constexpr char32_t kCodePoints = 0x110000;

// Made by make_unicode_tables.py.
extern const CharRecord kRecords[];
extern const std::uint16_t kBlockOf[];
extern const std::uint8_t kRecordOf[];

inline const CharRecord& RecordOf(char32_t c) {
  if (c >= kCodePoints) {
    c = kReplacementCharacter;
  }
  const std::size_t block = kBlockOf[c >> kBlockBits];
  return kRecords[kRecordOf[(block << kBlockBits) | (c & ((1U << kBlockBits) - 1))]];
}

}  // namespace unicode_tables

/// True for every letter of every script (Unicode class L).
[[nodiscard]] inline bool IsLetter(char32_t c) {
  return unicode_tables::RecordOf(c).kind == static_cast<std::uint8_t>(unicode_tables::CharKind::kLetter);
}

/// True for the decimal digits of every script (Unicode class Nd); a superscript or a Roman numeral is none.
[[nodiscard]] inline bool IsDecimalDigit(char32_t c) {
  return unicode_tables::RecordOf(c).kind ==
         static_cast<std::uint8_t>(unicode_tables::CharKind::kDecimalDigit);
}

/// True for a letter or a decimal digit. An underscore is neither.
[[nodiscard]] inline bool IsLetterOrDigit(char32_t c) { return unicode_tables::RecordOf(c).kind != 0; }

/// Simple case folding, one code point to one: two letters that differ in case alone fold to the same. A
/// folded letter is a letter, a folded digit is itself, and folding twice changes nothing more.
[[nodiscard]] inline char32_t FoldCase(char32_t c) {
  return static_cast<char32_t>(static_cast<std::int64_t>(c) + unicode_tables::RecordOf(c).foldOffset);
}

/// Reads the code point at byte `at` of `text` and moves `at` behind it. A byte that begins no valid sequence
/// (a stray or missing continuation byte, an overlong form, a surrogate, a value above U+10FFFF) is read by
/// itself as kReplacementCharacter. `at` must be inside of `text`.
[[nodiscard]] char32_t DecodeUtf8(std::string_view text, std::size_t& at);

}  // namespace kivandra
