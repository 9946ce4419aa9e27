// SPDX-License-Identifier: GPL-3.0-or-later
// What must hold of a routed text whatever its bytes are: the answer is one of the few forms that an address
// can take, the text stands in it as typed, and a second asking gives the same.
#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "browser/routing.h"
#include "hosts.h"
#include "must.h"

namespace {

using namespace kivandra;
using namespace kivandra::fuzz;

/// Whether `part`, which has no capitals, stands in `text` in any case.
bool Holds(std::string_view text, std::string_view part) {
  return std::search(text.begin(), text.end(), part.begin(), part.end(), [](char given, char wanted) {
           return (given >= 'A' && given <= 'Z' ? given + ('a' - 'A') : given) == wanted;
         }) != text.end();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  const std::string answer = getURL(text);
  Must(answer == getURL(text), "the same text gives the same answer");
  if (text.empty()) {
    Must(answer == hosts::kProductHome, "nothing typed is the home page");
    return 0;
  }
  const bool www = Holds(text, "www.");
  const bool scheme = Holds(text, "http://");
  const bool ending = Holds(text, ".net") || Holds(text, ".com") || Holds(text, ".org");
  if (www && ending) {
    Must(answer == (scheme ? text : "http://" + text), "an address with www. and an ending");
  } else if (www) {
    Must(answer == WordSearchURL(text), "www. without an ending is searched for");
  } else if (scheme) {
    Must(answer == text, "a full address stays as it is");
  } else if (ending) {
    Must(answer == "http://www." + text, "an ending alone");
  } else if (text.find(' ') == std::string::npos) {
    Must(answer == WordSearchURL(text), "one word is searched for");
  } else {
    const std::array<std::string, 3> ways{EnglishQuestionURL(text), SpanishQuestionURL(text),
                                          WordSearchURL(text)};
    Must(std::find(ways.begin(), ways.end(), answer) != ways.end(), "several words go to a search");
  }
  return 0;
}
