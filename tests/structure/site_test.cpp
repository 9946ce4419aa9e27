// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <regex>

#include "structure/source_tree.h"

namespace kivandra::structure {
namespace {

using testing::IsEmpty;

/// What a page names in attributes that load or lead somewhere.
std::vector<std::string> TargetsOf(const std::string& page) {
  static const std::regex kTarget(R"re((?:href|src|action|srcset|data|poster)\s*=\s*["']([^"']*)["'])re");
  std::vector<std::string> targets;
  for (std::sregex_iterator match(page.begin(), page.end(), kTarget), end; match != end; ++match) {
    targets.push_back((*match)[1]);
  }
  return targets;
}

/// Whether a path from the root of the site leads to a file of it.
bool Leads(std::string target, const Files& site, const std::string& page) {
  const std::size_t fragment = target.find('#');
  const std::string id = fragment == std::string::npos ? "" : target.substr(fragment + 1);
  target = target.substr(0, fragment);
  std::string file = target.empty() ? page : target.substr(1);
  if (file.empty() || file.ends_with('/')) {
    file += "index.html";
  }
  const auto found = site.find(file);
  return found != site.end() && (id.empty() || found->second.find("id=\"" + id + "\"") != std::string::npos);
}

/// Targets of a site's pages that lead nowhere, or out of it.
std::vector<std::string> BrokenTargets(const Files& site) {
  std::vector<std::string> broken;
  for (const auto& [page, text] : site) {
    if (page.ends_with(".svg") || page.ends_with(".js")) {
      continue;
    }
    for (const std::string& target : TargetsOf(text)) {
      const bool own = !target.starts_with("//") && (target.starts_with('/') || target.starts_with('#'));
      if (!own || !Leads(target, site, page)) {
        broken.push_back(page + ": " + target);
      }
    }
  }
  return broken;
}

const std::string kSite = std::string(KV_SOURCE_DIR) + "/site";

TEST(ShippedSite, EveryLinkLeadsToAPageOfTheSite) {
  const Files site = ReadFiles(kSite);
  ASSERT_GT(site.size(), 20U);
  EXPECT_THAT(BrokenTargets(site), IsEmpty());
}

TEST(ShippedSite, EveryPageThatTheProgramOpensIsThere) {
  const Files site = ReadFiles(kSite);
  for (const char* page :
       {"index.html", "onetime.asp", "banners/banner1.html", "BrowserVer.dat", "help/index.html",
        "tips/default.htm", "support.asp", "sponsor.asp", "getlisted/index.html", "bannerfree/index.html",
        "update/update1.html", "404.html"}) {
    EXPECT_TRUE(site.contains(page)) << page;
  }
}

TEST(ShippedSite, TheVersionFileHoldsTheProgramsVersionAndNothingElse) {
  const Files top = ReadFiles(kSite, {"BrowserVer.dat"});
  std::ifstream stream(std::string(KV_SOURCE_DIR) + "/CMakeLists.txt");
  const std::string project{std::istreambuf_iterator<char>(stream), {}};
  std::smatch version;
  ASSERT_TRUE(std::regex_search(project, version, std::regex(R"(project\(\w+ VERSION ([0-9.]+))")));
  EXPECT_EQ(top.at("BrowserVer.dat"), version[1].str());
}

TEST(ShippedSite, NoPageOrPictureLoadsAnythingFromOutside) {
  static const std::regex kOutside(
      R"re(url\(\s*["']?(?!#)[^)]*:|@import|(?:xlink:)?href\s*=\s*["'](?:https?:)?//|<script(?! src="/js/)|\son[a-z]+\s*=)re",
      std::regex::icase);
  for (const auto& [file, text] : ReadFiles(kSite, {".html", ".htm", ".asp", ".css", ".svg"})) {
    EXPECT_FALSE(std::regex_search(text, kOutside)) << file;
  }
}

TEST(ShippedSite, NoScriptReachesOutOrStoresAnything) {
  static const std::regex kReach(
      R"re(https?:(?!//www\.w3\.org/2000/svg)|["'`]//|\b(?:fetch|import|eval|Function|XMLHttpRequest|WebSocket|EventSource|sendBeacon|localStorage|sessionStorage|indexedDB)\b|\.cookie|innerHTML|window\.open)re");
  const Files scripts = ReadFiles(kSite, {".js"});
  ASSERT_GT(scripts.size(), 3U);
  for (const auto& [file, text] : scripts) {
    EXPECT_FALSE(std::regex_search(text, kReach)) << file;
  }
}

TEST(SiteRules, ABrokenOrOutwardLinkIsFound) {
  const Files site{
      {"index.html", "<a href=\"/a/\">a</a><a href=\"/a/#part\">b</a><a href='/none.html'>c</a>"},
      {"a/index.html", "<p id=\"part\"><a href=\"/#gone\">d</a><img src=\"https://e.example/f.png\">"},
      {"b.html", "<a href=\"//g.example/\">h</a><a href=\"relative.html\">i</a>"}};
  EXPECT_THAT(
      BrokenTargets(site),
      testing::ElementsAre("a/index.html: /#gone", "a/index.html: https://e.example/f.png",
                           "b.html: //g.example/", "b.html: relative.html", "index.html: /none.html"));
}

}  // namespace
}  // namespace kivandra::structure
