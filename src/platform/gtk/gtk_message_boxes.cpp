// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gtk/gtk_message_boxes.h"

#include <gtkmm.h>

#include <optional>

#include "platform/gtk/controls/picture.h"
#include "platform/gtk/forms/form_loader.h"
#include "platform/gtk/forms/title_bar.h"
#include "platform/gtk/guard.h"
#include "platform/gtk/utf8_text.h"

namespace kivandra::gtk {
namespace {

constexpr int kButtonsOf = 0xF;
constexpr int kPictureOf = 0xF0;
constexpr int kDefaultOf = 0xF00;
constexpr int kPictureSize = 48;
constexpr int kLineLength = 47;  // characters; longer texts wrap
constexpr int kButtonWidth = 96;
constexpr std::size_t kMostCharacters = 1000;   // laying out more would be felt
constexpr std::size_t kCharactersInFull = 500;  // more scroll, or the buttons would leave the screen
constexpr int kScrolledHeight = 280;
constexpr int kGap = 16;

const char* PictureFor(int style) {
  switch (style & kPictureOf) {
    case kMsgCritical:
      return "icons/box-stop.svg";
    case kMsgQuestion:
      return "icons/box-question.svg";
    case kMsgExclamation:
      return "icons/box-exclamation.svg";
    case kMsgInformation:
      return "icons/box-info.svg";
    default:
      return nullptr;
  }
}

/// One box: a window that holds its answer until the one who waits for it takes it.
class Box {
 public:
  Box(const std::string& text, int style, const std::string& title)
      : closing_((style & kButtonsOf) == kMsgYesNo ? MsgBoxResult::No : MsgBoxResult::Ok),
        titleBar_(Prepared(), [this] { Answer(closing_); }) {
    const std::string caption = title.empty() ? "Kivandra" : title;
    window_.set_title(ShownText(caption));
    titleBar_.SetCaption(caption);
    body_.add_css_class("kv-body");
    window_.set_child(body_);
    AddMessage(text, style);
    AddButtons(style);
    window_.signal_close_request().connect([this] { return Answer(closing_), true; }, false);
    auto keys = Gtk::EventControllerKey::create();
    keys->signal_key_pressed().connect(
        [this](unsigned keyval, unsigned, Gdk::ModifierType) {
          return keyval == GDK_KEY_Escape && (Answer(closing_), true);
        },
        false);
    window_.add_controller(keys);
  }
  Box(const Box&) = delete;
  Box& operator=(const Box&) = delete;

  MsgBoxResult Run(Gtk::Window* parent) {
    if (parent != nullptr) {
      window_.set_transient_for(*parent);
    }
    window_.set_focus(*default_);
    window_.present();
    window_.present();  // the second time for desktops that leave the focus to the window itself
    while (!answer_) {
      g_main_context_iteration(nullptr, TRUE);
    }
    return *answer_;
  }

 private:
  Gtk::Window& Prepared() {
    window_.add_css_class("kv-plain");
    if (!window_.get_display()->is_composited()) {
      window_.add_css_class("kv-opaque");
    }
    window_.set_modal(true);
    window_.set_resizable(false);
    return window_;
  }

  void AddMessage(const std::string& text, int style) {
    auto* row = Gtk::make_managed<Gtk::Box>(Gtk::Orientation::HORIZONTAL, kGap);
    if (const char* picture = PictureFor(style)) {
      gtk_box_append(row->gobj(), NewPicture(picture, kPictureSize, kPictureSize));
    }
    auto* message = Gtk::make_managed<Gtk::Label>(ShownText(text, kMostCharacters));
    message->add_css_class("kv-message");
    message->set_wrap(true);
    message->set_wrap_mode(Pango::WrapMode::WORD_CHAR);
    message->set_max_width_chars(kLineLength);
    message->set_selectable(true);
    message->set_xalign(0);
    message->set_hexpand(true);
    message->set_margin_top(8);
    message->set_margin_bottom(8);
    if (message->get_text().size() > kCharactersInFull) {
      auto* scrolled = Gtk::make_managed<Gtk::ScrolledWindow>();
      scrolled->set_policy(Gtk::PolicyType::NEVER, Gtk::PolicyType::AUTOMATIC);
      scrolled->set_min_content_height(kScrolledHeight);
      scrolled->set_child(*message);
      row->append(*scrolled);
    } else {
      row->append(*message);
    }
    body_.append(*row);
  }

  void AddButtons(int style) {
    auto* row = Gtk::make_managed<Gtk::Box>(Gtk::Orientation::HORIZONTAL, 8);
    row->set_halign(Gtk::Align::END);
    body_.append(*row);
    const bool second = (style & kDefaultOf) == kMsgDefaultButton2;
    if ((style & kButtonsOf) == kMsgYesNo) {
      AddButton(*row, "_Yes", MsgBoxResult::Yes, !second);
      AddButton(*row, "_No", MsgBoxResult::No, second);
    } else {
      AddButton(*row, "_Ok", MsgBoxResult::Ok, true);
    }
  }

  void AddButton(Gtk::Box& row, const char* caption, MsgBoxResult answer, bool isDefault) {
    auto* button = Gtk::make_managed<Gtk::Button>(caption, true);
    // Its label names it; the property would say the caption once more, with the underscore.
    gtk_accessible_reset_property(GTK_ACCESSIBLE(button->gobj()), GTK_ACCESSIBLE_PROPERTY_LABEL);
    button->add_css_class("kv-btn");
    button->set_size_request(kButtonWidth, -1);
    button->signal_clicked().connect([this, answer] { Answer(answer); });
    row.append(*button);
    if (isDefault) {
      button->add_css_class("kv-primary");
      window_.set_default_widget(*button);
      default_ = button;
    }
  }

  void Answer(MsgBoxResult answer) {
    if (!answer_) {
      answer_ = answer;
      window_.set_visible(false);
    }
  }

  Gtk::Window window_;
  Gtk::Box body_{Gtk::Orientation::VERTICAL, kGap};
  MsgBoxResult closing_;
  TitleBar titleBar_;
  Gtk::Button* default_ = nullptr;
  std::optional<MsgBoxResult> answer_;
};

}  // namespace

MsgBoxResult GtkMessageBoxes::MsgBox(const std::string& text, int style, const std::string& title) {
  MsgBoxResult answer = MsgBoxResult::Ok;
  {
    Box box(text, style, title);
    answer = box.Run(forms_.ActiveWindow());
  }
  if (Gtk::Window* next = forms_.ActiveWindow()) {
    next->present();
  }
  return answer;
}

}  // namespace kivandra::gtk
