// SPDX-License-Identifier: GPL-3.0-or-later
#include "filter/bad_words.h"

#include <array>
#include <string_view>

#include "filter/filter_values.h"
#include "hosts.h"

namespace kivandra {

namespace {

// kept on purpose: repeated rows, rows in some of their cases, misspellings, stray commas and joined words.
// Each takes one of the 200 rows and so sets how many are left; against an address only the forms that stand
// here match, against a page any one of them matches all forms; a comma or a blank matches only itself.
constexpr std::array<std::string_view, kBuiltInRows> kBuiltIn = {
    // 1 to 10; row 1 is also the sign that the table is filled
    "porn", "fucked", "freetits", "freesex", "freepics", "cocksucker", "cocksucker", "boobs", "poonarni",
    "FUCK",
    // 11 to 20
    "surfwatch", "pussy", "cunt", "cock", "dick", "FUCK", "FUCKING", "upskirt", "orgasm", "bitch",
    // 21 to 30
    "asshole", "anal,", "blowjob", "jerkoff", "masturbate", "tits", "pornamatuers", "amatuer", "nude", "cunt",
    // 31 to 40
    "erotic", "pussy", "gays", "Xrated", "x -rated", "x -rated", "Naked", "shit", "Xrated", "XXX",
    // 41 to 50
    "Naked", "nude", "Playboy", hosts::kBadWordsRow44, "slut", "sluts", "freesexnude,", hosts::kBadWordsRow48,
    "netnanny", "aXXXess",
    // 51 to 60
    hosts::kBadWordsRow51, hosts::kBadWordsRow52, hosts::kBadWordsRow53, hosts::kBadWordsRow54, "erotica",
    "cumshot", "dildo", "boner", "hooker", "bestiality",
    // 61 to 70
    "cum", "-shotscum", "-shots!blow", "-jobblow", "-jobsblow", "-job!blow -jobs!", "SNATCHES", "Porno",
    "Pornos", "LEZBOS",
    // 71 to 80
    "Nudists", "Nudist", "Nudists", "DILDOS", hosts::kBadWordsRow75, hosts::kBadWordsRow76,
    hosts::kBadWordsRow77, "LESBIAN", "LESBIANS", "LESBIAN",
    // 81 to 90
    "LESBIANS", "crotchless", hosts::kBadWordsRow83, hosts::kBadWordsRow84, hosts::kBadWordsRow85,
    hosts::kBadWordsRow86, hosts::kBadWordsRow87, "sex", "voyeurdorm", "voyeur",
    // 91 to 101
    "Sex", "SEx", "SEX", "seX", "sEX", "Nude", "NUDE", "nuDe", "nudE", "nUDE", "nUde"};

}  // namespace

void FillBadWords() {
  for (std::size_t row = 1; row <= kBuiltIn.size(); ++row) {
    BadWords[row] = kBuiltIn[row - 1];
  }
}

}  // namespace kivandra
