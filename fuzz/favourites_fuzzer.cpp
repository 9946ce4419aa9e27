// SPDX-License-Identifier: GPL-3.0-or-later
// Favourites: whatever a file or a title holds, an address comes out as sound UTF-8 and on one line, and a
// name that every system takes and that is a favourite's; what is written is read back.
#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>

#include "favourites/favourite_file.h"
#include "must.h"

namespace {

using namespace kivandra;
using namespace kivandra::fuzz;

constexpr std::size_t kLongestName = 255;  // of a file, in bytes: NAME_MAX of limits.h

bool IsControl(char each) { return static_cast<unsigned char>(each) < 0x20 || each == 0x7F; }

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string bytes(reinterpret_cast<const char*>(data), size);

  for (const std::string& file : {bytes, "[InternetShortcut]\r\nURL=" + bytes}) {
    if (const auto url = FavoriteURL(file)) {
      Must(IsSound(*url), "an address is sound UTF-8");
      Must(url->find_first_of("\r\n") == std::string::npos, "an address stands on one line");
      Must(FavoriteURL("[InternetShortcut]\r\nURL=" + *url + "\r\n") == url, "an address comes back");
    }
  }
  Must(FavoriteURL("URL=" + bytes).has_value(), "a line that starts with the key is found");
  if (const auto title = FavoriteTitle(bytes)) {
    Must(bytes.starts_with(*title), "a title is the beginning of the name");
    Must(!FavoriteTitle(*title), "a title ends before the ending");
  }

  const std::string name = FavoriteFileName(bytes);
  const auto title = FavoriteTitle(name);
  Must(title && !title->empty(), "the name is a favourite's");
  Must(name.size() < kLongestName && IsSound(name), "a system takes the name");
  Must(name.front() != '.' && title->back() != ' ' && title->back() != '.', "nothing at the ends gets lost");
  Must(name.find_first_of("/\\:*?\"<>|") == std::string::npos, "the name is one name");
  Must(std::none_of(name.begin(), name.end(), IsControl), "the name can be shown");
  Must(FavoriteFileName(name) == name, "a name stays as it is");
  return 0;
}
