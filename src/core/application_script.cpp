// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/application_script.h"

#include "platform/platform_error.h"
#include "support/raised.h"

namespace kivandra {

std::vector<ScriptObject::Member> ApplicationScript::Members() const {
  return {{"Visible", true}, {"Navigate", false}, {"NewWindow", false}};
}

ScriptValue ApplicationScript::Invoke(std::string_view member, const std::vector<ScriptValue>& arguments) {
  if (member == "Visible" && arguments.empty()) {
    return application_.Visible();
  }
  if (member == "Visible" && arguments.size() == 1 && std::holds_alternative<bool>(arguments[0])) {
    SetVisible(std::get<bool>(arguments[0]));
    return {};
  }
  if (member == "Navigate" && arguments.size() == 1 && std::holds_alternative<std::string>(arguments[0])) {
    application_.Navigate(std::get<std::string>(arguments[0]));
    return {};
  }
  if (member == "NewWindow" && arguments.empty()) {
    if (application_.Children() >= kMostChildren) {
      throw PlatformError(kInvalidCall, "There are too many windows.");
    }
    application_.NewWindow();
    return {};
  }
  throw PlatformError(kInvalidCall, "Invalid procedure call or argument");
}

void ApplicationScript::SetVisible(bool visible) {
  if (starting_) {
    throw PlatformError(kInvalidCall, "The program is being started already.");
  }
  const Raised starting(starting_);
  application_.SetVisible(visible);
}

}  // namespace kivandra
