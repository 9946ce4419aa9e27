// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtkmm.h>

#include <functional>
#include <vector>

#include "platform/gtk/mdi/mdi_child.h"

namespace kivandra::gtk {

/// The area of the frame in which child windows overlap. The order of its children is the order in depth;
/// raising a child only reorders them, so no page is unmapped or loaded again.
///
/// Exactly one visible child is active if there is a visible one: the one in front, except that a minimised
/// child is active only while there is no other.
class MdiArea : public Gtk::Widget {
 public:
  MdiArea();
  ~MdiArea() override;

  /// Takes a hidden child in and gives it a place of its own.
  void Add(MdiChild& child);
  /// The child is hidden and forgotten; it stays in the tree of widgets until it is destroyed.
  void Remove(MdiChild& child);
  void Show(MdiChild& child, bool visible);
  void SetState(MdiChild& child, WindowState state);
  /// Places a child whose state is normal.
  void Place(MdiChild& child, const Gdk::Rectangle& place);

  [[nodiscard]] MdiChild* Active() const { return active_; }
  /// Raises the child and makes it the active one; null: none is.
  void Activate(MdiChild* child);
  /// The same, and the keyboard's focus goes into it.
  void ActivateWithFocus(MdiChild& child);
  /// The next child in the order of their making.
  void ActivateNext(bool backwards);

  void Cascade();
  /// Side by side, or one above the other if `horizontal`.
  void Tile(bool horizontal);
  void ArrangeIcons();

  /// A person moves a child (also a minimised one): its title stays in reach.
  void MoveByHand(MdiChild& child, int x, int y);
  /// A person sizes a child: `place` grows by `growX` and `growY`, at its left or top edge if the flags say
  /// so.
  void SizeByHand(MdiChild& child, const Gdk::Rectangle& place, int growX, int growY, bool atLeft,
                  bool atTop);

  /// Inner size; before the window is shown, the size that it will have.
  [[nodiscard]] int RoomWidth() const;
  [[nodiscard]] int RoomHeight() const;
  /// Called from the event loop after the area has got another size.
  void OnResized(std::function<void()> handler) { resized_ = std::move(handler); }

 private:
  Gtk::SizeRequestMode get_request_mode_vfunc() const override;
  void measure_vfunc(Gtk::Orientation orientation, int forSize, int& minimum, int& natural,
                     int& minimumBaseline, int& naturalBaseline) const override;
  void size_allocate_vfunc(int width, int height, int baseline) override;

  [[nodiscard]] bool Has(const MdiChild* child) const;
  void MakeActive(MdiChild* child);
  /// The focus stays here while there is no child to have it.
  void HoldFocus();
  /// Who follows the active child: the one in front of the others; a minimised one only if there is no other.
  [[nodiscard]] MdiChild* Following(const MdiChild* leaving) const;
  [[nodiscard]] std::vector<MdiChild*> Shown(bool minimised) const;
  [[nodiscard]] Gdk::Rectangle IconPlace(int slot) const;
  [[nodiscard]] int FreeIconSlot() const;
  [[nodiscard]] Gdk::Rectangle Visible(const MdiChild& child) const;
  void Restore(MdiChild& child);
  void LayOutUnshown() const;
  void SizeChanged();

  std::vector<MdiChild*> children_;  // in the order of their making
  MdiChild* active_ = nullptr;
  int made_ = 0;
  int lastWidth_ = 0;
  int lastHeight_ = 0;
  std::function<void()> resized_;
  sigc::connection sizeChanged_;
};

}  // namespace kivandra::gtk
