// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/form.h"

namespace kivandra {

/// A window that shows one page of the product's site and nothing else.
class BannerFree : public FormEvents, public std::enable_shared_from_this<BannerFree> {
 public:
  using Unloaded = std::function<void(const FormEvents& window)>;

  /// Loads a new window, hidden. `unloaded` is called once when the window goes; until then the caller holds
  /// the object. Throws PlatformError if the form can't be loaded.
  static std::shared_ptr<BannerFree> Create(Forms& forms, Unloaded unloaded);
  ~BannerFree() override;
  BannerFree(const BannerFree&) = delete;
  BannerFree& operator=(const BannerFree&) = delete;

  /// Shows the window, adds `ending` to its caption and opens the address; a step that fails is passed over.
  void Show(const std::string& ending, const std::string& address);

  void Form_Unload() override;

 private:
  BannerFree(std::shared_ptr<Form> form, Unloaded unloaded);
  void Form_Load();

  std::shared_ptr<Form> form_;
  Unloaded unloaded_;
};

}  // namespace kivandra
