// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/gtk/forms/form_base.h"
#include "platform/gtk/mdi/mdi_area.h"

namespace kivandra::gtk {

/// A window inside the frame's area.
class ChildForm : public FormBase, public MdiChild::Owner {
 public:
  ChildForm(FormLoader& loader, std::string name, Glib::RefPtr<Gtk::Builder> builder, Gtk::Box& content,
            MdiArea& area);
  ~ChildForm() override;

  [[nodiscard]] bool MDIChild() const override { return true; }
  [[nodiscard]] bool Visible() const override;
  void SetVisible(bool visible) override;
  void ShowModal() override;
  void BringToFront() override;
  void SetFocus() override;
  [[nodiscard]] enum WindowState WindowState() const override;
  void SetWindowState(enum WindowState state) override;
  [[nodiscard]] Twips Left() const override;
  void SetLeft(Twips left) override;
  [[nodiscard]] Twips Top() const override;
  void SetTop(Twips top) override;
  [[nodiscard]] Twips Width() const override;
  void SetWidth(Twips width) override;
  [[nodiscard]] Twips Height() const override;
  void SetHeight(Twips height) override;
  [[nodiscard]] Twips ScaleWidth() const override;
  [[nodiscard]] Twips ScaleHeight() const override;

  void Dispose() override;
  [[nodiscard]] Gtk::Widget& Dress() override { return content_; }

 protected:
  void CaptionChanged(const std::string& caption) override;
  void Leave() override;

 private:
  void ChildActivated() override;
  void ChildDeactivated() override;
  void ChildResized() override;
  void ChildCloses() override;
  /// The box that the child has, or would have, in the area.
  [[nodiscard]] Gdk::Rectangle Box() const;
  template <typename Change>
  void ChangePlace(Change change);

  Gtk::Box& content_;
  MdiArea* area_;  // null once the widgets are gone
  std::unique_ptr<MdiChild> child_;
};

}  // namespace kivandra::gtk
