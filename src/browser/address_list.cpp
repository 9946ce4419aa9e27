// SPDX-License-Identifier: GPL-3.0-or-later
#include "browser/address_list.h"

#include <string>

#include "support/attempt.h"

namespace kivandra {

void PutOnTop(ComboBox& box, const WebBrowser& browser) {
  attempt([&] {
    const std::string address = browser.LocationURL();
    const int count = box.ListCount();
    for (int index = 0; index < count; ++index) {
      if (box.List(index) == address) {
        box.RemoveItem(index);
        return;
      }
    }
  });
  attempt([&] { box.AddItem(browser.LocationURL(), 0); });
  attempt([&] { box.SetListIndex(0); });
  attempt([&] { box.SetFocus(); });
}

}  // namespace kivandra
