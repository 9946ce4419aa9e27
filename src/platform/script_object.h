// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace kivandra {

/// What passes between a page's script and the program: nothing, a Boolean, a number, a text.
using ScriptValue = std::variant<std::monostate, bool, double, std::string>;

/// An object of the program that page scripts can reach. In a page every member answers with a promise.
class ScriptObject {
 public:
  virtual ~ScriptObject() = default;

  struct Member {
    std::string name;
    bool isProperty;  ///< a property is read and assigned, anything else is called
  };
  [[nodiscard]] virtual std::vector<Member> Members() const = 0;
  /// Calls a method or reads a property (no arguments) or assigns it (one argument). Throws PlatformError for
  /// an unknown member or a wrong argument; the page's promise is then rejected. Windows may open inside.
  virtual ScriptValue Invoke(std::string_view member, const std::vector<ScriptValue>& arguments) = 0;
};

}  // namespace kivandra
