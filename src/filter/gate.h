// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "filter/table.h"

namespace kivandra {

/// What the gate says of a navigation. It can't be made by default, so that none comes about by oversight.
class GateVerdict {
 public:
  enum Value {
    PassEarly,       ///< passes before the frame's caption is touched
    RefuseMail,      ///< a mail link, and mail is switched off
    PassUnfiltered,  ///< the filter is switched off
    PassAllowed,     ///< the address holds an allowed substring
    PassSearchHome,  ///< the plain search page
    PassScanned,     ///< the page was fetched and holds no forbidden word
    Block,           ///< forbidden by its address or by its page, or its page can't be fetched
  };

  GateVerdict() = delete;
  constexpr GateVerdict(Value value)
      : value_(value) {}  // NOLINT(google-explicit-constructor): reads as its value
  constexpr operator Value() const { return value_; }  // NOLINT(google-explicit-constructor)

 private:
  Value value_;
};

/// Gives a page's source, or the empty string if it can't.
using FetchPage = std::function<std::string(const std::string& url)>;

/// How far the rules on the address came.
struct AddressJudgement {
  int rule;                            ///< number of the rule that ended the run, or kPageRule if none did
  std::optional<GateVerdict> verdict;  ///< empty: the page itself must be judged
};

/// The rules by number, where something outside hangs on them.
inline constexpr int kCaptionRule = 13;  ///< a run that comes this far resets the frame's caption
inline constexpr int kLogoRule = 16;     ///< a run that comes this far animates the logo, before any fetch
inline constexpr int kPageRule = 19;     ///< judges the page

/// The whole decision on a navigation, rules 1 to 20; it touches nothing but its arguments. `fetchPage` is
/// called at most once, and only if no rule on the address applies; a page that it can't give is judged as an
/// empty one.
///
/// It is the composition of JudgeAddress and JudgePage, which a caller that can't wait for a fetch runs
/// apart.
[[nodiscard]] GateVerdict DecideNavigation(const std::string& url, const std::string& frameAddressText,
                                           bool startupTimerRunning, bool backBypass, bool mailDisabled,
                                           bool filterEnabled, const AllowedDomainsTable& allowedDomains,
                                           const BadWordsTable& badWords, const FetchPage& fetchPage);

/// Rules 1 to 18.
[[nodiscard]] AddressJudgement JudgeAddress(std::string_view url, std::string_view frameAddressText,
                                            bool startupTimerRunning, bool backBypass, bool mailDisabled,
                                            bool filterEnabled, const AllowedDomainsTable& allowedDomains,
                                            const BadWordsTable& badWords);

/// Rules 19 and 20: Block or PassScanned. `page` is the page's whole source in UTF-8; empty if it can't be
/// had.
[[nodiscard]] GateVerdict JudgePage(std::string_view page, const BadWordsTable& badWords);

}  // namespace kivandra
