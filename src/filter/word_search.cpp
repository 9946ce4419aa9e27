// SPDX-License-Identifier: GPL-3.0-or-later
#include "filter/word_search.h"

#include <algorithm>
#include <limits>
#include <map>

#include "support/unicode.h"

namespace kivandra {

namespace {

constexpr std::uint32_t kOutsideSymbol = 0;  // neither letter nor digit, and in none of the words
constexpr std::uint32_t kInsideSymbol = 1;   // letter or digit, and in none of the words

// The two states in which nothing has been matched: behind a character that is neither letter nor digit (or
// at the start), where a word may begin, and behind a letter or digit, where none may.
constexpr std::size_t kBoundaryNode = 0;
constexpr std::size_t kInsideNode = 1;

constexpr std::uint32_t kFound = std::numeric_limits<std::uint32_t>::max();

constexpr char32_t kAsciiEnd = 0x80;

// Room for the rows of dense states: 4 MiB. The states nearest to the start get one; a parent's word of a
// thousand letters gets along without.
constexpr std::size_t kMostRowEntries = std::size_t{1} << 20;

std::vector<char32_t> Folded(std::string_view word) {
  std::vector<char32_t> folded;
  for (std::size_t at = 0; at < word.size();) {
    folded.push_back(FoldCase(DecodeUtf8(word, at)));
  }
  return folded;
}

template <typename Key, typename Value>
const Value* FindSorted(const std::vector<std::pair<Key, Value>>& pairs, Key key) {
  const auto found = std::lower_bound(pairs.begin(), pairs.end(), key,
                                      [](const auto& pair, Key wanted) { return pair.first < wanted; });
  return found != pairs.end() && found->first == key ? &found->second : nullptr;
}

}  // namespace

/// Makes the tree of the words, numbers its nodes breadth first, finds each node's fallback and lays the
/// rows.
class WordSearch::Builder {
 public:
  Builder(WordSearch& search, const std::vector<std::string>& words) : search_(search) {
    std::vector<std::vector<char32_t>> folded;
    folded.reserve(words.size());
    for (const std::string& word : words) {
      folded.push_back(Folded(word));
    }
    NameSymbols(folded);
    for (const auto& word : folded) {
      AddWord(word);
    }
    NumberNodes();
    FindFallbacks();
    LayRows();
  }

 private:
  using Node = std::size_t;

  struct TreeNode {
    std::map<Symbol, Node> children;
    Node fallback = kBoundaryNode;  // the longest proper suffix that is a node and may begin where it begins
    bool ends = false;              // a word ends here, the node's own or one that is a suffix of it
  };

  void NameSymbols(const std::vector<std::vector<char32_t>>& words) {
    std::vector<char32_t> own;
    for (const auto& word : words) {
      own.insert(own.end(), word.begin(), word.end());
    }
    std::sort(own.begin(), own.end());
    own.erase(std::unique(own.begin(), own.end()), own.end());

    search_.inWord_ = {false, true};
    for (char32_t c = 0; c < kAsciiEnd; ++c) {
      search_.asciiSymbols_[c] = IsLetterOrDigit(c) ? kInsideSymbol : kOutsideSymbol;
    }
    for (const char32_t c : own) {
      const auto symbol = static_cast<Symbol>(search_.inWord_.size());
      search_.inWord_.push_back(IsLetterOrDigit(c));
      if (c < kAsciiEnd) {
        search_.asciiSymbols_[c] = symbol;
      } else {
        search_.otherSymbols_.emplace_back(c, symbol);
      }
    }
    // A capital has the symbol of its small letter, to which it folds.
    for (char32_t c = 0; c < kAsciiEnd; ++c) {
      search_.asciiSymbols_[c] = search_.asciiSymbols_[FoldCase(c)];
    }
    search_.symbolCount_ = search_.inWord_.size();
  }

  void AddWord(const std::vector<char32_t>& word) {
    if (word.empty()) {
      return;
    }
    Node node = kBoundaryNode;
    for (const char32_t c : word) {
      const auto [child, isNew] = nodes_[node].children.try_emplace(search_.SymbolOf(c), nodes_.size());
      node = child->second;
      if (isNew) {
        nodes_.emplace_back();
      }
    }
    nodes_[node].ends = true;
  }

  void NumberNodes() {
    order_ = {kBoundaryNode, kInsideNode};
    for (std::size_t i = 0; i < order_.size(); ++i) {
      for (const auto& [symbol, child] : nodes_[order_[i]].children) {
        order_.push_back(child);
      }
    }
    const std::size_t rows = std::max<std::size_t>(2, kMostRowEntries / search_.symbolCount_);
    denseCount_ = std::min(rows, order_.size());
    states_.resize(order_.size());
    for (std::size_t i = 0; i < order_.size(); ++i) {
      const std::size_t denseEnd = denseCount_ * search_.symbolCount_;
      const std::size_t state = i < denseCount_ ? i * search_.symbolCount_ : denseEnd + (i - denseCount_);
      states_[order_[i]] = static_cast<State>(state);
    }
  }

