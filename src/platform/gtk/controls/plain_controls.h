// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/button.h"
#include "platform/gtk/controls/widget_control.h"
#include "platform/label.h"
#include "platform/picture_box.h"
#include "platform/status_bar.h"

namespace kivandra::gtk {

class ButtonControl : public WidgetControl, public Button {
 public:
  explicit ButtonControl(Gtk::Button& button);

  [[nodiscard]] std::string Caption() const override;
  void SetCaption(const std::string& caption) override;
  void OnClick(std::function<void()> handler) override;
  void LetGo() override;

 private:
  std::function<void()> click_;
};

/// A label's text that is kept whole while the widget shows what can be laid out in good time.
class KeptText {
 public:
  explicit KeptText(Gtk::Label& label) : text_(label.get_text()) {}

  [[nodiscard]] const std::string& Get() const { return text_; }
  void Set(Gtk::Label& label, const std::string& text);

 private:
  std::string text_;
};

class LabelControl : public WidgetControl, public Label {
 public:
  explicit LabelControl(Gtk::Label& label);

  [[nodiscard]] std::string Caption() const override;
  void SetCaption(const std::string& caption) override;

 private:
  KeptText text_;
};

/// A box whose content is the form file's.
class PictureBoxControl : public WidgetControl, public PictureBox {
 public:
  explicit PictureBoxControl(Gtk::Box& box) : WidgetControl(box) {}
};

class StatusBarControl : public WidgetControl, public StatusBar {
 public:
  explicit StatusBarControl(Gtk::Label& label);

  [[nodiscard]] std::string Text() const override;
  void SetText(const std::string& text) override;
  void SetPanelText(const std::string& key, const std::string& text) override;

 private:
  KeptText text_;
};

}  // namespace kivandra::gtk
