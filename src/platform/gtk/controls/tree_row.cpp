// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gtk/controls/tree_row.h"

#include <map>

#include "platform/gtk/guard.h"
#include "platform/gtk/utf8_text.h"

namespace kivandra::gtk {
namespace {

constexpr int kIndent = 22;      // pixels a level
constexpr int kArrowWidth = 24;  // to be hit by a child's hand
constexpr int kPictureSize = 20;
constexpr int kLeastText = 12;  // characters that a deep row keeps

Gtk::Image* Part(Gtk::Box& row, int size) {
  auto* image = Gtk::make_managed<Gtk::Image>();
  g_object_set(image->gobj(), "accessible-role", GTK_ACCESSIBLE_ROLE_PRESENTATION, nullptr);
  image->set_size_request(size, -1);
  row.append(*image);
  return image;
}

}  // namespace

const char* TreeIcon(const std::string& image) {
  static const std::map<std::string, const char*> kIcons{
      {"Leaf", "fav-leaf"},       {"ClosedBook", "fav-closed-book"},     {"OpenBook", "fav-open-book"},
      {"Library", "fav-library"}, {"ClosedFolder", "fav-closed-folder"}, {"OpenFolder", "fav-open-folder"},
  };
  const auto found = kIcons.find(image);
  return found == kIcons.end() ? nullptr : found->second;
}

TreeRow::TreeRow() : arrow_(Part(*this, kArrowWidth)), picture_(Part(*this, kPictureSize)) {
  add_css_class("kv-tree-row");
  arrow_->add_css_class("kv-arrow");
  picture_->set_pixel_size(kPictureSize);
  text_ = Gtk::make_managed<Gtk::Label>();
  text_->set_xalign(0);
  text_->set_hexpand(true);
  text_->set_single_line_mode(true);
  text_->set_ellipsize(Pango::EllipsizeMode::END);
  text_->set_width_chars(kLeastText);
  append(*text_);
  WatchMouse();
}

void TreeRow::WatchMouse() {
  auto onArrow = Gtk::GestureClick::create();
  onArrow->set_button(GDK_BUTTON_PRIMARY);
  onArrow->signal_pressed().connect([this, gesture = onArrow.get()](int, double, double) {
    if (arrow_->get_icon_name().empty()) {
      return;  // the place of an arrow belongs to the row
    }
    gesture->set_state(Gtk::EventSequenceState::CLAIMED);
    Raise(arrowClicked, *this);
  });
  arrow_->add_controller(onArrow);
  auto onRow = Gtk::GestureClick::create();
  onRow->set_button(GDK_BUTTON_PRIMARY);
  onRow->signal_released().connect([this](int times, double, double) {
    if (node_ != 0) {
      Raise(clicked, *this, times);
    }
  });
  add_controller(onRow);
}

void TreeRow::Show(int number, const TreeNodes& nodes) {
  node_ = number;
  const TreeNodes::Node& node = nodes.Of(number);
  arrow_->set_margin_start((node.level - 1) * kIndent);
  if (node.children.empty()) {
    arrow_->clear();
  } else {
    arrow_->set_from_icon_name(node.expanded ? "pan-down-symbolic" : "pan-end-symbolic");
  }
  if (const char* icon = TreeIcon(nodes.ImageNow(number))) {
    picture_->set_from_icon_name(icon);
  } else {
    picture_->clear();
  }
  const Glib::ustring text = ShownText(node.text);
  text_->set_text(text);
  Tell(node, text);
}

/// What assistive tools say of the row: the toolkit's own widget around it is what has the keyboard.
void TreeRow::Tell(const TreeNodes::Node& node, const Glib::ustring& text) {
  GtkWidget* around = gtk_widget_get_parent(GTK_WIDGET(gobj()));
  if (around == nullptr) {
    return;
  }
  auto* accessible = GTK_ACCESSIBLE(around);
  if (gtk_accessible_get_accessible_role(accessible) != GTK_ACCESSIBLE_ROLE_TREE_ITEM) {
    g_object_set(around, "accessible-role", GTK_ACCESSIBLE_ROLE_TREE_ITEM, nullptr);
  }
  gtk_accessible_update_property(accessible, GTK_ACCESSIBLE_PROPERTY_LABEL, text.c_str(),
                                 GTK_ACCESSIBLE_PROPERTY_LEVEL, node.level, -1);
  if (node.children.empty()) {
    gtk_accessible_reset_state(accessible, GTK_ACCESSIBLE_STATE_EXPANDED);
  } else {
    gtk_accessible_update_state(accessible, GTK_ACCESSIBLE_STATE_EXPANDED, node.expanded ? TRUE : FALSE, -1);
  }
}

}  // namespace kivandra::gtk
