// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/gtk/forms/form_base.h"

namespace kivandra::gtk {

class MdiArea;
class TitleBar;

/// A window of the desktop.
class TopForm : public FormBase {
 public:
  TopForm(FormLoader& loader, std::string name, Glib::RefPtr<Gtk::Builder> builder, Gtk::Window& window);
  ~TopForm() override;

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

  bool MayClose(UnloadMode mode) override;
  void Dispose() override;
  [[nodiscard]] Gtk::Widget& Dress() override { return *window_; }
  [[nodiscard]] Gtk::Window& Window() const { return *window_; }
  /// The area for child windows, which makes this form the frame; null in every other.
  void SetArea(MdiArea* area);

 protected:
  void CaptionChanged(const std::string& caption) override;
  void Leave() override;
  void CloseInside() override;

 private:
  void WatchWindow();
  void WatchSurface();
  void Resized();
  void PlaceIfShown();
  /// Where the desktop lets a program do that: the X window system does, others place windows themselves.
  void Place() const;
  [[nodiscard]] std::vector<std::shared_ptr<FormBase>> Inside() const;
  [[nodiscard]] int Length(bool width) const;
  void SetLength(bool width, Twips length);

  Gtk::Window* window_;  // null once the widgets are gone
  std::unique_ptr<TitleBar> title_;
  MdiArea* area_ = nullptr;
  Twips left_ = 0;  // wishes: the desktop has the last word
  Twips top_ = 0;
  bool placed_ = false;  // the owner has said where
  int lastWidth_ = 0;
  int lastHeight_ = 0;
  sigc::connection resized_;
};

}  // namespace kivandra::gtk
