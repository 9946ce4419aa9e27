// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gtk/forms/top_form.h"

#include "platform/gtk/controls/widget_control.h"
#include "platform/gtk/forms/child_form.h"
#include "platform/gtk/forms/form_loader.h"
#include "platform/gtk/forms/title_bar.h"
#include "platform/gtk/forms/window_place.h"
#include "platform/gtk/mdi/mdi_area.h"
#include "platform/gtk/utf8_text.h"

namespace kivandra::gtk {
namespace {

constexpr long kNotWhileMinimizedOrMaximized = 384;

/// Without a compositor transparent corners would be black.
void MarkOpaque(Gtk::Window& window) {
  if (!window.get_display()->is_composited()) {
    window.add_css_class("kv-opaque");
  }
}

}  // namespace

TopForm::TopForm(FormLoader& loader, std::string name, Glib::RefPtr<Gtk::Builder> builder,
                 Gtk::Window& window)
    : FormBase(loader, std::move(name), std::move(builder)), window_(&window) {
  MarkOpaque(window);
  if (Gtk::Widget* content = window.get_child()) {
    content->add_css_class("kv-form");
  }
  if (window.get_decorated()) {
    title_ = std::make_unique<TitleBar>(window, [this] { Close(UnloadMode::ControlMenu); });
  }
  WatchWindow();
  FormBase::SetCaption(window.get_title());
}

TopForm::~TopForm() { Dispose(); }

void TopForm::WatchWindow() {
  window_->signal_close_request().connect(
      [this] {
        Guarded([this] { Close(UnloadMode::ControlMenu); });
        return true;  // the form takes the window away itself
      },
      false);
  window_->property_is_active().signal_changed().connect([this] {
    if (window_->is_active()) {
      Loader().Activated(*this);
      Tell(&FormEvents::Form_Activate);
    } else {
      Tell(&FormEvents::Form_Deactivate);
    }
  });
  window_->property_maximized().signal_changed().connect([this] { Resized(); });
  window_->signal_realize().connect([this] { WatchSurface(); });
  if (window_->has_css_class("kv-dialog")) {
    auto keys = Gtk::EventControllerKey::create();
    keys->signal_key_pressed().connect(
        [this](unsigned keyval, unsigned, Gdk::ModifierType) {
          if (keyval != GDK_KEY_Escape) {
            return false;
          }
          Guarded([this] { Close(UnloadMode::ControlMenu); });
          return true;
        },
        false);
    window_->add_controller(keys);
  }
}

void TopForm::WatchSurface() {
  window_->get_surface()->signal_layout().connect([this](int width, int height) {
    if (width != lastWidth_ || height != lastHeight_) {
      lastWidth_ = width;
      lastHeight_ = height;
      Resized();
    }
  });
}

void TopForm::Resized() {
  if (area_ != nullptr) {
    return;  // the frame's inside is its area, which tells by itself
  }
  // The toolkit is in the middle of laying the window out; owners may change that layout.
  resized_.disconnect();
  resized_ = Glib::signal_idle().connect(
      [this] {
        Tell(&FormEvents::Form_Resize);
        return false;
      },
      Glib::PRIORITY_HIGH_IDLE);
}

void TopForm::SetArea(MdiArea* area) {
  area_ = area;
  area->OnResized([this] { Tell(&FormEvents::Form_Resize); });
}

bool TopForm::Visible() const { return Alive(), window_->get_visible(); }

void TopForm::SetVisible(bool visible) {
  Alive();
  const auto hold = shared_from_this();
  if (visible == window_->get_visible()) {
    return;
  }
  if (!visible) {
    window_->set_visible(false);
    Loader().Left(*this);
    return;
  }
  window_->present();
  if (window_->get_focus() == nullptr && window_->get_child() != nullptr) {
    window_->get_child()->child_focus(Gtk::DirectionType::TAB_FORWARD);
  }
  window_->present();  // the second time for desktops that leave the focus to the window itself
  if (placed_) {
    Place();
  }
  Loader().Shown(*this);
}

void TopForm::ShowModal() {
  Alive();
  const auto hold = shared_from_this();
  if (Gtk::Window* parent = Loader().ActiveWindow(); parent != nullptr && parent != window_) {
    window_->set_transient_for(*parent);
  }
  window_->set_modal(true);
  SetVisible(true);
  while (Loaded() && window_->get_visible()) {
    g_main_context_iteration(nullptr, TRUE);
  }
  if (window_ != nullptr) {
    window_->set_modal(false);
  }
}

void TopForm::BringToFront() {
  Alive();
  if (window_->get_visible()) {
    window_->present();
    Loader().Shown(*this);
  }
}

void TopForm::SetFocus() { BringToFront(); }

enum WindowState TopForm::WindowState() const {
  Alive();
  if (window_->is_maximized()) {
    return WindowState::Maximized;
  }
  auto* surface = window_->get_realized() ? gtk_native_get_surface(GTK_NATIVE(window_->gobj())) : nullptr;
  const bool minimised = surface != nullptr &&
                         (gdk_toplevel_get_state(GDK_TOPLEVEL(surface)) & GDK_TOPLEVEL_STATE_MINIMIZED) != 0;
  return minimised ? WindowState::Minimized : WindowState::Normal;
}

void TopForm::SetWindowState(enum WindowState state) {
  Alive();
  switch (state) {
    case WindowState::Normal:
      window_->unminimize();
      window_->unmaximize();
      break;
    case WindowState::Minimized:
      window_->minimize();
      break;
    case WindowState::Maximized:
      window_->maximize();
      break;
  }
}

Twips TopForm::Left() const { return Alive(), left_; }

void TopForm::SetLeft(Twips left) {
  Alive();
  left_ = left;
  PlaceIfShown();
}

Twips TopForm::Top() const { return Alive(), top_; }

void TopForm::SetTop(Twips top) {
  Alive();
  top_ = top;
  PlaceIfShown();
}

void TopForm::PlaceIfShown() {
  placed_ = true;
  if (window_->get_visible()) {
    Place();
  }
}

void TopForm::Place() const {
  PlaceWindow(*window_, static_cast<int>(left_ / kTwipsPerPixel), static_cast<int>(top_ / kTwipsPerPixel));
}

int TopForm::Length(bool width) const {
  Alive();
  int designedWidth = 0;
  int designedHeight = 0;
  window_->get_default_size(designedWidth, designedHeight);
  const int shown = width ? window_->get_width() : window_->get_height();
  const int designed = width ? designedWidth : designedHeight;
  if (shown > 0 || designed > 0) {
    return shown > 0 ? shown : designed;
  }
  // Never shown and no size of its own: as large as what is in it.
  int least = 0;
  int natural = 0;
  int baseline = 0;
  int naturalBaseline = 0;
  const int across = width ? -1 : Length(true);
  window_->measure(width ? Gtk::Orientation::HORIZONTAL : Gtk::Orientation::VERTICAL, across, least, natural,
                   baseline, naturalBaseline);
  return natural;
}

void TopForm::SetLength(bool width, Twips length) {
  if (WindowState() != WindowState::Normal) {
    throw PlatformError(kNotWhileMinimizedOrMaximized,
                        "a form can't be moved or sized while minimized or maximized");
  }
  int newWidth = Length(true);
  int newHeight = Length(false);
  (width ? newWidth : newHeight) = std::max(1, static_cast<int>(length / kTwipsPerPixel));
  window_->set_default_size(newWidth, newHeight);
}

Twips TopForm::Width() const { return kTwipsPerPixel * Length(true); }

void TopForm::SetWidth(Twips width) { SetLength(true, width); }

Twips TopForm::Height() const { return kTwipsPerPixel * Length(false); }

void TopForm::SetHeight(Twips height) { SetLength(false, height); }

Twips TopForm::ScaleWidth() const {
  Alive();
  if (area_ != nullptr) {
    return kTwipsPerPixel * area_->RoomWidth();
  }
  return kTwipsPerPixel * (window_->get_child() != nullptr ? window_->get_child()->get_width() : 0);
}

Twips TopForm::ScaleHeight() const {
  Alive();
  if (area_ != nullptr) {
    return kTwipsPerPixel * area_->RoomHeight();
  }
  return kTwipsPerPixel * (window_->get_child() != nullptr ? window_->get_child()->get_height() : 0);
}

std::vector<std::shared_ptr<FormBase>> TopForm::Inside() const {
  return area_ != nullptr ? Loader().Children() : std::vector<std::shared_ptr<FormBase>>{};
}

bool TopForm::MayClose(UnloadMode mode) {
  if (!FormBase::MayClose(mode)) {
    return false;
  }
  for (const auto& child : Inside()) {
    if (child->Loaded() && !child->MayClose(UnloadMode::MdiForm)) {
      return false;
    }
  }
  return true;
}

void TopForm::CloseInside() {
  for (const auto& child : Inside()) {
    child->CloseAsked();
  }
}

void TopForm::CaptionChanged(const std::string& caption) {
  window_->set_title(ShownText(caption));
  if (title_) {
    title_->SetCaption(caption);
  }
}

void TopForm::Leave() {
  window_->set_visible(false);
  Loader().Left(*this);
}

void TopForm::Dispose() {
  if (window_ == nullptr) {
    return;
  }
  resized_.disconnect();
  Gtk::Window* window = std::exchange(window_, nullptr);
  if (area_ != nullptr) {
    area_->OnResized({});
    area_ = nullptr;
  }
  gtk_window_destroy(window->gobj());
  DropBuilder();
}

}  // namespace kivandra::gtk
