// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gtk/bars/bar_view.h"
#include "platform/gtk/controls/picture.h"
#include "platform/gtk/guard.h"
#include "platform/gtk/utf8_text.h"

namespace kivandra::gtk {
namespace {

constexpr int kPictureAbove = 32;
constexpr int kPictureBeside = 24;

/// "&Back" as the toolkit writes it: "_Back".
Glib::ustring Mnemonic(const std::string& caption) {
  std::string marked;
  for (const char letter : caption) {
    marked += letter == '_' ? "__" : letter == '&' ? "_" : std::string(1, letter);
  }
  return ValidText(marked);
}

std::string Plain(const std::string& caption) {
  std::string plain = caption;
  std::erase(plain, '&');
  return plain;
}

/// What a picture without words is called: the words of its file's name, "061-go.svg" is "Go".
std::string WordsOf(const std::string& file) {
  std::string words = file.substr(file.find_last_of('/') + 1);
  words = words.substr(words.find('-') + 1);
  words = words.substr(0, words.find('.'));
  bool begins = true;
  for (char& letter : words) {
    letter = letter == '-' ? ' ' : begins ? g_ascii_toupper(letter) : letter;
    begins = letter == ' ';
  }
  return words;
}

void SetAccessibleName(Gtk::Widget& widget, const std::string& name) {
  gtk_accessible_update_property(GTK_ACCESSIBLE(widget.gobj()), GTK_ACCESSIBLE_PROPERTY_LABEL,
                                 ValidText(name).c_str(), -1);
}

void TakeOut(GtkWidget* widget) {
  GtkWidget* parent = gtk_widget_get_parent(widget);
  if (parent != nullptr && GTK_IS_BOX(parent)) {
    gtk_box_remove(GTK_BOX(parent), widget);
  } else if (parent != nullptr) {
    gtk_widget_unparent(widget);
  }
}

}  // namespace

void ToolView::Draw(BarRow& row) {
  row_ = &row;
  switch (data_.kind) {
    case ToolKind::Button:
      widget_ = MakeButton();
      break;
    case ToolKind::Edit:
      widget_ = MakeEdit();
      break;
    case ToolKind::Separator:
      widget_ = Gtk::make_managed<Gtk::Separator>(Gtk::Orientation::VERTICAL);
      break;
    case ToolKind::Spacer:
    case ToolKind::Hosted:
      widget_ = Gtk::make_managed<Gtk::Box>();
      break;
  }
  widget_->set_sensitive(data_.enabled);
  row.Append(*widget_, BarRow::Role::Fixed);
  if (data_.kind == ToolKind::Hosted) {
    widget_->set_visible(false);  // nothing to show yet
  }
}

Gtk::Widget* ToolView::DrawTile() {
  if (data_.kind != ToolKind::Button) {
    return nullptr;
  }
  widget_ = MakeButton();
  return widget_;
}

Gtk::Widget* ToolView::MakeButton() {
  auto* button = Gtk::make_managed<Gtk::Button>();
  button->add_css_class("kv-tool");
  button->set_focus_on_click(false);
  button->signal_clicked().connect([this] { bars_.Clicked(*this); });
  const std::string file = bars_.PictureFile(data_.image);
  const bool above = data_.display == ToolDisplay::ImageAboveText;
  auto* content =
      Gtk::make_managed<Gtk::Box>(above ? Gtk::Orientation::VERTICAL : Gtk::Orientation::HORIZONTAL);
  content->set_halign(Gtk::Align::CENTER);
  button->set_child(*content);

  if (data_.display != ToolDisplay::Text && !file.empty()) {
    int width = above ? kPictureAbove : kPictureBeside;
    int height = width;
    int drawnWidth = 0;
    int drawnHeight = 0;
    gdk_pixbuf_get_file_info(file.c_str(), &drawnWidth, &drawnHeight);
    if (data_.display == ToolDisplay::Image && drawnWidth > drawnHeight) {
      button->add_css_class("kv-flat-picture");  // a picture that carries its own words and face
      width = drawnWidth;
      height = drawnHeight;
    }
    gtk_box_append(content->gobj(), NewPicture(file, width, height));
  }
  if (data_.display != ToolDisplay::Image) {
    word_ = Gtk::make_managed<Gtk::Label>();
    word_->set_text_with_mnemonic(Mnemonic(data_.caption));
    word_->set_mnemonic_widget(*button);
    content->append(*word_);
    button->add_css_class(above ? "kv-above" : "kv-beside");
  } else {
    SetAccessibleName(*button, data_.toolTip.empty() ? WordsOf(file) : data_.toolTip);
  }
  if (above && !data_.enabled) {
    button->add_css_class("kv-invite");  // what is rarely enabled says so when it is
  }
  if (!data_.toolTip.empty()) {
    button->set_tooltip_text(ValidText(data_.toolTip));
  }
  return button;
}

Gtk::Widget* ToolView::MakeEdit() {
  auto* box = Gtk::make_managed<Gtk::Box>();
  box->add_css_class("kv-joined");
  entry_ = Gtk::make_managed<Gtk::Entry>();
  entry_->set_placeholder_text(ValidText(data_.caption));
  entry_->set_width_chars(1);
  entry_->set_max_width_chars(1);
  entry_->set_hexpand(true);
  SetAccessibleName(*entry_, data_.caption);
  auto focus = Gtk::EventControllerFocus::create();
  focus->signal_enter().connect([this] { bars_.Entered(*this); });
  entry_->add_controller(focus);
  box->append(*entry_);
  if (!data_.subBand.empty()) {
    auto* open = Gtk::make_managed<Gtk::Button>();
    open->set_icon_name("chevron-down-symbolic");
    open->set_focus_on_click(false);
    SetAccessibleName(*open, data_.caption + " choices");
    box->append(*open);
  }
  if (data_.width > 0) {
    box->set_size_request(static_cast<int>(data_.width / kTwipsPerPixel), -1);
  }
  if (!data_.toolTip.empty()) {
    box->set_tooltip_text(ValidText(data_.toolTip));
  }
  return box;
}

void ToolView::SetEnabled(bool enabled) {
  data_.enabled = enabled;
  if (widget_ != nullptr) {
    widget_->set_sensitive(enabled);
  }
}

Twips ToolView::Width() const {
  if (data_.width >= 0 || widget_ == nullptr) {
    return data_.width;
  }
  int least = 0;
  int natural = 0;
  int baseline = -1;
  widget_->measure(Gtk::Orientation::HORIZONTAL, -1, least, natural, baseline, baseline);
  return kTwipsPerPixel * natural;
}

std::string ToolView::Text() const { return entry_ != nullptr ? entry_->get_text().raw() : std::string(); }

void ToolView::SetText(const std::string& text) {
  if (entry_ != nullptr) {
    entry_->set_text(ValidText(text));
  }
}

void ToolView::Release() {
  if (hosted_ != nullptr) {
    TakeOut(hosted_);
    gtk_box_append(bars_.Parking().gobj(), hosted_);
    g_object_unref(std::exchange(hosted_, nullptr));
    widget_->set_visible(false);
  }
}

void ToolView::SetCustom(Control* control) {
  if (data_.kind != ToolKind::Hosted || widget_ == nullptr) {
    throw PlatformError(kInvalidCall, "the tool " + data_.name + " can't hold a control");
  }
  Release();
  if (control == nullptr) {
    return;
  }
  auto* wrapper = dynamic_cast<WidgetControl*>(control);
  if (wrapper == nullptr) {
    throw PlatformError(kInvalidCall, "the control for the tool " + data_.name + " has no widget");
  }
  Gtk::Widget& widget = wrapper->Widget();
  hosted_ = GTK_WIDGET(g_object_ref(widget.gobj()));
  TakeOut(hosted_);
  gtk_box_append(GTK_BOX(widget_->gobj()), hosted_);
  widget.set_hexpand(true);
  widget.set_visible(true);
  widget_->set_visible(true);
  const auto role = widget.has_css_class("kv-banner")   ? BarRow::Role::Banner
                    : widget.has_css_class("kv-spacer") ? BarRow::Role::Filler
                    : GTK_IS_COMBO_BOX(hosted_)         ? BarRow::Role::Stretch
                                                        : BarRow::Role::Fixed;
  row_->SetRole(*widget_, role);
}

void ToolView::SetCompact(bool compact) {
  if (word_ == nullptr || data_.display != ToolDisplay::ImageAndText) {
    return;
  }
  word_->set_visible(!compact);
  const std::string words = data_.toolTip.empty() && compact ? Plain(data_.caption) : data_.toolTip;
  widget_->set_tooltip_text(ValidText(words));
}

}  // namespace kivandra::gtk
