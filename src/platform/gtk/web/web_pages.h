// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

namespace kivandra::gtk {

/// The program's own pages, shown in place of a page that could not be opened: what happened, the address,
/// what to try. No codes, no blame.
class WebPages {
 public:
  enum class Trouble {
    NotOpened,   ///< no answer, no such host, a broken answer
    NotTrusted,  ///< the site could not prove who it is
    Stopped,     ///< the page's process ended
    NotShown,    ///< a file that is not shown and never saved
  };

  /// Reads the frame of the pages from `folder`; a plain one is used if it is not there.
  explicit WebPages(const std::string& folder);

  /// The page as HTML. `home` is where "Go home" leads; empty leaves it out.
  [[nodiscard]] std::string Page(Trouble trouble, const std::string& address, const std::string& home) const;

 private:
  std::string frame_;
};

}  // namespace kivandra::gtk
