// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <webkit/webkit.h>

#include <map>
#include <memory>
#include <string>

#include "platform/engine_identity.h"
#include "platform/internet_session.h"

namespace kivandra::gtk {

/// The engine's one network session: cookies, cache, trust in certificates, languages; and what a fetch on
/// the side must know of it. Nothing is ever downloaded to disk.
class WebSession final : public EngineIdentity, public InternetSession {
 public:
  /// Keeps its data below $XDG_DATA_HOME/kivandra/web and its cache below $XDG_CACHE_HOME/kivandra.
  WebSession();
  ~WebSession() override;
  WebSession(const WebSession&) = delete;
  WebSession& operator=(const WebSession&) = delete;

  [[nodiscard]] WebKitNetworkSession* Get() const { return session_; }

  [[nodiscard]] std::string UserAgent() const override { return userAgent_; }
  [[nodiscard]] std::string Accept() const override;
  [[nodiscard]] std::string AcceptLanguage() const override { return acceptLanguage_; }
  void CookieHeader(const std::string& url, std::function<void(std::string header)> done) override;
  [[nodiscard]] std::string Referrer(const std::string& url) const override;

  void InternetSetOptionA(int option) override;

  /// Remembers the referrer of a question that is being judged; an empty one forgets it. The function may be
  /// called after the session is gone.
  [[nodiscard]] std::function<void(const std::string& url, const std::string& referrer)> ReferrerNotes()
      const;

 private:
  using Referrers = std::map<std::string, std::string>;

  WebKitNetworkSession* session_;
  std::string userAgent_;
  std::string acceptLanguage_;
  std::shared_ptr<Referrers> referrers_ = std::make_shared<Referrers>();
};

}  // namespace kivandra::gtk
