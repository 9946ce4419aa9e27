// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <utility>

#include "platform/platform_error.h"

namespace kivandra {

/// Carries out one step of a handler that goes on after a failing step. A platform operation that fails ends
/// the step and nothing else; true if the step ran to its end. Other exceptions pass through: they are faults
/// of the program, not of a step.
template <typename Step>
bool attempt(Step&& step) {
  try {
    std::forward<Step>(step)();
    return true;
  } catch (const PlatformError&) {
    return false;
  }
}

}  // namespace kivandra
