// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gtk/web/web_address.h"

#include <webkit/webkit.h>

#include <algorithm>
#include <cctype>

namespace kivandra::gtk {
namespace {

bool IsBlank(char c) { return static_cast<unsigned char>(c) <= ' '; }

/// The text without blanks around it, its control characters and everything beyond ASCII as percent escapes:
/// the engine's own encoder would encode letters beyond ASCII twice, and takes no NUL. Of a path every sign
/// is part of a name.
std::string Escaped(std::string_view text) {
  while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
  const std::string_view special = !text.empty() && text.front() == '/' ? "%#?" : "";
  std::string escaped;
  escaped.reserve(text.size());
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte < 0x20 || byte >= 0x7f || special.find(c) != std::string_view::npos) {
      constexpr char kDigits[] = "0123456789ABCDEF";
      escaped += {'%', kDigits[byte >> 4], kDigits[byte & 15]};
    } else {
      escaped += c;
    }
  }
  return escaped;
}

bool HasHost(std::string_view address) {
  const std::size_t slashes = address.find("://");
  if (slashes == std::string_view::npos) return false;
  std::string_view authority = address.substr(slashes + 3);
  authority = authority.substr(0, authority.find_first_of("/?#"));
  const std::size_t at = authority.rfind('@');
  if (at != std::string_view::npos) authority.remove_prefix(at + 1);
  return !authority.empty() && authority.front() != ':';
}

bool IsWebScheme(std::string_view scheme) { return scheme == "http" || scheme == "https"; }

}  // namespace

std::string WithoutFragment(const std::string& address) { return address.substr(0, address.find('#')); }

std::string SchemeOf(std::string_view address) {
  const std::size_t colon = address.find(':');
  if (colon == std::string_view::npos || colon == 0) return {};
  std::string scheme(address.substr(0, colon));
  const auto isSchemeLetter = [](unsigned char c) {
    return std::isalnum(c) != 0 || c == '+' || c == '-' || c == '.';
  };
  if (std::isalpha(static_cast<unsigned char>(scheme.front())) == 0 ||
      !std::all_of(scheme.begin(), scheme.end(), isSchemeLetter)) {
    return {};
  }
  // "localhost:8080/x" names a host and its port.
  if (colon + 1 < address.size() && std::isdigit(static_cast<unsigned char>(address[colon + 1])) != 0 &&
      !IsWebScheme(scheme)) {
    const std::size_t end = address.find_first_not_of("0123456789", colon + 1);
    if (end == std::string_view::npos || address[end] == '/') return {};
  }
  std::transform(scheme.begin(), scheme.end(), scheme.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return scheme;
}

std::string EngineSpelling(const std::string& text) {
  std::string address = Escaped(text);
  if (address.empty() || address.size() > kLongestAddress) return {};
  if (SchemeOf(address).empty()) address.insert(0, address.front() == '/' ? "file://" : "http://");
  WebKitURIRequest* request = webkit_uri_request_new(address.c_str());
  const char* spelling = webkit_uri_request_get_uri(request);
  std::string engineSpelling = spelling != nullptr ? spelling : "";
  g_object_unref(request);
  if (IsWebScheme(SchemeOf(engineSpelling)) && !HasHost(engineSpelling)) return {};
  return engineSpelling;
}

std::string SpellingToJudge(const std::string& text, const std::string& engineSpelling) {
  return engineSpelling.empty() || engineSpelling == text + "/" ? text : engineSpelling;
}

bool IsBlankDocument(std::string_view address) {
  const std::string_view bare = address.substr(0, address.find_first_of("?#"));
  return bare.empty() || bare == "about:blank" || bare == "about:srcdoc";
}

bool PageMayLoad(std::string_view address) {
  const std::string scheme = SchemeOf(address);
  return IsWebScheme(scheme) || scheme == "data" || scheme == "blob" ||
         (!address.empty() && IsBlankDocument(address));
}

bool ProgramMayLoad(std::string_view address) { return PageMayLoad(address) || SchemeOf(address) == "file"; }

}  // namespace kivandra::gtk
