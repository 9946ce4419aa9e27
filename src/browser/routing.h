// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <string>
#include <string_view>

namespace kivandra {

/// Words that make a text of two or more words a question, each in the exact cases that count.
inline constexpr std::array<std::string_view, 36> kEnglishQuestionWords{
    "what", "WHAT", "What", "WHERE", "where", "Where", "HOW",   "how",   "How",   "when",  "When",  "WHEN",
    "why",  "WHY",  "Why",  "who",   "Who",   "WHO",   "IS",    "is",    "Is",    "Are",   "are",   "ARE",
    "Will", "will", "WILL", "can",   "Can",   "CAN",   "Could", "could", "COULD", "Shall", "shall", "SHALL"};

/// kept on purpose: the accent of "Cúal", the word "SHALL", and the two marks, which count only between
/// blanks.
inline constexpr std::array<std::string_view, 69> kSpanishQuestionWords{
    "Quien",  "Quién",   "quien",   "quién",   "QUIEN",   "Que",     "Qué",     "que",     "qué",
    "QUE",    "Donde",   "Dónde",   "donde",   "dónde",   "DONDE",   "Cuando",  "Cuándo",  "cuando",
    "cuándo", "CUANDO",  "Porque",  "Porqué",  "porque",  "porqué",  "PORQUE",  "Como",    "como",
    "COMO",   "Hay",     "hay",     "HAY",     "Estan",   "Están",   "estan",   "están",   "ESTAN",
    "Puedo",  "puedo",   "PUEDO",   "Pudiera", "pudiera", "PUDIERA", "Pudiese", "pudiese", "PUDIESE",
    "Cual",   "Cúal",    "cual",    "cúal",    "CUAL",    "Esta",    "Está",    "esta",    "está",
    "ESTA",   "Quienes", "Quiénes", "quienes", "quiénes", "QUIENES", "Cuales",  "cuales",  "CUALES",
    "Por",    "por",     "POR",     "SHALL",   "¿",       "?"};

/// The address that a text typed into an address box stands for: an address, the search for a word, or the
/// service for a question in English or Spanish. A pure function of any bytes whatever; the text goes into
/// the address as typed.
[[nodiscard]] std::string getURL(std::string_view text);

/// The searches themselves; `text` goes in as it stands, with no encoding.
[[nodiscard]] std::string WordSearchURL(std::string_view text);
[[nodiscard]] std::string EnglishQuestionURL(std::string_view text);
[[nodiscard]] std::string SpanishQuestionURL(std::string_view text);
/// The search of the F12 key.
[[nodiscard]] std::string HotKeySearchURL(std::string_view text);

}  // namespace kivandra
