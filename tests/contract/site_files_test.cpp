// SPDX-License-Identifier: GPL-3.0-or-later
// What the shipped pages promise to those who read them: they are whole, legible by a screen reader, free of
// the filter's own words, and they name only keys and switches that the program has.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <deque>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <vector>

#include "filter/bad_words.h"
#include "filter/filter_values.h"
#include "filter/page_scan.h"

namespace kivandra {
namespace {

using testing::Contains;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

using Pages = std::map<std::string, std::string>;  // path with its leading slash, and the text

std::string TextOf(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

Pages FilesBelow(const std::string& folder, const std::set<std::string>& endings) {
  const std::filesystem::path root = std::string(KV_SOURCE_DIR) + "/" + folder;
  Pages pages;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(root)) {
    if (entry.is_regular_file() && endings.contains(entry.path().extension().string())) {
      pages["/" + entry.path().lexically_relative(root).generic_string()] = TextOf(entry.path());
    }
  }
  return pages;
}

const Pages& SitePages() {
  static const Pages kPages = FilesBelow("site", {".html", ".htm", ".asp"});
  return kPages;
}

const Pages& HelpPages() {
  static const Pages kPages = FilesBelow("assets/help", {".htm"});
  return kPages;
}

/// The site's pages and the panel's help, which have the same duties.
Pages AllPages() {
  Pages pages = SitePages();
  for (const auto& [path, text] : HelpPages()) {
    pages["panel help " + path] = text;
  }
  return pages;
}

/// What the first group of `pattern` finds, in order.
std::vector<std::string> Found(const std::string& text, const std::string& pattern) {
  const std::regex regex(pattern);
  std::vector<std::string> found;
  for (std::sregex_iterator match(text.begin(), text.end(), regex), end; match != end; ++match) {
    found.push_back((*match)[1]);
  }
  return found;
}

/// The page's words, without its tags.
std::string WordsOf(const std::string& page) {
  const std::string bare = std::regex_replace(page, std::regex("<style>[^]*?</style>"), "");
  return std::regex_replace(bare, std::regex("<[^>]*>"), " ");
}

/// The file that a link of the site means.
std::string FileOf(const std::string& link) {
  const std::string path = link.substr(0, link.find('#'));
  return path.ends_with('/') ? path + "index.html" : path;
}

bool IsBanner(const std::string& path) { return path.starts_with("/banners/"); }

TEST(SiteFiles, EveryPageHasATitleALanguageAndAViewport) {
  ASSERT_GT(AllPages().size(), 40U);
  for (const auto& [path, text] : AllPages()) {
    EXPECT_THAT(text, testing::StartsWith("<!DOCTYPE html>\n")) << path;
    EXPECT_THAT(text, testing::ContainsRegex("<title>[^<]+</title>")) << path;
    EXPECT_THAT(text, HasSubstr("<html lang=\"en\"")) << path;
    EXPECT_THAT(text, HasSubstr("<meta charset=\"utf-8\">")) << path;
    EXPECT_THAT(text, HasSubstr("<meta name=\"viewport\" content=\"width=device-width\">")) << path;
  }
}

TEST(SiteFiles, EveryPictureHasATextInItsPlaceOrIsMarkedAsOrnament) {
  for (const auto& [path, text] : AllPages()) {
    for (const std::string& image : Found(text, "(<img[^>]*>)")) {
      EXPECT_THAT(image, HasSubstr(" alt=\"")) << path;
    }
    for (const std::string& drawing : Found(text, "(<svg[^>]*>)")) {
      EXPECT_THAT(drawing, HasSubstr("aria-label=")) << path;
    }
  }
}

TEST(SiteFiles, HeadingsBeginAtOneAndNeverSkipALevel) {
  for (const auto& [path, text] : AllPages()) {
    if (IsBanner(path)) {
      continue;  // a banner is one link
    }
    int before = 0;
    for (const std::string& level : Found(text, "<h([1-6])")) {
      EXPECT_LE(std::stoi(level), before + 1) << path;
      before = std::stoi(level);
    }
    EXPECT_GT(before, 0) << path << " has no heading";
    const bool tips = path == "/tips/default.htm";  // one heading a tip, one tip at a time
    EXPECT_EQ(Found(text, "<h(1)").size(), tips ? Found(text, "<(article)>").size() : 1U) << path;
  }
}

TEST(SiteFiles, EveryFieldHasALabelAndEveryButtonAName) {
  for (const auto& [path, text] : AllPages()) {
    const std::string outside = std::regex_replace(text, std::regex("<label>[^]*?</label>"), "");
    EXPECT_THAT(Found(outside, "(<(?:input|select|textarea)[^>]*>)"), IsEmpty()) << path;
    EXPECT_THAT(Found(text, "(<button[^>]*>\\s*</button>)"), IsEmpty()) << path;
    for (const std::string& link : Found(text, "(<a [^>]*>[^]*?</a>)")) {
      EXPECT_THAT(WordsOf(link), testing::ContainsRegex("[A-Za-z]|›")) << path << link;
    }
  }
}

TEST(SiteFiles, EveryLinkAndPictureLeadsToAFile) {
  for (const auto& [path, text] : SitePages()) {
    for (const std::string& target : Found(text, "(?:href|src)=\"([^\"]*)\"")) {
      ASSERT_THAT(target, testing::StartsWith("/")) << path;
      const std::string file = FileOf(target);
      EXPECT_TRUE(std::filesystem::is_regular_file(std::string(KV_SOURCE_DIR) + "/site" + file))
          << path << " leads to " << target;
      if (const std::size_t mark = target.find('#'); mark != std::string::npos) {
        EXPECT_THAT(SitePages().at(file), HasSubstr("id=\"" + target.substr(mark + 1) + "\"")) << path;
      }
    }
  }
}

TEST(SiteFiles, EveryPageIsReachedFromOneThatTheProgramOpens) {
  std::deque<std::string> open{"/index.html",
                               "/onetime.asp",
                               "/banners/banner1.html",
                               "/help/index.html",
                               "/tips/default.htm",
                               "/support.asp",
                               "/sponsor.asp",
                               "/getlisted/index.html",
                               "/bannerfree/index.html",
                               "/update/update1.html",
                               "/404.html",
                               "/math/index.html",
                               "/language/index.html",
                               "/science/index.html",
                               "/social/index.html"};
  std::set<std::string> seen(open.begin(), open.end());
  for (; !open.empty(); open.pop_front()) {
    ASSERT_TRUE(SitePages().contains(open.front())) << open.front();
    for (const std::string& link : Found(SitePages().at(open.front()), "<a [^>]*href=\"([^\"]*)\"")) {
      if (seen.insert(FileOf(link)).second) {
        open.push_back(FileOf(link));
      }
    }
  }
  for (const auto& [path, text] : SitePages()) {
    EXPECT_TRUE(seen.contains(path)) << path;
  }
}

TEST(SiteFiles, PagesHaveOneStyleAndNoScriptOfTheirOwn) {
  for (const auto& [path, text] : SitePages()) {
    EXPECT_THAT(text, HasSubstr("<link rel=\"stylesheet\" href=\"/site.css\">")) << path;
    EXPECT_THAT(text, Not(HasSubstr("<style"))) << path;
    EXPECT_THAT(Found(text, "(<script(?! src=\"/js/[a-z]+\\.js\" defer></script>))"), IsEmpty()) << path;
    EXPECT_THAT(text, Not(HasSubstr("http"))) << path;
  }
}

TEST(SiteFiles, NoPageHoldsAWordOfTheFilter) {
  FillBadWords();
  ASSERT_TRUE(PageScanFinds("a nude word", BadWords)) << "the table is not filled";
  Pages files = AllPages();
  files.merge(FilesBelow("site", {".css", ".js", ".svg"}));
  for (const auto& [path, text] : files) {
    EXPECT_FALSE(PageScanFinds(text, BadWords)) << path;
  }
}

TEST(SiteFiles, NoPageNamesAMaker) {
  static const std::regex kMakers(
      "google|yahoo|wikipedia|vikidia|disney|barney|sesame|microsoft|apple inc|cnbc|bbc", std::regex::icase);
  for (const auto& [path, text] : SitePages()) {
    EXPECT_FALSE(std::regex_search(text, kMakers)) << path;
  }
}

TEST(SiteFiles, OnlyKeysThatTheProgramKnowsAreNamed) {
  const std::set<std::string> keys{"Enter", "F1", "F12", "Tab", "Esc", "Alt", "Ctrl", "Delete"};
  const std::set<std::string> withCtrl{"O", "S", "P", "Q", "X", "C", "V", "A", "F"};
  for (const auto& [path, text] : AllPages()) {
    for (const std::string& letter : Found(text, "<kbd>Ctrl</kbd> <kbd>([^<]*)</kbd>")) {
      EXPECT_TRUE(withCtrl.contains(letter)) << path << " Ctrl+" << letter;
    }
    const std::string rest = std::regex_replace(text, std::regex("<kbd>Ctrl</kbd> <kbd>[^<]*</kbd>"), "");
    for (const std::string& key : Found(rest, "<kbd>([^<]*)</kbd>")) {
      EXPECT_TRUE(keys.contains(key)) << path << " " << key;
    }
  }
}

TEST(SiteFiles, NothingIsPromisedThatTheProgramDoesNotHave) {
  static const std::regex kPromises(
      "\\b(?:new tab|tabs|zoom|log ?in|sign ?in|account|subscribe|cookie|e-?mail us|call us|phone|app store|"
      "extension|plug-?in|private window|voice|virus|download manager|parental app|touch|swipe)\\b",
      std::regex::icase);
  for (const auto& [path, text] : AllPages()) {
    std::smatch promise;
    const std::string words = WordsOf(text);
    EXPECT_FALSE(std::regex_search(words, promise, kPromises)) << path << ": " << promise.str();
  }
}

TEST(SiteFiles, TheBannersAreARingInTheirOwnFolder) {
  std::set<std::string> ring;
  std::string path = "/banners/banner1.html";
  while (ring.insert(path).second) {
    const std::string& text = SitePages().at(path);
    const std::vector<std::string> next = Found(text, "class=\"next\" href=\"([^\"]*)\"");
    ASSERT_EQ(next.size(), 1U) << path;
    const std::vector<std::string> out = Found(text, "class=\"go\" href=\"([^\"]*)\"");
    ASSERT_EQ(out.size(), 1U) << path;
    EXPECT_FALSE(IsBanner(out[0])) << path;
    path = next[0];
    EXPECT_TRUE(IsBanner(path));
  }
  EXPECT_EQ(path, "/banners/banner1.html");
  EXPECT_GT(ring.size(), 4U);
  for (const auto& [page, text] : SitePages()) {
    EXPECT_EQ(IsBanner(page), ring.contains(page)) << page;
  }
}

TEST(SiteFiles, ThereAreAtLeastTwentyTipsAndNoLinkLeavesThem) {
  const std::string& tips = SitePages().at("/tips/default.htm");
  EXPECT_GE(Found(tips, "<(article)>").size(), 20U);
  for (const std::string& link : Found(tips, "<a [^>]*href=\"([^\"]*)\"")) {
    EXPECT_THAT(link, testing::StartsWith("/tips/"));
  }
}

TEST(SiteFiles, EachSubjectHasAtLeastThreeActivities) {
  for (const char* subject : {"/math/", "/language/", "/science/", "/social/"}) {
    int activities = 0;
    for (const auto& [path, text] : SitePages()) {
      const bool active =
          text.find("/js/practice.js") != std::string::npos || text.find("/js/quiz.js") != std::string::npos;
      activities += path.starts_with(subject) && active ? 1 : 0;
    }
    EXPECT_GE(activities, 3) << subject;
  }
}

TEST(SiteFiles, EveryQuizQuestionHasItsAnswer) {
  for (const auto& [path, text] : SitePages()) {
    for (const std::string& question : Found(text, "(<fieldset[^]*?</fieldset>)")) {
      const std::vector<std::string> right = Found(question, "data-right=\"([0-9])\"");
      ASSERT_EQ(right.size(), 1U) << path;
      EXPECT_THAT(Found(question, "value=\"([0-9])\""), Contains(right[0])) << path;
      EXPECT_THAT(question, testing::ContainsRegex("data-why=\"[^\"]+\"")) << path;
      const std::vector<std::string> names = Found(question, "name=\"([a-z0-9]+)\"");
      EXPECT_EQ(std::set<std::string>(names.begin(), names.end()).size(), 1U) << path;
    }
  }
}

TEST(SiteFiles, EveryWordOfThePracticeHasItsPicture) {
  const std::string script = TextOf(std::string(KV_SOURCE_DIR) + "/site/js/practice.js");
  const std::vector<std::string> words = Found(script, "\\['([a-z]+)', '(?:el|la) ");
  EXPECT_GE(words.size(), 10U);
  for (const std::string& word : words) {
    EXPECT_TRUE(std::filesystem::exists(std::string(KV_SOURCE_DIR) + "/site/img/words/" + word + ".svg"))
        << word;
    EXPECT_THAT(SitePages().at("/language/words.html"), HasSubstr("/img/words/" + word + ".svg"));
  }
}

TEST(PanelHelp, EachPageHasALinkThatClosesItAndLeadsToTheOther) {
  ASSERT_EQ(HelpPages().size(), 2U);
  for (const auto& [path, text] : HelpPages()) {
    int closing = 0;
    for (const std::string& link : Found(text, "href=\"([^\"]*)\"")) {
      const std::string file = link.substr(0, link.find('?'));
      EXPECT_TRUE(HelpPages().contains("/" + file)) << path << ": " << link;
      closing += link.find("CLOSE") != std::string::npos ? 1 : 0;
      EXPECT_EQ(link.find("CLOSE") != std::string::npos, "/" + file == path) << path << ": " << link;
    }
    EXPECT_GE(closing, 1) << path;
    EXPECT_THAT(Found(text, "(<script|<link|src=|url\\()"), IsEmpty()) << path;
  }
}

TEST(PanelHelp, EveryBoxOfThePanelIsExplainedByItsOwnText) {
  EXPECT_THAT(Found(HelpPages().at("/CheckBox.htm"), "<dt>([^<]*)</dt>"),
              testing::UnorderedElementsAre(
                  "Filter Enabled", "Record Navigation", "Do Not Filter on Back Button or Links Bar",
                  "Disable pop-ups", "Disable email web link", "Disable Sounds",
                  "Auto show Tip of Day at browser launch", "Prevent Internet Explorer from launching",
                  "Prevent Netscape 6 from launching"));
}

}  // namespace
}  // namespace kivandra
