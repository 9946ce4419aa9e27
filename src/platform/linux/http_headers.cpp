// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/http_headers.h"

#include <memory>
#include <string_view>

namespace kivandra::linux_impl {
namespace {

using Uri = std::unique_ptr<GUri, decltype(&g_uri_unref)>;

constexpr auto kUriFlags = static_cast<GUriFlags>(SOUP_HTTP_URI_FLAGS | G_URI_FLAGS_PARSE_RELAXED);

bool HasScheme(GUri* uri, const char* scheme) { return g_strcmp0(g_uri_get_scheme(uri), scheme) == 0; }

/// Whether the engine trusts the way to this host: only there it tells a server what a page is wanted for.
bool IsTrustworthy(GUri* uri) {
  if (HasScheme(uri, "https")) return true;
  const std::string_view host = g_uri_get_host(uri);
  if (host == "localhost" || host.ends_with(".localhost")) return true;
  GInetAddress* address = g_inet_address_new_from_string(g_uri_get_host(uri));
  if (address == nullptr) return false;
  const bool loopback = g_inet_address_get_is_loopback(address) != FALSE;
  g_object_unref(address);
  return loopback;
}

const char* BaseDomain(GUri* uri) {
  const char* base = soup_tld_get_base_domain(g_uri_get_host(uri), nullptr);
  return base != nullptr ? base : g_uri_get_host(uri);
}

/// How the page that led here lies to the one that is wanted.
const char* SiteRelation(GUri* uri, const std::string& referrer) {
  if (referrer.empty()) return "none";
  const Uri from(g_uri_parse(referrer.c_str(), kUriFlags, nullptr), &g_uri_unref);
  if (!from || g_uri_get_host(from.get()) == nullptr || !HasScheme(from.get(), g_uri_get_scheme(uri))) {
    return "cross-site";
  }
  if (g_strcmp0(g_uri_get_host(from.get()), g_uri_get_host(uri)) == 0 &&
      g_uri_get_port(from.get()) == g_uri_get_port(uri)) {
    return "same-origin";
  }
  return g_strcmp0(BaseDomain(from.get()), BaseDomain(uri)) == 0 ? "same-site" : "cross-site";
}

}  // namespace

void SendAsEngine(SoupMessage* message, const EngineIdentity& identity, const std::string& cookies,
                  const std::string& referrer) {
  SoupMessageHeaders* headers = soup_message_get_request_headers(message);
  const auto send = [headers](const char* name, const std::string& value) {
    if (!value.empty()) soup_message_headers_replace(headers, name, value.c_str());
  };
  GUri* uri = soup_message_get_uri(message);
  send("Referer", referrer);
  send("Accept", identity.Accept());
  send("Upgrade-Insecure-Requests", "1");
  send("User-Agent", identity.UserAgent());
  send("Accept-Language", identity.AcceptLanguage());
  send("Cookie", cookies);
  if (IsTrustworthy(uri)) {
    send("Sec-Fetch-Dest", "document");
    send("Sec-Fetch-Mode", "navigate");
    send("Sec-Fetch-Site", SiteRelation(uri, referrer));
  }
}

std::string RedirectTarget(SoupMessage* message) {
  switch (soup_message_get_status(message)) {
    case SOUP_STATUS_MOVED_PERMANENTLY:
    case SOUP_STATUS_FOUND:
    case SOUP_STATUS_SEE_OTHER:
    case SOUP_STATUS_TEMPORARY_REDIRECT:
    case SOUP_STATUS_PERMANENT_REDIRECT:
      break;
    default:
      return {};
  }
  const char* location = soup_message_headers_get_one(soup_message_get_response_headers(message), "Location");
  if (location == nullptr) return {};
  const Uri target(g_uri_parse_relative(soup_message_get_uri(message), location, kUriFlags, nullptr),
                   &g_uri_unref);
  if (!target) return {};
  char* text = g_uri_to_string(target.get());
  std::string result = text;
  g_free(text);
  return result;
}

GUri* FetchableUri(const std::string& url) {
  GUri* uri = g_uri_parse(url.c_str(), kUriFlags, nullptr);
  if (uri == nullptr) return nullptr;
  const char* host = g_uri_get_host(uri);
  const bool fetchable =
      (HasScheme(uri, "http") || HasScheme(uri, "https")) && host != nullptr && *host != '\0';
  if (fetchable) return uri;
  g_uri_unref(uri);
  return nullptr;
}

}  // namespace kivandra::linux_impl
