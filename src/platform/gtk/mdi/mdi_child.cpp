// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gtk/mdi/mdi_child.h"

#include <algorithm>
#include <cmath>

#include "platform/gtk/forms/title_bar.h"
#include "platform/gtk/guard.h"
#include "platform/gtk/mdi/mdi_area.h"
#include "platform/gtk/utf8_text.h"

namespace kivandra::gtk {
namespace {

constexpr int kCorner = 16;        // length of a corner's handle along each edge
constexpr double kDragBegins = 4;  // pixels that the pointer may tremble in a click

const char* CursorFor(int x, int y) {
  if (x == 0 && y == 0) {
    return "default";
  }
  if (x == 0) {
    return "ns-resize";
  }
  if (y == 0) {
    return "ew-resize";
  }
  return x == y ? "nwse-resize" : "nesw-resize";
}

}  // namespace

MdiChild::MdiChild(MdiArea& area, Owner& owner, Gtk::Widget& content)
    : area_(area), owner_(owner), content_(content) {
  g_object_set(gobj(), "accessible-role", GTK_ACCESSIBLE_ROLE_GROUP, nullptr);
  g_weak_ref_init(&lastFocus_, nullptr);
  shell_.add_css_class("kv-child");
  shell_.set_parent(*this);
  BuildTitle();
  shell_.append(title_);
  content_.set_vexpand(true);
  shell_.append(content_);
  WatchTitle();
  WatchEdges();

  auto press = Gtk::GestureClick::create();
  press->set_button(0);
  press->set_propagation_phase(Gtk::PropagationPhase::CAPTURE);
  press->signal_pressed().connect([this](int, double, double) { Guarded([this] { area_.Activate(this); }); });
  add_controller(press);
}

MdiChild::~MdiChild() {
  g_weak_ref_clear(&lastFocus_);
  shell_.remove(content_);
  shell_.unparent();
}

void MdiChild::BuildTitle() {
  title_.add_css_class("kv-child-title");
  caption_.add_css_class("kv-child-caption");
  caption_.set_ellipsize(Pango::EllipsizeMode::END);
  caption_.set_xalign(0);
  caption_.set_hexpand(true);
  title_.append(caption_);

  minimise_ = NewWindowButton("win-minimise-symbolic", "Minimise page window");
  minimise_->signal_clicked().connect([this] {
    Guarded([this] {
      area_.SetState(*this, state_ == WindowState::Minimized ? beforeIcon_ : WindowState::Minimized);
    });
  });
  maximise_ = NewWindowButton("win-maximise-symbolic", "Maximise page window");
  maximise_->signal_clicked().connect([this] { Guarded([this] { ToggleMaximised(); }); });
  auto* close = NewWindowButton("win-close-symbolic", "Close page window");
  close->add_css_class("kv-close");
  close->signal_clicked().connect([this] { Guarded([this] { owner_.ChildCloses(); }); });
  for (Gtk::Button* button : {minimise_, maximise_, close}) {
    title_.append(*button);
  }
}

void MdiChild::SetCaption(const std::string& caption) {
  const Glib::ustring shown = ShownText(caption);
  caption_.set_text(shown);
  caption_.set_tooltip_text(shown);
  gtk_accessible_update_property(GTK_ACCESSIBLE(gobj()), GTK_ACCESSIBLE_PROPERTY_LABEL, shown.c_str(), -1);
}

void MdiChild::Dress(bool active) {
  if (active) {
    shell_.add_css_class("kv-active");
  } else {
    shell_.remove_css_class("kv-active");
  }
}

void MdiChild::ShowState(WindowState state) {
  if (state == WindowState::Minimized && state_ != WindowState::Minimized) {
    beforeIcon_ = state_;
  }
  state_ = state;
  const bool maximised = state == WindowState::Maximized;
  const bool minimised = state == WindowState::Minimized;
  if (maximised) {
    shell_.add_css_class("kv-maximised");
  } else {
    shell_.remove_css_class("kv-maximised");
  }
  content_.set_visible(!minimised);
  DressWindowButton(*minimise_, minimised ? "win-restore-symbolic" : "win-minimise-symbolic",
                    minimised ? "Restore page window" : "Minimise page window");
  DressWindowButton(*maximise_, maximised ? "win-restore-symbolic" : "win-maximise-symbolic",
                    maximised ? "Restore page window" : "Maximise page window");
}

void MdiChild::ToggleMaximised() {
  area_.SetState(*this, state_ == WindowState::Normal ? WindowState::Maximized : WindowState::Normal);
}

bool MdiChild::HasFocusInside() const {
  const auto* root = gtk_widget_get_root(const_cast<GtkWidget*>(gobj()));
  GtkWidget* focus = root != nullptr ? gtk_root_get_focus(const_cast<GtkRoot*>(root)) : nullptr;
  return focus != nullptr && gtk_widget_is_ancestor(focus, const_cast<GtkWidget*>(gobj()));
}

void MdiChild::KeepFocus() {
  if (HasFocusInside()) {
    g_weak_ref_set(&lastFocus_, gtk_root_get_focus(gtk_widget_get_root(gobj())));
  }
}

void MdiChild::GiveFocus() {
  if (HasFocusInside()) {
    return;
  }
  auto* last = static_cast<GtkWidget*>(g_weak_ref_get(&lastFocus_));
  const bool given = last != nullptr && gtk_widget_is_ancestor(last, gobj()) &&
                     (GTK_IS_TEXT(last) ? gtk_text_grab_focus_without_selecting(GTK_TEXT(last))
                                        : gtk_widget_grab_focus(last));
  if (last != nullptr) {
    g_object_unref(last);
  }
  if (!given) {
    gtk_widget_child_focus(content_.gobj(), GTK_DIR_TAB_FORWARD);
  }
}

Gdk::Rectangle MdiChild::Smallest() const {
  int width = 0;
  int height = 0;
  int ignored = 0;
  int baseline = -1;
  shell_.measure(Gtk::Orientation::HORIZONTAL, -1, width, ignored, baseline, baseline);
  shell_.measure(Gtk::Orientation::VERTICAL, -1, height, ignored, baseline, baseline);
  return {0, 0, width, height};
}

Gtk::SizeRequestMode MdiChild::get_request_mode_vfunc() const { return Gtk::SizeRequestMode::CONSTANT_SIZE; }

void MdiChild::measure_vfunc(Gtk::Orientation orientation, int forSize, int& minimum, int& natural,
                             int& minimumBaseline, int& naturalBaseline) const {
  shell_.measure(orientation, forSize < 0 ? -1 : std::max(0, forSize - 2 * Rim()), minimum, natural,
                 minimumBaseline, naturalBaseline);
  minimum += 2 * Rim();
  natural += 2 * Rim();
  minimumBaseline = -1;
  naturalBaseline = -1;
}

void MdiChild::size_allocate_vfunc(int width, int height, int) {
  shell_.size_allocate(Gtk::Allocation(Rim(), Rim(), width - 2 * Rim(), height - 2 * Rim()), -1);
}

void MdiChild::WatchTitle() {
  auto twice = Gtk::GestureClick::create();
  twice->signal_pressed().connect([this](int times, double, double) {
    if (times == 2) {
      Guarded([this] { ToggleMaximised(); });
    }
  });
  title_.add_controller(twice);

  // A gesture's offsets count from the widget that it moves, so every point is taken in the area's
  // coordinates.
  auto drag = Gtk::GestureDrag::create();
  Gtk::GestureDrag* gesture = drag.get();
  drag->signal_drag_begin().connect([this](double x, double y) {
    title_.translate_coordinates(area_, x, y, grabX_, grabY_);
    grabbed_ = state_ == WindowState::Minimized ? icon_ : place_;
  });
  drag->signal_drag_update().connect([this, gesture](double offsetX, double offsetY) {
    double startX = 0;
    double startY = 0;
    double x = 0;
    double y = 0;
    gesture->get_start_point(startX, startY);
    title_.translate_coordinates(area_, startX + offsetX, startY + offsetY, x, y);
    const double dx = x - grabX_;
    const double dy = y - grabY_;
    const Gdk::Rectangle& now = state_ == WindowState::Minimized ? icon_ : place_;
    const bool moving = now.get_x() != grabbed_.get_x() || now.get_y() != grabbed_.get_y();
    if (state_ == WindowState::Maximized || (!moving && std::hypot(dx, dy) < kDragBegins)) {
      return;
    }
    gesture->set_state(Gtk::EventSequenceState::CLAIMED);
    Guarded([&] {
      area_.MoveByHand(*this, grabbed_.get_x() + static_cast<int>(std::lround(dx)),
                       grabbed_.get_y() + static_cast<int>(std::lround(dy)));
    });
  });
  title_.add_controller(drag);
}

MdiChild::Edges MdiChild::EdgesAt(double x, double y) const {
  Edges edges;
  const double width = get_width();
  const double height = get_height();
  const bool onRim = x < kHandle || y < kHandle || x >= width - kHandle || y >= height - kHandle;
  if (state_ != WindowState::Normal || !onRim) {
    return edges;
  }
  const auto side = [](double at, double length, bool alongRim) {
    const int reach = alongRim ? kCorner : kHandle;
    return at < reach ? -1 : at >= length - reach ? 1 : 0;
  };
  edges.x = side(x, width, y < kHandle || y >= height - kHandle);
  edges.y = side(y, height, x < kHandle || x >= width - kHandle);
  return edges;
}

void MdiChild::WatchEdges() {
  auto motion = Gtk::EventControllerMotion::create();
  motion->set_propagation_phase(Gtk::PropagationPhase::CAPTURE);
  motion->signal_motion().connect([this](double x, double y) {
    const Edges edges = EdgesAt(x, y);
    set_cursor(edges.x == 0 && edges.y == 0 ? "" : CursorFor(edges.x, edges.y));
  });
  motion->signal_leave().connect([this] { set_cursor(""); });
  add_controller(motion);

  auto drag = Gtk::GestureDrag::create();
  Gtk::GestureDrag* gesture = drag.get();
  drag->set_propagation_phase(Gtk::PropagationPhase::CAPTURE);
  drag->signal_drag_begin().connect([this, gesture](double x, double y) {
    grabEdges_ = EdgesAt(x, y);
    if (grabEdges_.x == 0 && grabEdges_.y == 0) {
      gesture->set_state(Gtk::EventSequenceState::DENIED);
      return;
    }
    gesture->set_state(Gtk::EventSequenceState::CLAIMED);
    Guarded([this] { area_.Activate(this); });
    translate_coordinates(area_, x, y, grabX_, grabY_);
    grabbed_ = place_;
  });
  drag->signal_drag_update().connect([this, gesture](double offsetX, double offsetY) {
    if (grabEdges_.x == 0 && grabEdges_.y == 0) {
      return;  // a denied gesture still reports
    }
    double startX = 0;
    double startY = 0;
    double x = 0;
    double y = 0;
    gesture->get_start_point(startX, startY);
    translate_coordinates(area_, startX + offsetX, startY + offsetY, x, y);
    Guarded([&] {
      area_.SizeByHand(*this, grabbed_, grabEdges_.x * static_cast<int>(std::lround(x - grabX_)),
                       grabEdges_.y * static_cast<int>(std::lround(y - grabY_)), grabEdges_.x < 0,
                       grabEdges_.y < 0);
    });
  });
  drag->signal_drag_end().connect([this](double, double) { grabEdges_ = {}; });
  add_controller(drag);
}

}  // namespace kivandra::gtk
