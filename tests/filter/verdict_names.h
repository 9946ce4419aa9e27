// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <ostream>

#include "filter/gate.h"

namespace kivandra {

/// Writes a verdict into a test's message.
inline void PrintTo(GateVerdict verdict, std::ostream* out) {
  switch (verdict) {
    case GateVerdict::PassEarly:
      *out << "PassEarly";
      return;
    case GateVerdict::RefuseMail:
      *out << "RefuseMail";
      return;
    case GateVerdict::PassUnfiltered:
      *out << "PassUnfiltered";
      return;
    case GateVerdict::PassAllowed:
      *out << "PassAllowed";
      return;
    case GateVerdict::PassSearchHome:
      *out << "PassSearchHome";
      return;
    case GateVerdict::PassScanned:
      *out << "PassScanned";
      return;
    case GateVerdict::Block:
      *out << "Block";
      return;
  }
}

}  // namespace kivandra
