// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <libsoup/soup.h>

#include <string>

#include "platform/engine_identity.h"

namespace kivandra::linux_impl {

/// Gives the request the headers that the engine sends when it opens a page; `cookies` and `referrer` may be
/// empty.
void SendAsEngine(SoupMessage* message, const EngineIdentity& identity, const std::string& cookies,
                  const std::string& referrer);

/// Where an answer sends its reader on to, as a whole address; empty if it does not.
[[nodiscard]] std::string RedirectTarget(SoupMessage* message);

/// The address in the spelling of URIs if it is one that can be fetched; null otherwise. The caller owns it.
[[nodiscard]] GUri* FetchableUri(const std::string& url);

}  // namespace kivandra::linux_impl
