// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gtk/bars/bar_tool.h"

#include "platform/gtk/bars/tool_face.h"
#include "platform/gtk/captions.h"
#include "platform/gtk/controls/widget_control.h"
#include "platform/gtk/utf8_text.h"
#include "platform/platform_error.h"

namespace kivandra::gtk {
namespace {

constexpr int kBannerWidth = 887;
constexpr int kSpacerWidth = 12;

int Pixels(Twips width) { return static_cast<int>(std::clamp<Twips>(width / kTwipsPerPixel, 0, G_MAXINT16)); }

}  // namespace

ToolView::~ToolView() { LetGo(); }

void ToolView::LetGo() {
  host_ = nullptr;
  focus_.disconnect();
  rest_.disconnect();
  widget_ = nullptr;
  word_ = nullptr;
  entry_ = nullptr;
  chevron_ = nullptr;
  row_ = nullptr;
  if (hosted_ != nullptr) {
    g_object_unref(std::exchange(hosted_, nullptr));
  }
}

ToolHost& ToolView::Host() const {
  if (host_ == nullptr) {
    throw PlatformError(kObjectNotSet, "the window of the tool " + data_.name + " is gone");
  }
  return *host_;
}

void ToolView::DrawInRow(BarRow& row) {
  row_ = &row;
  switch (data_.kind) {
    case ToolKind::Button:
      widget_ = MakeButton();
      break;
    case ToolKind::Edit:
      widget_ = MakeEdit();
      break;
    case ToolKind::Separator:
      widget_ = NewLine({}, Gtk::Orientation::VERTICAL);
      break;
    case ToolKind::Spacer:
      widget_ = Gtk::make_managed<Gtk::Box>();
      widget_->set_size_request(data_.width > 0 ? Pixels(data_.width) : kSpacerWidth, -1);
      break;
    case ToolKind::Hosted:
      widget_ = Gtk::make_managed<Gtk::Box>();
      widget_->set_visible(false);  // nothing to show yet
      break;
  }
  widget_->set_sensitive(data_.enabled);
  row.Append(*widget_, BarRow::Role::Fixed);
}

Gtk::Widget* ToolView::DrawTile() {
  if (data_.kind == ToolKind::Button) {
    widget_ = MakeButton();
  } else {
    widget_ = Gtk::make_managed<Gtk::Box>();
    widget_->set_size_request(-1, data_.width > 0 ? Pixels(data_.width) : kSpacerWidth);
  }
  widget_->set_sensitive(data_.enabled);
  return widget_;
}

Gtk::Widget* ToolView::DrawMenuRow() {
  const std::string file = Host().PictureFile(data_.image);
  if (data_.kind != ToolKind::Button) {
    widget_ = NewLine(file, Gtk::Orientation::HORIZONTAL);
    return widget_;
  }
  const ToolFace face = NewRowFace(data_, file);
  word_ = face.word;
  face.button->signal_clicked().connect([this] { Activated(); });
  if (!data_.subBand.empty()) {
    MarkOpener(*face.button);
  }
  WatchPointer(*face.button);
  widget_ = face.button;
  widget_->set_sensitive(data_.enabled);
  return widget_;
}

Gtk::Widget* ToolView::MakeButton() {
  const ToolFace face = NewBarFace(data_, Host().PictureFile(data_.image));
  word_ = face.word;
  face.button->signal_clicked().connect([this] { Activated(); });
  if (data_.width > 0) {
    face.button->set_size_request(Pixels(data_.width), -1);
  }
  if (!data_.subBand.empty()) {
    MarkOpener(*face.button);
    auto keys = Gtk::EventControllerKey::create();
    keys->signal_key_pressed().connect(
        [this](unsigned keyval, unsigned, Gdk::ModifierType) {
          if (keyval != GDK_KEY_Down && keyval != GDK_KEY_KP_Down) {
            return false;
          }
          Open(false);  // no click on the tool: what is in the search box stays for the rows
          return true;
        },
        false);
    face.button->add_controller(keys);
  }
  return face.button;
}

void ToolView::WatchPointer(Gtk::Widget& widget) {
  constexpr unsigned kRestMilliseconds =
      150;  // a pointer on its way to the next drop-down crosses other rows
  auto pointer = Gtk::EventControllerMotion::create();
  pointer->signal_enter().connect([this](double, double) {
    rest_.disconnect();
    rest_ = Glib::signal_timeout().connect(
        [this] {
          if (host_ != nullptr) {
            host_->Pointed(*this);
          }
          return false;
        },
        kRestMilliseconds);
  });
  pointer->signal_leave().connect([this] { rest_.disconnect(); });
  widget.add_controller(pointer);
}

void ToolView::Activated() {
  const auto hold = shared_from_this();
  if (host_ == nullptr || !data_.enabled) {
    return;
  }
  rest_.disconnect();
  if (data_.subBand.empty()) {
    host_->Chosen(*this);
  } else {
    Open(true);
  }
}

void ToolView::Open(bool asClick) {
  if (host_ != nullptr && data_.enabled && !data_.subBand.empty()) {
    host_->OpenDropDown(*this, asClick, true);
  }
}

void ToolView::SetEnabled(bool enabled) {
  (void)Host();
  data_.enabled = enabled;
  if (widget_ != nullptr) {
    widget_->set_sensitive(enabled);
  }
}

Twips ToolView::Width() const {
  (void)Host();
  if (widget_ == nullptr) {
    return data_.width;
  }
  if (widthSet_ && role_ != BarRow::Role::Fixed) {
    return data_.width;
  }
  if (role_ == BarRow::Role::Banner) {
    return kTwipsPerPixel * kBannerWidth;
  }
  int least = 0;
  int natural = 0;
  int baseline = -1;
  widget_->measure(Gtk::Orientation::HORIZONTAL, -1, least, natural, baseline, baseline);
  return kTwipsPerPixel * (role_ == BarRow::Role::Fixed ? natural : std::max(natural, widget_->get_width()));
}

void ToolView::SetWidth(Twips width) {
  (void)Host();
  data_.width = width;
  widthSet_ = true;
  if (widget_ != nullptr && role_ == BarRow::Role::Fixed && data_.kind != ToolKind::Hosted) {
    widget_->set_size_request(width > 0 ? Pixels(width) : -1, -1);
  }
}

void ToolView::SetCompact(bool compact) {
  if (word_ == nullptr || data_.display != ToolDisplay::ImageAndText) {
    return;
  }
  word_->set_visible(!compact);
  const std::string words = data_.toolTip.empty() && compact ? WordsOfCaption(data_.caption) : data_.toolTip;
  widget_->set_tooltip_text(ShownText(words));
}

void ToolView::SetAccessKey(const std::function<bool(unsigned)>& taken) {
  if (word_ != nullptr && taken(gdk_keyval_to_lower(word_->get_mnemonic_keyval()))) {
    word_->set_text(ShownText(WordsOfCaption(data_.caption)));
  }
}

}  // namespace kivandra::gtk
