// SPDX-License-Identifier: GPL-3.0-or-later
// The gate with the words that the program brings.
#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "filter/bad_words.h"
#include "filter/filter_values.h"
#include "filter/verdict_names.h"
#include "hosts.h"

namespace kivandra {
namespace {

class GateWithBuiltInWords : public testing::Test {
 protected:
  GateWithBuiltInWords() {
    ResetFilterValues();
    FillBadWords();
  }
  static GateVerdict Decide(const std::string& url, const std::string& page) {
    return DecideNavigation(url, "", false, false, false, true, AllowedDomains, BadWords,
                            [&](const std::string&) { return page; });
  }
};

TEST_F(GateWithBuiltInWords, CatchesOnlyTheSpellingsOfTheTableInAnAddressButAllOnAPage) {
  EXPECT_EQ(Decide("http://whales.example/Nude", "x"), GateVerdict::Block);
  EXPECT_EQ(Decide("http://whales.example/NUde", "x"), GateVerdict::PassScanned);
  EXPECT_EQ(Decide("http://whales.example/", "a NUde b"), GateVerdict::Block);
  EXPECT_EQ(Decide("http://whales.example/sEx", "x"), GateVerdict::PassScanned);
  EXPECT_EQ(Decide("http://whales.example/", "a sEx b"), GateVerdict::Block);
  EXPECT_EQ(Decide("http://whales.example/PORN", "x"), GateVerdict::PassScanned);
  EXPECT_EQ(Decide("http://whales.example/", "PORN"), GateVerdict::Block);
}

TEST_F(GateWithBuiltInWords, BlocksATownByItsAddressButNotAPageThatTellsOfIt) {
  EXPECT_EQ(Decide("http://visit-sussex.example/", "x"), GateVerdict::Block);
  EXPECT_EQ(Decide("http://whales.example/", "Welcome to Sussex"), GateVerdict::PassScanned);
}

TEST_F(GateWithBuiltInWords, LetsTheProgramsOwnServicesPass) {
  for (const std::string_view host : {hosts::kEnglishQuestionHost, hosts::kSpanishQuestionHost,
                                      hosts::kWordSearchHost, hosts::kHotKeySearchHost}) {
    EXPECT_EQ(Decide("http://" + std::string(host) + "/search?q=whales", "whales"), GateVerdict::PassScanned)
        << host;
  }
  EXPECT_EQ(Decide(std::string(hosts::kProductHome), ""), GateVerdict::PassEarly);
  EXPECT_EQ(Decide(std::string(hosts::kSearchHome), ""), GateVerdict::PassSearchHome);
}

}  // namespace
}  // namespace kivandra
