// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gtk/controls/page_view_control.h"

#include "platform/gtk/controls/picture.h"

namespace kivandra::gtk {
namespace {

bool IsWebAddress(const std::string& address) {
  return g_ascii_strncasecmp(address.c_str(), "http://", 7) == 0 ||
         g_ascii_strncasecmp(address.c_str(), "https://", 8) == 0;
}

bool EndsWith(const std::string& path, const std::string& ending) {
  return path.size() >= ending.size() &&
         g_ascii_strcasecmp(path.c_str() + (path.size() - ending.size()), ending.c_str()) == 0;
}

/// Whether the file is a page, such as the program's help, and not a picture.
bool IsPageFile(const std::string& path) { return EndsWith(path, ".htm") || EndsWith(path, ".html"); }

}  // namespace

PageViewControl::PageViewControl(Gtk::Box& place, EngineFactory& engine)
    : WidgetControl(place), engine_(engine) {}

Gtk::Box& PageViewControl::Place() { return dynamic_cast<Gtk::Box&>(Widget()); }

void PageViewControl::Navigate(const std::string& address) {
  Alive();
  if (IsWebAddress(address) || IsPageFile(address)) {
    ShowPage(address);
  } else {
    ShowFile(address);
  }
}

void PageViewControl::Stop() {
  Alive();
  if (picture_ != nullptr) {
    StopPicture(picture_);
  }
  if (page_) {
    page_->Stop();
  }
}

void PageViewControl::ShowFile(const std::string& path) {
  if (picture_ == nullptr) {
    picture_ = NewPicture(path);
    gtk_widget_set_hexpand(picture_, TRUE);
    gtk_widget_set_vexpand(picture_, TRUE);
    gtk_box_append(Place().gobj(), picture_);
  } else {
    ShowPicture(picture_, path);
  }
  gtk_widget_set_visible(picture_, TRUE);
  if (page_) {
    page_->Stop();
    pagePlace_->set_visible(false);
  }
}

void PageViewControl::ShowPage(const std::string& address) {
  if (!page_) {
    pagePlace_ = Gtk::make_managed<Gtk::Box>();
    pagePlace_->set_expand(true);
    Place().append(*pagePlace_);
    page_ = engine_.MakePageView(*pagePlace_);
  }
  if (picture_ != nullptr) {
    StopPicture(picture_);
    gtk_widget_set_visible(picture_, FALSE);
  }
  pagePlace_->set_visible(true);
  page_->Navigate(address);
}

}  // namespace kivandra::gtk
