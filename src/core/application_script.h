// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/application.h"
#include "platform/script_object.h"

namespace kivandra {

/// The automation object as page scripts see it, under the name KVD.
class ApplicationScript : public ScriptObject {
 public:
  explicit ApplicationScript(Application& application) : application_(application) {}

  [[nodiscard]] std::vector<Member> Members() const override;
  ScriptValue Invoke(std::string_view member, const std::vector<ScriptValue>& arguments) override;

 private:
  Application& application_;
};

}  // namespace kivandra
