// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtkmm.h>

#include <string>

#include "platform/form.h"

namespace kivandra::gtk {

class MdiArea;

/// A child window inside the area: a title over its content, with handles of 6 pixels outside the visible
/// line. It tells its owner what happens to it; every telling may unload it.
class MdiChild : public Gtk::Widget {
 public:
  class Owner {
   public:
    virtual ~Owner() = default;
    virtual void ChildActivated() = 0;
    virtual void ChildDeactivated() = 0;
    virtual void ChildResized() = 0;
    /// The close box or the keyboard's close command.
    virtual void ChildCloses() = 0;
  };

  static constexpr int kHandle = 6;
  static constexpr int kIconWidth = 200;

  MdiChild(MdiArea& area, Owner& owner, Gtk::Widget& content);
  ~MdiChild() override;

  void SetCaption(const std::string& caption);
  [[nodiscard]] Owner& GetOwner() const { return owner_; }
  [[nodiscard]] WindowState State() const { return state_; }
  /// The visible box in the area while the state is normal.
  [[nodiscard]] const Gdk::Rectangle& Place() const { return place_; }
  /// Smallest width and height of the visible box.
  [[nodiscard]] Gdk::Rectangle Smallest() const;

 private:
  friend class MdiArea;

  // For the area, which keeps places, states and the active child in step.
  void Dress(bool active);
  void ShowState(WindowState state);
  void KeepFocus();
  void GiveFocus();
  [[nodiscard]] bool HasFocusInside() const;

  Gtk::SizeRequestMode get_request_mode_vfunc() const override;
  void measure_vfunc(Gtk::Orientation orientation, int forSize, int& minimum, int& natural,
                     int& minimumBaseline, int& naturalBaseline) const override;
  void size_allocate_vfunc(int width, int height, int baseline) override;

  void BuildTitle();
  void WatchTitle();
  void WatchEdges();
  [[nodiscard]] int Rim() const { return state_ == WindowState::Maximized ? 0 : kHandle; }
  /// Which edges a point on the rim takes hold of: -1 left or top, 1 right or bottom, 0 neither.
  struct Edges {
    int x = 0;
    int y = 0;
  };
  [[nodiscard]] Edges EdgesAt(double x, double y) const;
  void ToggleMaximised();

  MdiArea& area_;
  Owner& owner_;
  Gtk::Widget& content_;
  Gtk::Box shell_{Gtk::Orientation::VERTICAL};
  Gtk::Box title_;
  Gtk::Label caption_;
  Gtk::Button* minimise_ = nullptr;
  Gtk::Button* maximise_ = nullptr;
  WindowState state_ = WindowState::Normal;
  WindowState beforeIcon_ = WindowState::Normal;
  Gdk::Rectangle place_;
  Gdk::Rectangle icon_;     // place of the title while minimised
  int iconSlot_ = -1;       // along the foot of the area; -1 once it was moved by hand
  Gdk::Rectangle grabbed_;  // place when a drag began
  double grabX_ = 0;
  double grabY_ = 0;
  Edges grabEdges_;
  GWeakRef lastFocus_;
};

}  // namespace kivandra::gtk
