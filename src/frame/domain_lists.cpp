// SPDX-License-Identifier: GPL-3.0-or-later
#include "frame/domain_lists.h"

#include "core/registry.h"
#include "core/settings.h"
#include "filter/filter_values.h"
#include "support/attempt.h"

namespace kivandra {

namespace {

/// Calls `each` with the texts of a list's slots from "0" on, up to the first empty one.
template <typename Each>
void WalkList(cRegistry& registry, const std::string& section, Each each) {
  for (int slot = 0;; ++slot) {
    registry.SetSectionKey(section);
    registry.CreateKey();
    registry.SetValueKey(std::to_string(slot));
    registry.SetValueType(REG_SZ);
    const std::string text = TextOf(registry.Value());
    if (text.empty()) {
      return;
    }
    each(text);
  }
}

}  // namespace

void LoadDomainLists(RegistryCalls& calls, EventLoop& events, const std::string& programFileName) {
  // 1. Row 1 is the sign that the built-in rows are in place.
  while (BadWords[1] != "porn") {
    events.WaitForEvents();
  }
  // 2. Behind the last used row.
  std::size_t row = BadWords.FirstEmptyRow();
  cRegistry registry(calls, programFileName);
  registry.SetClassKey(HKEY_CLASSES_ROOT);
  // 3 and 4. A row past a table's end stores nothing, and the walk goes on.
  WalkList(registry, kDisallowedSection, [&row](const std::string& text) {
    attempt([&] { BadWords[row] = text; });
    ++row;
  });
  std::size_t allowedRow = 1;
  WalkList(registry, kAllowedSection, [&allowedRow](const std::string& text) {
    attempt([&] { AllowedDomains[allowedRow] = text; });
    ++allowedRow;
  });
}

}  // namespace kivandra
