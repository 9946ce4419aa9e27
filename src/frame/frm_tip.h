// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <memory>

#include "platform/form.h"

namespace kivandra {

/// The window with the tip of the day. The tips are pages of the product's site.
class frmTip : public FormEvents, public std::enable_shared_from_this<frmTip> {
 public:
  using Unloaded = std::function<void(const FormEvents& window)>;

  /// Loads a new window, hidden, in the skin in force. `unloaded` is called once when the window goes; until
  /// then the caller holds the object. Throws PlatformError if the form can't be loaded.
  static std::shared_ptr<frmTip> Create(Forms& forms, Unloaded unloaded);
  ~frmTip() override;
  frmTip(const frmTip&) = delete;
  frmTip& operator=(const frmTip&) = delete;

  [[nodiscard]] Form& Window() { return *form_; }

  void Form_Unload() override;

 private:
  frmTip(std::shared_ptr<Form> form, Unloaded unloaded);
  void Form_Load();

  std::shared_ptr<Form> form_;
  Unloaded unloaded_;
};

}  // namespace kivandra
