// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace kivandra {

inline constexpr int INTERNET_OPTION_END_BROWSER_SESSION = 42;  // wininet.h

class InternetSession {
 public:
  virtual ~InternetSession() = default;

  /// Sets an option of the engine's network layer. INTERNET_OPTION_END_BROWSER_SESSION drops session cookies
  /// and logins; it is done, or given up, when the call returns.
  virtual void InternetSetOptionA(int option) = 0;
};

}  // namespace kivandra
