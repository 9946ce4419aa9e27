// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gtk/web/web_session.h"

#include <algorithm>
#include <cstdio>
#include <utility>
#include <vector>

namespace kivandra::gtk {
namespace {

/// How long the end of a session may hold up the program's end.
constexpr guint kEndSessionMilliseconds = 2000;

/// The person's languages as web servers know them, best first.
std::vector<std::string> PreferredLanguages() {
  std::vector<std::string> languages;
  for (const char* const* name = g_get_language_names(); *name != nullptr; ++name) {
    std::string language(*name);
    if (language == "C" || language == "POSIX" || language.find_first_of(".@") != std::string::npos) continue;
    std::replace(language.begin(), language.end(), '_', '-');
    languages.push_back(std::move(language));
  }
  if (languages.empty()) languages = {"en-US", "en"};
  return languages;
}

/// The header that the engine's network process makes of the languages.
std::string LanguageHeader(const std::vector<std::string>& languages) {
  const int step = languages.size() < 10 ? 10 : languages.size() < 20 ? 5 : 1;
  std::string header;
  int quality = 100;
  for (const std::string& language : languages) {
    if (!header.empty()) header += ',';
    header += language;
    if (quality > 0 && quality < 100) {
      char weight[16];
      std::snprintf(weight, sizeof weight, ";q=0.%02d", quality);
      header += weight;
    }
    quality -= step;
  }
  return header;
}

void OnDownloadStarted(WebKitNetworkSession* /*session*/, WebKitDownload* download, gpointer /*data*/) {
  webkit_download_cancel(download);
}

struct CookieQuestion {
  std::function<void(std::string)> done;
};

void OnCookies(GObject* source, GAsyncResult* result, gpointer data) {
  const std::unique_ptr<CookieQuestion> question(static_cast<CookieQuestion*>(data));
  GList* cookies = webkit_cookie_manager_get_cookies_finish(WEBKIT_COOKIE_MANAGER(source), result, nullptr);
  GSList* sorted = nullptr;
  for (GList* item = g_list_last(cookies); item != nullptr; item = item->prev) {
    sorted = g_slist_prepend(sorted, item->data);
  }
  // The call does not take an empty list.
  char* header = sorted != nullptr ? soup_cookies_to_cookie_header(sorted) : nullptr;
  std::string text = header != nullptr ? header : "";
  g_free(header);
  g_slist_free(sorted);
  g_list_free_full(cookies, reinterpret_cast<GDestroyNotify>(soup_cookie_free));
  question->done(std::move(text));
}

/// The end of a browser session, shared by its answers; the last of them, or the alarm, wakes the one who
/// waits.
struct SessionEnd {
  int open = 1;
  bool givenUp = false;
};

void OnCookieGone(GObject* source, GAsyncResult* result, gpointer data) {
  webkit_cookie_manager_delete_cookie_finish(WEBKIT_COOKIE_MANAGER(source), result, nullptr);
  --(*static_cast<std::shared_ptr<SessionEnd>*>(data))->open;
  delete static_cast<std::shared_ptr<SessionEnd>*>(data);
}

void OnEveryCookie(GObject* source, GAsyncResult* result, gpointer data) {
  const std::unique_ptr<std::shared_ptr<SessionEnd>> end(static_cast<std::shared_ptr<SessionEnd>*>(data));
  GList* cookies =
      webkit_cookie_manager_get_all_cookies_finish(WEBKIT_COOKIE_MANAGER(source), result, nullptr);
  for (GList* item = cookies; item != nullptr; item = item->next) {
    auto* cookie = static_cast<SoupCookie*>(item->data);
    if (soup_cookie_get_expires(cookie) != nullptr) continue;
    ++(*end)->open;
    webkit_cookie_manager_delete_cookie(WEBKIT_COOKIE_MANAGER(source), cookie, nullptr, OnCookieGone,
                                        new std::shared_ptr<SessionEnd>(*end));
  }
  g_list_free_full(cookies, reinterpret_cast<GDestroyNotify>(soup_cookie_free));
  --(*end)->open;
}

gboolean OnAlarm(gpointer data) {
  (*static_cast<std::shared_ptr<SessionEnd>*>(data))->givenUp = true;
  return G_SOURCE_CONTINUE;  // it is taken away by the one who waits
}

}  // namespace

WebSession::WebSession() {
  char* data = g_build_filename(g_get_user_data_dir(), "kivandra", "web", nullptr);
  char* cache = g_build_filename(g_get_user_cache_dir(), "kivandra", nullptr);
  session_ = webkit_network_session_new(data, cache);
  webkit_network_session_set_tls_errors_policy(session_, WEBKIT_TLS_ERRORS_POLICY_FAIL);
  webkit_network_session_set_persistent_credential_storage_enabled(session_, FALSE);
  char* jar = g_build_filename(data, "cookies.sqlite", nullptr);
  webkit_cookie_manager_set_persistent_storage(webkit_network_session_get_cookie_manager(session_), jar,
                                               WEBKIT_COOKIE_PERSISTENT_STORAGE_SQLITE);
  g_free(jar);
  g_free(cache);
  g_free(data);
  g_signal_connect(session_, "download-started", G_CALLBACK(OnDownloadStarted), nullptr);

  const std::vector<std::string> languages = PreferredLanguages();
  std::vector<const char*> names;
  for (const std::string& language : languages) names.push_back(language.c_str());
  names.push_back(nullptr);
  webkit_web_context_set_preferred_languages(webkit_web_context_get_default(), names.data());
  acceptLanguage_ = LanguageHeader(languages);

  WebKitSettings* settings = webkit_settings_new();
  userAgent_ = webkit_settings_get_user_agent(settings);
  g_object_unref(settings);
}

WebSession::~WebSession() {
  g_signal_handlers_disconnect_by_func(session_, reinterpret_cast<gpointer>(OnDownloadStarted), nullptr);
  g_object_unref(session_);
}

std::string WebSession::Accept() const {
  return "text/html,application/xhtml+xml,application/xml;q=0.9,*/*;q=0.8";
}

void WebSession::CookieHeader(const std::string& url, std::function<void(std::string header)> done) {
  webkit_cookie_manager_get_cookies(webkit_network_session_get_cookie_manager(session_), url.c_str(), nullptr,
                                    OnCookies, new CookieQuestion{std::move(done)});
}

std::string WebSession::Referrer(const std::string& url) const {
  const auto found = referrers_->find(url);
  return found != referrers_->end() ? found->second : std::string();
}

std::function<void(const std::string&, const std::string&)> WebSession::ReferrerNotes() const {
  return [notes = std::weak_ptr<Referrers>(referrers_)](const std::string& url, const std::string& referrer) {
    const auto referrers = notes.lock();
    if (!referrers) return;
    if (referrer.empty()) {
      referrers->erase(url);
    } else {
      (*referrers)[url] = referrer;
    }
  };
}

void WebSession::InternetSetOptionA(int option) {
  if (option != INTERNET_OPTION_END_BROWSER_SESSION) return;
  // Logins are never kept (every question for one is cancelled), so the session's cookies are all there is to
  // drop.
  const auto end = std::make_shared<SessionEnd>();
  webkit_cookie_manager_get_all_cookies(webkit_network_session_get_cookie_manager(session_), nullptr,
                                        OnEveryCookie, new std::shared_ptr<SessionEnd>(end));
  std::shared_ptr<SessionEnd> alarmed = end;
  const guint alarm = g_timeout_add(kEndSessionMilliseconds, OnAlarm, &alarmed);
  while (end->open > 0 && !end->givenUp) g_main_context_iteration(nullptr, TRUE);
  g_source_remove(alarm);
}

}  // namespace kivandra::gtk
