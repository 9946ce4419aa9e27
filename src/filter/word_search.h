// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kivandra {

/// Looks for any of a set of words in a text, as whole words and in any case, in one pass over the text.
///
/// Words and text are UTF-8. A hit is a stretch of the text that equals a word when the case of both is
/// folded one code point to one, with no letter and no digit directly before or behind it. Nothing is asked
/// of a word's own first and last character, words may hold blanks and punctuation, and hits may overlap. A
/// NUL is a character like any other. A byte that is not valid UTF-8 counts as a character of its own, which
/// is no letter. An empty word never hits.
///
/// It is an automaton that takes one step a character whatever the words and the text are (Aho and Corasick,
/// with the test of the two neighbours built into the states): no text is slow.
class WordSearch {
 public:
  explicit WordSearch(const std::vector<std::string>& words);

  [[nodiscard]] bool FindsIn(std::string_view text) const;

 private:
  /// The class of a character as far as the words can tell: all letters and digits that no word holds are one
  /// class, all other characters that no word holds another, and each character of a word is a class of its
  /// own.
  using Symbol = std::uint32_t;
  /// A state of the automaton. Dense states are given as the place of their row in `rows_`.
  using State = std::uint32_t;

  /// A state that has no row: its own steps, and the state to ask for all others.
  struct SparseState {
    std::vector<std::pair<Symbol, State>> steps;  // sorted
    State fallback;
    bool ends;  // as in `ends_`
  };

  class Builder;

  [[nodiscard]] Symbol SymbolOf(char32_t c) const;
  [[nodiscard]] Symbol NextSymbol(std::string_view text, std::size_t& at) const;
  [[nodiscard]] State SparseStep(State state, Symbol symbol) const;
  [[nodiscard]] bool EndsAWord(State state) const;

  std::array<Symbol, 128> asciiSymbols_{};
  std::vector<std::pair<char32_t, Symbol>> otherSymbols_;  // sorted by code point, all folded
  std::vector<bool> inWord_;                               // by symbol: letter or digit

  std::size_t symbolCount_ = 0;
  std::vector<State> rows_;  // by dense state and symbol: the next state
  std::vector<bool> ends_;   // by dense state's number: a word ends here, if no letter or digit follows
  std::vector<SparseState> sparse_;  // state rows_.size() + i is sparse_[i]
};

}  // namespace kivandra
