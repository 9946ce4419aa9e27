// SPDX-License-Identifier: GPL-3.0-or-later
#include "panel/host_list_editor.h"

#include "platform/button.h"
#include "support/attempt.h"

namespace kivandra {

namespace {

ComboBox& Combo1(Form& form, HostList list) {
  return form.Get<ComboBox>(list == HostList::Allowed ? "Combo1_0" : "Combo1_1");
}

void Clear(ComboBox& box) {
  while (box.ListCount() > 0) {
    box.RemoveItem(box.ListCount() - 1);
  }
  box.SetText("");
}

}  // namespace

void HostListEditor::Wire(const std::shared_ptr<Form>& form) {
  const std::weak_ptr<Form> weak = form;
  for (const HostList list : {HostList::Allowed, HostList::Disallowed}) {
    Combo1(*form, list).OnKeyDown([this, weak, list](int keyCode) {
      const auto window = weak.lock();
      return window && Combo1_KeyDown(window, list, keyCode);
    });
    form->Get<Button>(list == HostList::Allowed ? "b_allowButton_0" : "b_allowButton_1")
        .OnClick([weak, list] {
          if (const auto window = weak.lock()) {
            attempt([&] { Combo1(*window, list).SetEnabled(true); });
            attempt([&] { Combo1(*window, list).SetFocus(); });
          }
        });
  }
}

void HostListEditor::RefreshDomainLists(Form& form) {
  // 1.
  for (const HostList list : {HostList::Allowed, HostList::Disallowed}) {
    attempt([&] { Clear(Combo1(form, list)); });
  }
  // 2 and 3.
  for (const HostList list : {HostList::Allowed, HostList::Disallowed}) {
    for (const std::string& entry : HostListEntries(registry_, list)) {
      attempt([&] { Combo1(form, list).AddItem(entry, Combo1(form, list).ListCount()); });
    }
  }
}

bool HostListEditor::Combo1_KeyDown(const std::shared_ptr<Form>& form, HostList list, int keyCode) {
  if (keyCode != kKeyReturn && keyCode != kKeyDelete) {
    return false;
  }
  std::string text;
  if (!attempt([&] { text = Combo1(*form, list).Text(); })) {
    return true;
  }
  if (keyCode == kKeyReturn) {
    Add(*form, list, text);
  } else {
    RemoveFromHostList(registry_, list, text);
    RefreshDomainLists(*form);
  }
  return true;
}

void HostListEditor::Add(Form& form, HostList list, const std::string& text) {
  int slot = 0;
  switch (AddToHostList(registry_, list, text, slot)) {
    case HostListAdding::Added:
      RefreshDomainLists(form);
      // kept on purpose: whichever the list is. A disallowed entry so works at once; an allowed one is itself
      // a forbidden word until the next start, which alone reads the list.
      AppendSlotToBadWords(registry_, list, slot);
      break;
    case HostListAdding::AlreadyThere:
      attempt([&] { boxes_.MsgBox("This entry is already in the list."); });
      break;
    case HostListAdding::Full:
      attempt([&] { boxes_.MsgBox("This list has reached its maximum storage potential."); });
      break;
    case HostListAdding::Unreadable:
      break;
  }
}

}  // namespace kivandra
