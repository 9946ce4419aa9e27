// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gtk/forms/child_form.h"

#include "platform/gtk/controls/widget_control.h"
#include "platform/gtk/forms/form_loader.h"

namespace kivandra::gtk {
namespace {

constexpr long kNotWhileMinimizedOrMaximized = 384;

int Pixels(Twips length) { return static_cast<int>(length / kTwipsPerPixel); }

}  // namespace

ChildForm::ChildForm(FormLoader& loader, std::string name, Glib::RefPtr<Gtk::Builder> builder,
                     Gtk::Box& content, MdiArea& area)
    : FormBase(loader, std::move(name), std::move(builder)),
      content_(content),
      area_(&area),
      child_(std::make_unique<MdiChild>(area, *this, content)) {
  area.Add(*child_);
}

ChildForm::~ChildForm() = default;

bool ChildForm::Visible() const { return Alive(), child_->get_visible(); }

void ChildForm::SetVisible(bool visible) {
  Alive();
  const auto hold = shared_from_this();
  area_->Show(*child_, visible);
}

void ChildForm::ShowModal() { throw PlatformError(kInvalidCall, "a child window can't be shown modal"); }

void ChildForm::BringToFront() {
  Alive();
  const auto hold = shared_from_this();
  if (child_->get_visible()) {
    area_->ActivateWithFocus(*child_);
  }
}

void ChildForm::SetFocus() { BringToFront(); }

enum WindowState ChildForm::WindowState() const { return Alive(), child_->State(); }

void ChildForm::SetWindowState(enum WindowState state) {
  Alive();
  const auto hold = shared_from_this();
  area_->SetState(*child_, state);
}

Gdk::Rectangle ChildForm::Box() const {
  Alive();
  if (child_->State() == WindowState::Maximized) {
    return {0, 0, area_->RoomWidth(), area_->RoomHeight()};
  }
  return child_->Place();
}

template <typename Change>
void ChildForm::ChangePlace(Change change) {
  Alive();
  if (child_->State() != WindowState::Normal) {
    throw PlatformError(kNotWhileMinimizedOrMaximized,
                        "a form can't be moved or sized while minimized or maximized");
  }
  const auto hold = shared_from_this();
  Gdk::Rectangle place = child_->Place();
  change(place);
  area_->Place(*child_, place);
}

Twips ChildForm::Left() const { return kTwipsPerPixel * Box().get_x(); }

void ChildForm::SetLeft(Twips left) {
  ChangePlace([&](Gdk::Rectangle& place) { place.set_x(Pixels(left)); });
}

Twips ChildForm::Top() const { return kTwipsPerPixel * Box().get_y(); }

void ChildForm::SetTop(Twips top) {
  ChangePlace([&](Gdk::Rectangle& place) { place.set_y(Pixels(top)); });
}

Twips ChildForm::Width() const { return kTwipsPerPixel * Box().get_width(); }

void ChildForm::SetWidth(Twips width) {
  ChangePlace([&](Gdk::Rectangle& place) { place.set_width(std::max(1, Pixels(width))); });
}

Twips ChildForm::Height() const { return kTwipsPerPixel * Box().get_height(); }

void ChildForm::SetHeight(Twips height) {
  ChangePlace([&](Gdk::Rectangle& place) { place.set_height(std::max(1, Pixels(height))); });
}

Twips ChildForm::ScaleWidth() const { return Alive(), kTwipsPerPixel * content_.get_width(); }

Twips ChildForm::ScaleHeight() const { return Alive(), kTwipsPerPixel * content_.get_height(); }

void ChildForm::CaptionChanged(const std::string& caption) { child_->SetCaption(caption); }

void ChildForm::Leave() { area_->Remove(*child_); }

void ChildForm::Dispose() {
  if (child_) {
    child_->unparent();
    child_.reset();
    area_ = nullptr;
    DropBuilder();
  }
}

void ChildForm::ChildActivated() { Tell(&FormEvents::Form_Activate); }

void ChildForm::ChildDeactivated() { Tell(&FormEvents::Form_Deactivate); }

void ChildForm::ChildResized() { Tell(&FormEvents::Form_Resize); }

void ChildForm::ChildCloses() { Close(UnloadMode::ControlMenu); }

}  // namespace kivandra::gtk
