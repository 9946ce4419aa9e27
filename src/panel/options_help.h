// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <string>

#include "browser/quiet_browser_events.h"
#include "platform/form.h"
#include "platform/system_info.h"

namespace kivandra {

/// The help view inside the panel: the pages beside the program and the product's online help. It goes to no
/// other page, so that nobody walks from help into a web that nothing filters. A link whose address holds
/// "CLOSE" closes it.
class OptionsHelp : public QuietBrowserEvents {
 public:
  explicit OptionsHelp(const SystemInfo& system) : system_(system) {}

  /// Joins the controls of a freshly loaded panel.
  void Wire(const std::shared_ptr<Form>& form);
  /// The panel goes.
  void Unwire(Form& form);

  void BeforeNavigate2(std::shared_ptr<Navigation> navigation) override;

 private:
  void ShowPage(const std::string& address);
  void Command3_Click();

  const SystemInfo& system_;
  std::weak_ptr<Form> form_;
};

/// The address of the online help.
[[nodiscard]] std::string OnlineHelpAddress();

/// Whether an address, a path or a file address, is a page of the folder "help" beside the program.
[[nodiscard]] bool IsLocalHelpPage(const std::string& address, const std::string& programDirectory);

/// Whether an address is the product's online help or a page below it.
[[nodiscard]] bool IsOnlineHelpPage(const std::string& address);

}  // namespace kivandra
