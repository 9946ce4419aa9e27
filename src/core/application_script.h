// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/application.h"
#include "platform/script_object.h"

namespace kivandra {

/// The automation object as page scripts see it, under the name KVD. A page that asks in a loop leaves a
/// frame that can be used: while there are kMostChildren child windows it gets no further one, and while one
/// assignment of Visible runs its events every other one fails.
class ApplicationScript : public ScriptObject {
 public:
  static constexpr int kMostChildren = 20;

  explicit ApplicationScript(Application& application) : application_(application) {}

  [[nodiscard]] std::vector<Member> Members() const override;
  ScriptValue Invoke(std::string_view member, const std::vector<ScriptValue>& arguments) override;

 private:
  void SetVisible(bool visible);

  Application& application_;
  bool starting_ = false;
};

}  // namespace kivandra