  /// Where a node with nothing of a word behind it goes on with `symbol`.
  [[nodiscard]] Node Start(Symbol symbol) const {
    return search_.inWord_[symbol] ? kInsideNode : kBoundaryNode;
  }

  [[nodiscard]] Node Step(Node node, Symbol symbol) const {
    for (;; node = nodes_[node].fallback) {
      if (const auto child = nodes_[node].children.find(symbol); child != nodes_[node].children.end()) {
        return child->second;
      }
      if (node == kBoundaryNode || node == kInsideNode) {
        return Start(symbol);
      }
    }
  }

  // Whether a suffix of a node may begin a word depends on the character before it, which is the node's own.
  // So a suffix behind a letter or digit leads to the inside state, which has no children: no test is left
  // for the search.
  void FindFallbacks() {
    for (const Node node : order_) {
      const bool root = node == kBoundaryNode;
      for (const auto& [symbol, child] : nodes_[node].children) {
        const Node fallback = root ? Start(symbol) : Step(nodes_[node].fallback, symbol);
        nodes_[child].fallback = fallback;
        nodes_[child].ends = nodes_[child].ends || nodes_[fallback].ends;
      }
    }
  }

  void LayRows() {
    const std::size_t width = search_.symbolCount_;
    search_.rows_.resize(denseCount_ * width);
    search_.ends_.resize(denseCount_);
    for (std::size_t i = 0; i < order_.size(); ++i) {
      const TreeNode& node = nodes_[order_[i]];
      if (i >= denseCount_) {
        SparseState& sparse = search_.sparse_.emplace_back();
        for (const auto& [symbol, child] : node.children) {
          sparse.steps.emplace_back(symbol, states_[child]);
        }
        sparse.fallback = states_[node.fallback];
        sparse.ends = node.ends;
        continue;
      }
      search_.ends_[i] = node.ends;
      State* const row = &search_.rows_[i * width];
      for (Symbol symbol = 0; symbol < width; ++symbol) {
        // A fallback lies nearer to the start than its node, so its row is laid.
        row[symbol] =
            i <= kInsideNode ? states_[Start(symbol)] : search_.rows_[states_[node.fallback] + symbol];
      }
      for (const auto& [symbol, child] : node.children) {
        row[symbol] = states_[child];
      }
      for (Symbol symbol = 0; node.ends && symbol < width; ++symbol) {
        if (!search_.inWord_[symbol]) {
          row[symbol] = kFound;
        }
      }
    }
  }

  WordSearch& search_;
  std::vector<TreeNode> nodes_{2};
  std::vector<Node> order_;
  std::vector<State> states_;  // by node
  std::size_t denseCount_ = 0;
};

WordSearch::WordSearch(const std::vector<std::string>& words) { Builder(*this, words); }

WordSearch::Symbol WordSearch::SymbolOf(char32_t c) const {
  const char32_t folded = FoldCase(c);
  if (folded < kAsciiEnd) {
    return asciiSymbols_[folded];
  }
  if (const Symbol* own = FindSorted(otherSymbols_, folded)) {
    return *own;
  }
  return IsLetterOrDigit(folded) ? kInsideSymbol : kOutsideSymbol;
}

WordSearch::Symbol WordSearch::NextSymbol(std::string_view text, std::size_t& at) const {
  const auto byte = static_cast<unsigned char>(text[at]);
  if (byte < kAsciiEnd) {
    ++at;
    return asciiSymbols_[byte];
  }
  return SymbolOf(DecodeUtf8(text, at));
}

WordSearch::State WordSearch::SparseStep(State state, Symbol symbol) const {
  while (state >= rows_.size()) {
    const SparseState& from = sparse_[state - rows_.size()];
    if (from.ends && !inWord_[symbol]) {
      return kFound;
    }
    if (const State* next = FindSorted(from.steps, symbol)) {
      return *next;
    }
    state = from.fallback;
  }
  return rows_[state + symbol];
}

bool WordSearch::EndsAWord(State state) const {
  return state < rows_.size() ? ends_[state / symbolCount_] : sparse_[state - rows_.size()].ends;
}

bool WordSearch::FindsIn(std::string_view text) const {
  const State* const rows = rows_.data();
  const std::size_t dense = rows_.size();
  State state = 0;  // the boundary state
  for (std::size_t at = 0; at < text.size();) {
    const Symbol symbol = NextSymbol(text, at);
    state = state < dense ? rows[state + symbol] : SparseStep(state, symbol);
    if (state == kFound) {
      return true;
    }
  }
  return EndsAWord(state);
}

}  // namespace kivandra
