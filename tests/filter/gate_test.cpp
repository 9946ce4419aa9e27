// SPDX-License-Identifier: GPL-3.0-or-later
#include "filter/gate.h"

#include <gtest/gtest.h>

#include <string>
#include <type_traits>
#include <vector>

#include "filter/verdict_names.h"
#include "hosts.h"

namespace kivandra {

namespace {

static_assert(!std::is_default_constructible_v<GateVerdict>, "no verdict comes about by oversight");

std::string Text(std::string_view text) { return std::string(text); }

const std::string kSite1 = Text(hosts::kTrustedSite1);
const std::string kSite2 = Text(hosts::kTrustedSite2);
const std::string kProduct = Text(hosts::kProductDomain);
const std::string kSite4 = Text(hosts::kTrustedSite4);
const std::string kSite5 = Text(hosts::kTrustedSite5);
const std::string kSearchHome = Text(hosts::kSearchHome);

/// The text with its first letter in capitals: no test on an address ignores case.
std::string Capital(std::string text) {
  text[0] = static_cast<char>(text[0] - ('a' - 'A'));
  return text;
}

std::string WithoutLast(std::string text) {
  text.pop_back();
  return text;
}

/// Everything that the gate looks at, with the answers of an ordinary navigation: the filter is on, the page
/// is clean.
struct Question {
  std::string url = "http://whales.example/";
  std::string frameAddressText = {};
  bool startupTimerRunning = false;
  bool backBypass = false;
  bool mailDisabled = false;
  bool filterEnabled = true;
  std::vector<std::string> allowed = {};
  std::vector<std::string> bad = {"porn", "sex", "anal,", "x -rated"};
  std::string page = "<p>Whales</p>";
};

template <typename TableType>
TableType Filled(const std::vector<std::string>& rows) {
  TableType table;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    table[i + 1] = rows[i];
  }
  return table;
}

GateVerdict Decide(const Question& q, std::vector<std::string>* fetched = nullptr) {
  return DecideNavigation(q.url, q.frameAddressText, q.startupTimerRunning, q.backBypass, q.mailDisabled,
                          q.filterEnabled, Filled<AllowedDomainsTable>(q.allowed),
                          Filled<BadWordsTable>(q.bad), [&](const std::string& url) {
                            if (fetched != nullptr) {
                              fetched->push_back(url);
                            }
                            return q.page;
                          });
}

int RuleOf(const Question& q) {
  const AddressJudgement address =
      JudgeAddress(q.url, q.frameAddressText, q.startupTimerRunning, q.backBypass, q.mailDisabled,
                   q.filterEnabled, Filled<AllowedDomainsTable>(q.allowed), Filled<BadWordsTable>(q.bad));
  if (address.rule == kPageRule) {
    return Decide(q) == GateVerdict::Block ? 19 : 20;
  }
  return address.rule;
}

struct RuleCase {
  const char* name;
  int rule;
  GateVerdict verdict;
  Question question;
};

class GateRule : public testing::TestWithParam<RuleCase> {};

TEST_P(GateRule, DecidesAsTold) {
  EXPECT_EQ(Decide(GetParam().question), GetParam().verdict);
  EXPECT_EQ(RuleOf(GetParam().question), GetParam().rule);
}

// Each rule by a navigation that just fits it and by some that just miss it. A missed one comes to the page.
const auto kScanned = GateVerdict::PassScanned;
const auto kEarly = GateVerdict::PassEarly;
const auto kBlock = GateVerdict::Block;

INSTANTIATE_TEST_SUITE_P(
    Rules, GateRule,
    testing::Values(
        RuleCase{"clean_page", 20, kScanned, {}},
        // 1
        RuleCase{"blank_start_address", 1, kEarly, {.url = "http:///"}},
        RuleCase{"longer_than_the_blank_start_address", 20, kScanned, {.url = "http:///x"}},
        RuleCase{"shorter_than_the_blank_start_address", 20, kScanned, {.url = "http://"}},
        RuleCase{"blank_start_address_in_capitals", 20, kScanned, {.url = "HTTP:///"}},
        RuleCase{"forbidden_word_behind_the_blank_start_address", 17, kBlock, {.url = "http:///porn"}},
        // 2
        RuleCase{"first_trusted_site", 2, kEarly, {.url = "http://" + kSite1 + "/porn"}},
        RuleCase{"first_trusted_site_in_the_query", 2, kEarly, {.url = "http://porn.example/?q=" + kSite1}},
        RuleCase{"first_trusted_site_cut_short", 20, kScanned, {.url = "http://" + WithoutLast(kSite1)}},
        RuleCase{"first_trusted_site_in_other_case", 20, kScanned, {.url = "http://" + Capital(kSite1)}},
        // 3
        RuleCase{"first_trusted_site_in_the_frames_box",
                 3,
                 kEarly,
                 {.url = "http://porn.example/", .frameAddressText = "http://" + kSite1 + "/"}},
        RuleCase{"first_trusted_site_cut_short_in_the_frames_box",
                 20,
                 kScanned,
                 {.frameAddressText = WithoutLast(kSite1)}},
        RuleCase{"first_trusted_site_in_other_case_in_the_frames_box",
                 20,
                 kScanned,
                 {.frameAddressText = Capital(kSite1)}},
        RuleCase{"second_trusted_site_in_the_frames_box", 20, kScanned, {.frameAddressText = kSite2}},
        RuleCase{"product_site_in_the_frames_box", 20, kScanned, {.frameAddressText = kProduct}},
        // 4
        RuleCase{"second_trusted_site", 4, kEarly, {.url = "http://" + kSite2 + "/porn"}},
        RuleCase{"second_trusted_site_cut_short", 20, kScanned, {.url = "http://" + WithoutLast(kSite2)}},
        RuleCase{"second_trusted_site_in_other_case", 20, kScanned, {.url = "http://" + Capital(kSite2)}},
        // 5
        RuleCase{"no_address", 5, kEarly, {.url = ""}}, RuleCase{"only_blanks", 20, kScanned, {.url = "   "}},
        RuleCase{"only_blanks_and_no_page", 19, kBlock, {.url = "   ", .page = ""}},
        // 6
        RuleCase{"resource_of_a_program", 6, kEarly, {.url = "res://shdoclc.dll/error.htm"}},
        RuleCase{"resource_in_the_query", 6, kEarly, {.url = "http://porn.example/?res://"}},
        RuleCase{"resource_with_one_slash", 20, kScanned, {.url = "res:/shdoclc.dll"}},
        RuleCase{"resource_in_capitals", 20, kScanned, {.url = "RES://shdoclc.dll"}},
        // 7
        RuleCase{"product_site", 7, kEarly, {.url = Text(hosts::kProductHome) + "porn"}},
        RuleCase{"product_site_cut_short", 20, kScanned, {.url = "http://" + WithoutLast(kProduct)}},
        RuleCase{"product_site_in_other_case", 20, kScanned, {.url = "http://" + Capital(kProduct)}},
        // 8
        RuleCase{"first_seconds", 8, kEarly, {.url = "http://porn.example/", .startupTimerRunning = true}},
        RuleCase{"behind_the_first_seconds", 17, kBlock, {.url = "http://porn.example/"}},
        // 10
        RuleCase{"inside_the_back_command", 10, kEarly, {.url = "http://porn.example/", .backBypass = true}},
        // 11
        RuleCase{"fourth_trusted_site", 11, kEarly, {.url = "http://" + kSite4 + "/porn"}},
        RuleCase{"fourth_trusted_site_cut_short", 20, kScanned, {.url = "http://" + WithoutLast(kSite4)}},
        RuleCase{"fourth_trusted_site_in_other_case", 20, kScanned, {.url = "http://" + Capital(kSite4)}},
        // 12
        RuleCase{"fifth_trusted_site", 12, kEarly, {.url = "http://" + kSite5 + "/porn"}},
        RuleCase{"fifth_trusted_site_cut_short", 20, kScanned, {.url = "http://" + WithoutLast(kSite5)}},
        RuleCase{"fifth_trusted_site_in_other_case", 20, kScanned, {.url = "http://" + Capital(kSite5)}},
        // 14
        RuleCase{
            "mail_is_switched_off", 14, GateVerdict::RefuseMail, {.url = "mailto:a@b", .mailDisabled = true}},
        RuleCase{"mail_anywhere_in_the_address",
                 14,
                 GateVerdict::RefuseMail,
                 {.url = "http://whales.example/mailto:a", .mailDisabled = true}},
        RuleCase{"mail_is_switched_off_and_so_is_the_filter",
                 14,
                 GateVerdict::RefuseMail,
                 {.url = "mailto:a@b", .mailDisabled = true, .filterEnabled = false}},
        RuleCase{
            "mail_is_not_switched_off_and_cant_be_fetched", 19, kBlock, {.url = "mailto:a@b", .page = ""}},
        RuleCase{"mail_without_its_colon", 20, kScanned, {.url = "http://x/mailto", .mailDisabled = true}},
        RuleCase{"mail_in_capitals", 20, kScanned, {.url = "MAILTO:a@b", .mailDisabled = true}},
        // 15
        RuleCase{"filter_is_off",
                 15,
                 GateVerdict::PassUnfiltered,
                 {.url = "http://porn.example/", .filterEnabled = false, .page = ""}},
        // 16
        RuleCase{
            "allowed_substring", 16, GateVerdict::PassAllowed, {.allowed = {"otters", "whales"}, .page = ""}},
        RuleCase{"allowed_outranks_forbidden",
                 16,
                 GateVerdict::PassAllowed,
                 {.url = "http://porn.example/", .allowed = {"porn.example"}}},
        RuleCase{"longer_than_an_allowed_address",
                 16,
                 GateVerdict::PassAllowed,
                 {.url = "http://porn.example/a?b", .allowed = {"http://porn.example/"}}},
        RuleCase{"shorter_than_an_allowed_address",
                 17,
                 kBlock,
                 {.url = "http://porn.example", .allowed = {"http://porn.example/"}}},
        RuleCase{"allowed_in_other_case", 20, kScanned, {.allowed = {"Whales"}}},
        RuleCase{"allowed_behind_an_empty_row", 20, kScanned, {.allowed = {"otters", "", "whales"}}},
        // 17
        RuleCase{"forbidden_in_the_host", 17, kBlock, {.url = "http://porn.example/"}},
        RuleCase{"forbidden_in_the_query", 17, kBlock, {.url = "http://whales.example/?q=porn"}},
        RuleCase{"forbidden_inside_a_towns_name", 17, kBlock, {.url = "http://middlesex.example/"}},
        RuleCase{"forbidden_in_other_case", 20, kScanned, {.url = "http://PORN.example/"}},
        RuleCase{"forbidden_with_its_comma", 17, kBlock, {.url = "http://whales.example/anal,"}},
        RuleCase{"forbidden_without_its_comma", 20, kScanned, {.url = "http://whales.example/anal"}},
        RuleCase{"forbidden_with_its_blank", 17, kBlock, {.url = "http://whales.example/x -rated"}},
        RuleCase{"forbidden_without_its_blank", 20, kScanned, {.url = "http://whales.example/x-rated"}},
        RuleCase{"forbidden_with_its_hyphen", 17, kBlock, {.url = "http://a.example/x-job", .bad = {"-job"}}},
        RuleCase{
            "forbidden_without_its_hyphen", 20, kScanned, {.url = "http://a.example/xjob", .bad = {"-job"}}},
        RuleCase{"forbidden_behind_an_empty_row", 20, kScanned, {.bad = {"porn", "", "whales"}}},
        // 18
        RuleCase{"search_page", 18, GateVerdict::PassSearchHome, {.url = kSearchHome, .page = ""}},
        RuleCase{"search_page_with_a_slash", 19, kBlock, {.url = kSearchHome + "/", .page = ""}},
        RuleCase{"search_page_with_a_query", 20, kScanned, {.url = kSearchHome + "?q=whales"}},
        RuleCase{"search_page_over_tls", 20, kScanned, {.url = "https" + kSearchHome.substr(4)}},
        RuleCase{"search_page_that_is_forbidden", 17, kBlock, {.url = kSearchHome, .bad = {"http://"}}},
        // 19
        RuleCase{"forbidden_word_on_the_page", 19, kBlock, {.page = "<p>PoRn</p>"}},
        RuleCase{"longer_word_on_the_page", 20, kScanned, {.page = "<p>Middlesex</p>"}},
        RuleCase{"forbidden_word_with_its_comma_on_the_page", 19, kBlock, {.page = "Anal, x"}},
        RuleCase{"forbidden_word_without_its_comma_on_the_page", 20, kScanned, {.page = "Anal x"}},
        RuleCase{"forbidden_word_with_its_blank_on_the_page", 19, kBlock, {.page = "an X -Rated film"}},
        RuleCase{"forbidden_word_without_its_blank_on_the_page", 20, kScanned, {.page = "an X-Rated film"}},
        RuleCase{
            "forbidden_word_with_its_hyphen_on_the_page", 19, kBlock, {.bad = {"-job"}, .page = "a -job"}},
        RuleCase{"forbidden_word_without_its_hyphen_on_the_page",
                 20,
                 kScanned,
                 {.bad = {"-job"}, .page = "a job"}},
        RuleCase{"no_page", 19, kBlock, {.page = ""}},
        RuleCase{"no_page_and_no_words", 19, kBlock, {.bad = {}, .page = ""}},
        RuleCase{"no_page_and_a_table_full_to_row_198",
                 19,
                 kBlock,
                 {.url = "x", .bad = std::vector<std::string>(198, "w"), .page = ""}},
        RuleCase{"no_page_and_a_table_full_to_row_199",
                 20,
                 kScanned,
                 {.url = "x", .bad = std::vector<std::string>(199, "w"), .page = ""}}),
    [](const auto& row) { return std::string(row.param.name); });

/// A navigation to which rule `first` and every later rule on the address apply, and no earlier one.
Question FittingFrom(int first) {
  Question q;
  q.url = "x:";
  const auto from = [&](int rule, const std::string& part) { q.url += first <= rule ? part + "/" : ""; };
  from(2, kSite1);
  from(4, kSite2);
  from(6, "res://");
  from(7, kProduct);
  from(11, kSite4);
  from(12, kSite5);
  from(14, "mailto:");
  from(17, "porn");
  q.frameAddressText = first <= 3 ? kSite1 : "";
  q.startupTimerRunning = first <= 8;
  q.backBypass = first <= 10;
  q.mailDisabled = first <= 14;
  q.filterEnabled = first > 15;
  q.allowed = first <= 16 ? std::vector<std::string>{"x:"} : std::vector<std::string>{};
  q.page = "porn";
  return q;
}

class GateOrder : public testing::TestWithParam<int> {};

TEST_P(GateOrder, LetsTheFirstRuleThatAppliesDecide) {
  EXPECT_EQ(RuleOf(FittingFrom(GetParam())), GetParam());
}

INSTANTIATE_TEST_SUITE_P(Rules, GateOrder, testing::Values(2, 3, 4, 6, 7, 8, 10, 11, 12, 14, 15, 16, 17));

TEST(Gate, PassesAnEmptyAddressBeforeItLooksAtAnySwitch) {
  Question q = FittingFrom(7);
  q.url = "";
  EXPECT_EQ(RuleOf(q), 5);
}

TEST(Gate, LooksForAForbiddenWordBeforeItComparesWithTheSearchPage) {
  EXPECT_EQ(RuleOf({.url = kSearchHome, .bad = {"www"}}), 17);
}

TEST(Gate, TriesEveryRowOfBothTablesOnAnAddress) {
  for (const std::size_t row : {std::size_t{1}, std::size_t{99}, std::size_t{100}}) {
    AllowedDomainsTable allowed;
    for (std::size_t i = 1; i <= row; ++i) {
      allowed[i] = i == row ? "whales" : "no";
    }
    EXPECT_EQ(JudgeAddress("http://whales", "", false, false, false, true, allowed, {}).rule, 16) << row;
  }
  // Row 200 serves the addresses only.
  for (const std::size_t row : {std::size_t{1}, std::size_t{199}, std::size_t{200}}) {
    BadWordsTable bad;
    for (std::size_t i = 1; i <= row; ++i) {
      bad[i] = i == row ? "whales" : "no";
    }
    EXPECT_EQ(JudgeAddress("http://whales", "", false, false, false, true, {}, bad).rule, 17) << row;
  }
}

TEST(Gate, GoesOnBehindFullTablesWithoutAHit) {
  EXPECT_EQ(RuleOf({.allowed = std::vector<std::string>(100, "otters"),
                    .bad = std::vector<std::string>(200, "otters")}),
            20);
}

TEST(Gate, FetchesThePageOnceAndOnlyWhenNoRuleOnTheAddressApplies) {
  for (const int rule : {2, 3, 4, 6, 7, 8, 10, 11, 12, 14, 15, 16, 17}) {
    std::vector<std::string> fetched;
    (void)Decide(FittingFrom(rule), &fetched);
    EXPECT_TRUE(fetched.empty()) << rule;
  }
  std::vector<std::string> fetched;
  (void)Decide({.url = kSearchHome}, &fetched);
  EXPECT_TRUE(fetched.empty());
  (void)Decide({.url = "http://whales.example/a"}, &fetched);
  EXPECT_EQ(fetched, std::vector<std::string>{"http://whales.example/a"});
}

TEST(Gate, BlocksAPageThatCannotBeFetched) {
  Question q;
  const auto decide = [&](const BadWordsTable& bad) {
    return DecideNavigation(q.url, "", false, false, false, true, {}, bad,
                            [](const std::string&) -> std::string { throw PlatformError(1, "no network"); });
  };
  EXPECT_EQ(decide(Filled<BadWordsTable>(q.bad)), kBlock);
  EXPECT_EQ(decide({}), kBlock);
}

TEST(Gate, GivesNoVerdictAtAllWhenTheProgramItselfFails) {
  EXPECT_THROW(
      (void)DecideNavigation("http://whales.example/", "", false, false, false, true, {}, {},
                             [](const std::string&) -> std::string { throw std::logic_error("a fault"); }),
      std::logic_error);
}

}  // namespace
}  // namespace kivandra
