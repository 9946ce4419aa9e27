// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gio/gio.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "fetch/raw_server.h"
#include "platform/linux/page_fetch.h"

namespace kivandra::testing {

/// An engine that has one cookie for each host that it was given, and answers from the event loop.
class FakeIdentity : public EngineIdentity {
 public:
  std::map<std::string, std::string> cookies;    // beginning of an address, cookies
  std::map<std::string, std::string> referrers;  // address, referrer
  std::vector<std::string> asked;

  [[nodiscard]] std::string UserAgent() const override { return "Engine/1"; }
  [[nodiscard]] std::string Accept() const override { return "text/html,*/*;q=0.8"; }
  [[nodiscard]] std::string AcceptLanguage() const override { return "es-MX,es;q=0.90"; }
  [[nodiscard]] std::string Referrer(const std::string& url) const override {
    const auto found = referrers.find(url);
    return found != referrers.end() ? found->second : std::string();
  }
  void CookieHeader(const std::string& url, std::function<void(std::string header)> done) override {
    asked.push_back(url);
    std::string header;
    for (const auto& [beginning, value] : cookies) {
      if (url.starts_with(beginning)) header = value;
    }
    g_idle_add_full(
        G_PRIORITY_DEFAULT,
        [](gpointer data) -> gboolean {
          (*static_cast<std::function<void()>*>(data))();
          return G_SOURCE_REMOVE;
        },
        new std::function<void()>([done, header] { done(header); }),
        [](gpointer data) { delete static_cast<std::function<void()>*>(data); });
  }
};

class PageFetching : public ::testing::Test {
 protected:
  FakeIdentity identity;

  /// Runs the event loop until `done` holds or the time is over.
  static bool RunUntil(const std::function<bool()>& done,
                       std::chrono::milliseconds patience = std::chrono::milliseconds(20000)) {
    bool late = false;
    const guint alarm = g_timeout_add(
        static_cast<guint>(patience.count()),
        [](gpointer flag) -> gboolean {
          *static_cast<bool*>(flag) = true;
          return G_SOURCE_CONTINUE;
        },
        &late);
    while (!done() && !late) g_main_context_iteration(nullptr, TRUE);
    g_source_remove(alarm);
    return done();
  }

  std::optional<std::string> Fetch(const std::string& url, linux_impl::FetchLimits limits = {}) {
    linux_impl::SoupPageFetch fetch(identity, limits);
    std::optional<std::string> source;
    bool inside = true;
    const auto ticket = fetch.FetchPage(url, [&](std::string text) {
      EXPECT_FALSE(inside);
      EXPECT_FALSE(source.has_value()) << "answered twice";
      source = std::move(text);
    });
    inside = false;
    RunUntil([&] { return source.has_value(); });
    return source;
  }
};

/// The same answer to everyone.
inline RawServer::Handler Always(const std::string& answer) {
  return [answer](Connection& connection, const std::string&) { connection.Send(answer); };
}

}  // namespace kivandra::testing
