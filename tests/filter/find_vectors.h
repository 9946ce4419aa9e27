// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <fstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace kivandra::test {

inline void AppendUtf8(std::string& text, unsigned long point) {
  const auto put = [&](unsigned long byte) { text.push_back(static_cast<char>(byte)); };
  if (point < 0x80) {
    put(point);
  } else if (point < 0x800) {
    put(0xC0 | point >> 6);
    put(0x80 | (point & 0x3F));
  } else if (point < 0x10000) {
    put(0xE0 | point >> 12);
    put(0x80 | (point >> 6 & 0x3F));
    put(0x80 | (point & 0x3F));
  } else {
    put(0xF0 | point >> 18);
    put(0x80 | (point >> 12 & 0x3F));
    put(0x80 | (point >> 6 & 0x3F));
    put(0x80 | (point & 0x3F));
  }
}

/// The text of a field: \\ \t \r \n, \xHH, \u{H..} and \*{N|unit}, which stands for N times the unit.
inline std::string Unescaped(std::string_view field) {
  std::string text;
  for (std::size_t at = 0; at < field.size();) {
    if (field[at] != '\\') {
      text.push_back(field[at++]);
      continue;
    }
    const char kind = field.at(at + 1);
    if (kind == 'x') {
      AppendUtf8(text, std::stoul(std::string(field.substr(at + 2, 2)), nullptr, 16));
      at += 4;
    } else if (kind == 'u') {
      const std::size_t end = field.find('}', at);
      AppendUtf8(text, std::stoul(std::string(field.substr(at + 3, end - at - 3)), nullptr, 16));
      at = end + 1;
    } else if (kind == '*') {
      const std::size_t bar = field.find('|', at);
      std::size_t end = bar + 1;
      while (field.at(end) != '}') {
        end = field.compare(end, 3, "\\u{") == 0 ? field.find('}', end) + 1 : end + 1;
      }
      const std::string unit = Unescaped(field.substr(bar + 1, end - bar - 1));
      for (unsigned long n = std::stoul(std::string(field.substr(at + 3, bar - at - 3))); n > 0; --n) {
        text += unit;
      }
      at = end + 1;
    } else {
      const std::size_t which = std::string_view("\\trn").find(kind);
      if (which == std::string_view::npos) {
        throw std::invalid_argument("no such escape: " + std::string(field));
      }
      text.push_back("\\\t\r\n"[which]);
      at += 2;
    }
  }
  return text;
}

/// One recorded search: whether the word stands in the text as a whole word, in any case.
struct FindVector {
  std::string id;
  std::string text;
  std::string word;
  bool found;
};

/// Reads the file by the names of its columns.
inline std::vector<FindVector> ReadFindVectors(const std::string& path) {
  std::ifstream file(path);
  if (!file) {
    throw std::runtime_error("can't open " + path);
  }
  const auto split = [](const std::string& line) {
    std::vector<std::string> fields(1);
    for (const char c : line) {
      c == '\t' ? fields.emplace_back() : fields.back() += c;
    }
    return fields;
  };
  std::string line;
  std::getline(file, line);
  const std::vector<std::string> names = split(line);
  const auto column = [&](std::string_view name) {
    std::size_t i = 0;
    while (names.at(i) != name) {
      ++i;
    }
    return i;
  };
  const std::size_t id = column("id");
  const std::size_t text = column("text");
  const std::size_t word = column("word");
  const std::size_t definition = column("definition");
  std::vector<FindVector> vectors;
  while (std::getline(file, line)) {
    const std::vector<std::string> fields = split(line);
    vectors.push_back({fields.at(id), Unescaped(fields.at(text)), Unescaped(fields.at(word)),
                       std::stol(fields.at(definition)) > -1});
  }
  return vectors;
}

}  // namespace kivandra::test
