// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <string>

namespace kivandra {

/// One question of the engine: may this address be loaded? It owns the engine's held decision.
///
/// Unanswered means refused: the destructor refuses, so a closed window, a dropped fetch or an exception
/// never lets a page in. The first answer counts; every later one does nothing. Answers never throw and run
/// no event inside.
class Navigation {
 public:
  Navigation() = default;
  Navigation(const Navigation&) = delete;
  Navigation& operator=(const Navigation&) = delete;
  virtual ~Navigation() = default;

  /// The address as the engine is about to load it.
  [[nodiscard]] virtual const std::string& Url() const = 0;
  /// A page can't lead to a file by this, nor start another program.
  virtual void Allow() = 0;
  /// Allows it though a page leads to a file: for the program's own pages on the disk, which lead to one
  /// another.
  virtual void AllowFile() = 0;
  virtual void Refuse() = 0;
  /// True until the question is answered or the engine no longer waits for it.
  [[nodiscard]] virtual bool Pending() const = 0;
  /// Called once if the engine gives the question up before it is answered (a newer load, Stop, a closed
  /// window): the judge should drop what it does for it, and its verdict would have no effect. The handler
  /// may let go of the last hold on the navigation. The last handler set counts.
  virtual void OnDropped(std::function<void()> handler) = 0;
};

}  // namespace kivandra
