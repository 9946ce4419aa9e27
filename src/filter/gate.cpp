// SPDX-License-Identifier: GPL-3.0-or-later
#include "filter/gate.h"

#include "filter/page_scan.h"
#include "hosts.h"
#include "support/attempt.h"

namespace kivandra {

namespace {

constexpr std::string_view kBlankStartAddress = "http:///";

// Every test on an address is a case-sensitive search of the whole text for a substring, with no parsing into
// parts.
bool Contains(std::string_view text, std::string_view part) {
  return text.find(part) != std::string_view::npos;
}

// Rows in table order, to the first empty row or the table's last; which row hit is of no interest.
template <std::size_t Rows>
bool ContainsARow(std::string_view url, const Table<Rows>& table) {
  for (std::size_t row = 1; row <= Table<Rows>::kLastRow && !table[row].empty(); ++row) {
    if (Contains(url, table[row])) {
      return true;
    }
  }
  return false;
}

}  // namespace

AddressJudgement JudgeAddress(std::string_view url, std::string_view frameAddressText,
                              bool startupTimerRunning, bool backBypass, bool mailDisabled,
                              bool filterEnabled, const AllowedDomainsTable& allowedDomains,
                              const BadWordsTable& badWords) {
  // 1: the blank start address of the browser control, exactly
  if (url == kBlankStartAddress) {
    return {1, GateVerdict::PassEarly};
  }
  // 2: the first trusted site
  if (Contains(url, hosts::kTrustedSite1)) {
    return {2, GateVerdict::PassEarly};
  }
  // 3: that same site in the frame's address box. kept on purpose: the box and not the address, so that while
  // it holds the first trusted site every navigation of every window passes
  if (Contains(frameAddressText, hosts::kTrustedSite1)) {
    return {3, GateVerdict::PassEarly};
  }
  // 4: the second trusted site
  if (Contains(url, hosts::kTrustedSite2)) {
    return {4, GateVerdict::PassEarly};
  }
  // 5: no address
  if (url.empty()) {
    return {5, GateVerdict::PassEarly};
  }
  // 6: a resource of a program, anywhere in the address
  if (Contains(url, "res://")) {
    return {6, GateVerdict::PassEarly};
  }
  // 7: the product's own site
  if (Contains(url, hosts::kTrustedSite3)) {
    return {7, GateVerdict::PassEarly};
  }
  // 8: the first seconds of the program. kept on purpose: they are unfiltered
  if (startupTimerRunning) {
    return {8, GateVerdict::PassEarly};
  }
  // 9: the tool Lock once more, which repeats the entry effect and changes nothing
  // 10: inside the Back command, if the parent lets it pass
  if (backBypass) {
    return {10, GateVerdict::PassEarly};
  }
  // 11, 12: the fourth and the fifth trusted site
  if (Contains(url, hosts::kTrustedSite4)) {
    return {11, GateVerdict::PassEarly};
  }
  if (Contains(url, hosts::kTrustedSite5)) {
    return {12, GateVerdict::PassEarly};
  }
  // 13: the frame's caption is reset (kCaptionRule)
  // 14: mail, before the filter's switch, so that it holds with the filter off
  if (mailDisabled && Contains(url, "mailto:")) {
    return {14, GateVerdict::RefuseMail};
  }
  // 15: the filter is switched off
  if (!filterEnabled) {
    return {15, GateVerdict::PassUnfiltered};
  }
  // 16: the logo is animated (kLogoRule); then the allowed substrings, which outrank every forbidden one
  if (ContainsARow(url, allowedDomains)) {
    return {16, GateVerdict::PassAllowed};
  }
  // 17: the forbidden words
  if (ContainsARow(url, badWords)) {
    return {17, GateVerdict::Block};
  }
  // 18: the plain search page, exactly
  if (url == hosts::kSearchHome) {
    return {18, GateVerdict::PassSearchHome};
  }
  return {kPageRule, std::nullopt};
}

GateVerdict JudgePage(std::string_view page, const BadWordsTable& badWords) {
  // 19: a forbidden word on the page, or no page
  if (PageScanFinds(page, badWords)) {
    return GateVerdict::Block;
  }
  // 20: none of all these
  return GateVerdict::PassScanned;
}

GateVerdict DecideNavigation(const std::string& url, const std::string& frameAddressText,
                             bool startupTimerRunning, bool backBypass, bool mailDisabled, bool filterEnabled,
                             const AllowedDomainsTable& allowedDomains, const BadWordsTable& badWords,
                             const FetchPage& fetchPage) {
  const AddressJudgement address = JudgeAddress(url, frameAddressText, startupTimerRunning, backBypass,
                                                mailDisabled, filterEnabled, allowedDomains, badWords);
  if (address.verdict) {
    return *address.verdict;
  }
  std::string page;
  attempt([&] { page = fetchPage(url); });
  return JudgePage(page, badWords);
}

}  // namespace kivandra
