// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/combo_box.h"
#include "platform/gtk/controls/editable_text.h"
#include "platform/gtk/controls/key_codes.h"
#include "platform/gtk/controls/widget_control.h"
#include "platform/text_box.h"

namespace kivandra::gtk {

/// Over a `GtkEntry` or a `GtkPasswordEntry`.
class TextBoxControl : public WidgetControl, public TextBox {
 public:
  explicit TextBoxControl(Gtk::Widget& entry);

  [[nodiscard]] std::string Text() const override;
  void SetText(const std::string& text) override;
  void SetBackColor(SystemColor color) override;
  void OnKeyDown(KeyHandler handler) override;
  void LetGo() override;

 private:
  EditableText text_;
  EntryKeys keys_;
};

/// Over a `GtkComboBoxText` with an entry.
class ComboBoxControl : public WidgetControl, public ComboBox {
 public:
  explicit ComboBoxControl(Gtk::ComboBoxText& combo);

  void SetFocus() override;
  [[nodiscard]] std::string Text() const override;
  void SetText(const std::string& text) override;
  [[nodiscard]] int ListCount() const override;
  [[nodiscard]] std::string List(int index) const override;
  void AddItem(const std::string& text, int index) override;
  void RemoveItem(int index) override;
  void SetListIndex(int index) override;
  void OnKeyDown(KeyHandler handler) override;
  void OnDblClick(std::function<void()> handler) override;
  void OnClick(std::function<void()> handler) override;
  void LetGo() override;

 private:
  [[nodiscard]] Gtk::ComboBoxText& Combo() const;
  [[nodiscard]] std::size_t Checked(int index, std::size_t end) const;
  /// Selects without telling that a person did.
  void Select(int index);
  void Chosen();

  EditableText text_;
  EntryKeys keys_;
  std::vector<std::string> items_;
  std::function<void()> dblClick_;
  std::function<void()> click_;
  bool selecting_ = false;
};

}  // namespace kivandra::gtk
