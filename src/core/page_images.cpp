// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/page_images.h"

#include "core/user_settings.h"
#include "support/attempt.h"

namespace kivandra {

namespace {

constexpr const char* kApplication = "Kivandra";
constexpr const char* kSection = "Pages";
constexpr const char* kKey = "Images";
constexpr const char* kShown = "1";
constexpr const char* kHidden = "0";

}  // namespace

bool StoredImagesShown(RegistryCalls& calls) {
  bool shown = true;
  attempt([&] { shown = GetSetting(calls, kApplication, kSection, kKey, kShown) != kHidden; });
  return shown;
}

void StoreImagesShown(RegistryCalls& calls, bool shown) {
  attempt([&] { SaveSetting(calls, kApplication, kSection, kKey, shown ? kShown : kHidden); });
}

}  // namespace kivandra
