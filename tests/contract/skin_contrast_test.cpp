// SPDX-License-Identifier: GPL-3.0-or-later
// Every skin that is shipped can be read: the contrast of its pairs of colours, by the formula of WCAG 2.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <sstream>
#include <vector>

namespace kivandra {
namespace {

struct Pair {
  const char* name;
  const char* front;
  const char* ground;
  double floor;
  bool isText;
};

constexpr double kText = 4.5;
constexpr double kShape = 3.0;
constexpr double kNight = 7.0;  // what every text of the high-contrast skin reaches

constexpr std::array kPairs{
    Pair{"text on bars", "ink", "bar_bottom", kText, true},
    Pair{"text on bars, at the top", "ink", "bar_top", kText, true},
    Pair{"text of menus", "ink", "menu_bg", kText, true},
    Pair{"status text", "ink_soft", "status_bg", kText, true},
    Pair{"text on cards", "ink", "card", kText, true},
    Pair{"text on cards, at the foot", "ink", "card_top", kText, true},
    Pair{"quiet text on cards", "ink_soft", "card", kText, true},
    Pair{"quiet text, hovered", "ink_soft", "hot", kText, true},
    Pair{"window title", "title_ink", "title_top", kText, true},
    Pair{"window title, at the foot", "title_ink", "title_bottom", kText, true},
    Pair{"main button", "accent_ink", "accent", kText, true},
    Pair{"main button, held down", "accent_ink", "accent_deep", kText, true},
    Pair{"selected row", "sel_ink", "sel_bg", kText, true},
    Pair{"typed text", "field_ink", "field", kText, true},
    Pair{"edge of a field", "field_line", "field", kShape, false},
    Pair{"focus ring", "focus", "bar_bottom", kShape, false},
    Pair{"focus ring on cards", "focus", "card", kShape, false},
    Pair{"text, hovered", "ink", "hot", kText, true},
    Pair{"text, pressed", "ink", "press", kText, true},
    Pair{"disabled text", "ink_off", "bar_bottom", kShape, true},
    Pair{"disabled text on cards", "ink_off", "card", kShape, true},
    Pair{"hint in an empty field", "ink_off", "field", kShape, true},
    Pair{"notice", "notice_ink", "notice_bg", kText, true},
};

using Colours = std::map<std::string, std::string>;

Colours ReadColours(const std::filesystem::path& file) {
  std::stringstream text;
  text << std::ifstream(file).rdbuf();
  const std::string css = text.str();
  const std::regex colour("@define-color kv_([a-z_]+) (#[0-9A-Fa-f]{6});");
  Colours colours;
  for (std::sregex_iterator each(css.begin(), css.end(), colour), end; each != end; ++each) {
    colours[(*each)[1]] = (*each)[2];
  }
  return colours;
}

double Luminance(const std::string& colour) {
  constexpr std::array kWeights{0.2126, 0.7152, 0.0722};
  double sum = 0;
  for (std::size_t i = 0; i < kWeights.size(); ++i) {
    const double part = std::stoi(colour.substr(1 + 2 * i, 2), nullptr, 16) / 255.0;
    sum += kWeights[i] * (part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4));
  }
  return sum;
}

double Contrast(const std::string& one, const std::string& other) {
  const double first = Luminance(one);
  const double second = Luminance(other);
  return (std::max(first, second) + 0.05) / (std::min(first, second) + 0.05);
}

std::vector<std::filesystem::path> Shipped() {
  const std::filesystem::path assets = std::string(KV_SOURCE_DIR) + "/assets";
  std::vector<std::filesystem::path> skins{assets / "winaqua.skn"};
  for (const auto& file : std::filesystem::directory_iterator(assets / "skins")) {
    skins.push_back(file.path());
  }
  return skins;
}

TEST(SkinContrastTest, TheFormulaKnowsBlackOnWhite) {
  EXPECT_NEAR(Contrast("#000000", "#FFFFFF"), 21.0, 0.001);
  EXPECT_NEAR(Contrast("#777777", "#FFFFFF"), 4.48, 0.01);
}

TEST(SkinContrastTest, EveryShippedSkinCanBeRead) {
  const auto skins = Shipped();
  EXPECT_GE(skins.size(), 5U);
  for (const auto& file : skins) {
    const Colours colours = ReadColours(file);
    const bool night = file.stem() == "starlight";
    EXPECT_EQ(file.extension(), ".skn");
    for (const Pair& pair : kPairs) {
      ASSERT_EQ(colours.count(pair.front) + colours.count(pair.ground), 2U) << file << ": " << pair.name;
      EXPECT_GE(Contrast(colours.at(pair.front), colours.at(pair.ground)),
                night && pair.isText ? kNight : pair.floor)
          << file.stem() << ": " << pair.name;
    }
  }
}

}  // namespace
}  // namespace kivandra
