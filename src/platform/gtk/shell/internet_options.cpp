// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gtk/shell/internet_options.h"

#include <utility>

#include "platform/gtk/guard.h"

namespace kivandra::gtk {
namespace {

constexpr int kWidth = 560;
constexpr int kHeight = 480;
constexpr int kButtonWidth = 96;
constexpr int kAdvanced = 6;  // the number of the page as the commands count
constexpr int kLine = 60;     // characters

constexpr const char* kContent =
    "What a child sees here is guarded by the filter of Kivandra, not by this window.\n\n"
    "A parent finds all of it behind the password: choose \"Parental Options Menu\" in the menu \"Tools\". "
    "There the filter is switched on and off, words and addresses are forbidden or allowed, and the pages "
    "that were visited are listed by day.\n\n"
    "A page that was kept away can be opened with the tool \"Lock\" and the same password.";

void Name(Gtk::Widget& widget, const std::string& name) {
  gtk_accessible_update_property(GTK_ACCESSIBLE(widget.gobj()), GTK_ACCESSIBLE_PROPERTY_LABEL, name.c_str(),
                                 -1);
}

}  // namespace

InternetOptions::InternetOptions(Gtk::Window* parent, int page, PictureChoice pictures,
                                 std::function<void()> onClosed)
    : titleBar_(window_, [this] { Close(); }),
      pictures_(std::move(pictures)),
      shown_(!pictures_.shown || pictures_.shown()),
      onClosed_(std::move(onClosed)) {
  window_.add_css_class("kv-plain");
  if (!window_.get_display()->is_composited()) {
    window_.add_css_class("kv-opaque");
  }
  window_.set_title("Internet Options");
  titleBar_.SetCaption("Internet Options");
  window_.set_default_size(kWidth, kHeight);
  if (parent != nullptr) {
    window_.set_transient_for(*parent);
  }
  body_.add_css_class("kv-body");
  window_.set_child(body_);
  AddContent();
  AddAdvanced();
  pages_.set_vexpand(true);
  // The tabs answer to the mouse and to Ctrl+Page Up and Down; two Tabs lead from the list to OK.
  pages_.set_focusable(false);
  body_.append(pages_);
  AddButtons();
  window_.signal_close_request().connect([this] { return Close(), true; }, false);
  auto keys = Gtk::EventControllerKey::create();
  keys->set_propagation_phase(Gtk::PropagationPhase::CAPTURE);
  keys->signal_key_pressed().connect(
      [this](unsigned keyval, unsigned, Gdk::ModifierType state) {
        const bool control = (state & Gdk::ModifierType::CONTROL_MASK) == Gdk::ModifierType::CONTROL_MASK;
        if (control && (keyval == GDK_KEY_Page_Up || keyval == GDK_KEY_Page_Down)) {
          return ShowPage(pages_.get_current_page() == 0 ? kAdvanced : 0), true;
        }
        return keyval == GDK_KEY_Escape && (Close(), true);
      },
      false);
  window_.add_controller(keys);
  ShowPage(page);
}

InternetOptions::~InternetOptions() = default;

void InternetOptions::AddContent() {
  auto* text = Gtk::make_managed<Gtk::Label>(kContent);
  text->set_wrap(true);
  text->set_max_width_chars(kLine);
  text->set_xalign(0);
  text->set_yalign(0);
  text->set_margin(16);
  pages_.append_page(*text, "Content");
}

void InternetOptions::AddAdvanced() {
  list_.add_css_class("kv-options");
  list_.set_selection_mode(Gtk::SelectionMode::BROWSE);
  Name(list_, "Advanced options");
  for (const char* option : FixedOptions()) {
    AddRow(option, true);
  }
  AddRow("Show pictures", false);
  ShowMark();
  list_.signal_row_activated().connect([this](Gtk::ListBoxRow* row) {
    if (row != nullptr && row->get_index() == kPicturesRow) {
      Flip();
    }
  });
  auto* scroller = Gtk::make_managed<Gtk::ScrolledWindow>();
  scroller->add_css_class("kv-sunken");
  scroller->set_policy(Gtk::PolicyType::NEVER, Gtk::PolicyType::AUTOMATIC);
  scroller->set_child(list_);
  scroller->set_focusable(false);
  pages_.append_page(*scroller, "Advanced");
}

void InternetOptions::AddRow(const char* text, bool isFixed) {
  auto* row = Gtk::make_managed<Gtk::ListBoxRow>();
  auto* line = Gtk::make_managed<Gtk::Box>(Gtk::Orientation::HORIZONTAL, 8);
  auto* mark = Gtk::make_managed<Gtk::Image>();
  mark->set_from_icon_name("check-symbolic");
  mark->set_pixel_size(16);
  mark->add_css_class("kv-mark");
  line->append(*mark);
  auto* words = Gtk::make_managed<Gtk::Label>(text);
  words->set_xalign(0);
  words->set_hexpand(true);
  words->set_wrap(true);
  words->set_max_width_chars(kLine);
  line->append(*words);
  if (isFixed) {
    auto* fixed = Gtk::make_managed<Gtk::Label>("always");
    fixed->add_css_class("kv-fixed");
    line->append(*fixed);
    row->add_css_class("kv-fixed");
    Name(*row, std::string(text) + ", always");
  } else {
    mark_ = mark;
  }
  row->set_child(*line);
  list_.append(*row);
}

void InternetOptions::ShowMark() {
  mark_->set_opacity(shown_ ? 1 : 0);
  Name(*list_.get_row_at_index(kPicturesRow), shown_ ? "Show pictures, on" : "Show pictures, off");
}

void InternetOptions::AddButtons() {
  auto* row = Gtk::make_managed<Gtk::Box>(Gtk::Orientation::HORIZONTAL, 8);
  body_.append(*row);
  Gtk::Button* first = AddButton(*row, "_Restore Defaults", [this] {
    shown_ = true;
    ShowMark();
  });
  first->set_hexpand(true);
  first->set_halign(Gtk::Align::START);
  Gtk::Button* ok = AddButton(*row, "_OK", [this] { Ok(); });
  ok->add_css_class("kv-primary");
  window_.set_default_widget(*ok);
  AddButton(*row, "_Cancel", [this] { Close(); });
}

Gtk::Button* InternetOptions::AddButton(Gtk::Box& row, const char* caption, std::function<void()> work) {
  auto* button = Gtk::make_managed<Gtk::Button>(caption, true);
  gtk_accessible_reset_property(GTK_ACCESSIBLE(button->gobj()), GTK_ACCESSIBLE_PROPERTY_LABEL);
  button->add_css_class("kv-btn");
  button->set_size_request(kButtonWidth, -1);
  button->signal_clicked().connect([work = std::move(work)] { Raise(work); });
  row.append(*button);
  return button;
}

void InternetOptions::ShowPage(int page) {
  const bool advanced = page == kAdvanced;
  pages_.set_current_page(advanced ? 1 : 0);
  window_.present();
  if (advanced) {
    list_.select_row(*list_.get_row_at_index(0));
    list_.get_row_at_index(0)->grab_focus();
  } else {
    window_.get_default_widget()->grab_focus();
  }
  window_.present();  // the second time for desktops that leave the focus to the window itself
}

void InternetOptions::Step(int rows) {
  auto* at = dynamic_cast<Gtk::ListBoxRow*>(window_.get_focus());
  if (at == nullptr) {
    return;
  }
  if (auto* next = list_.get_row_at_index(at->get_index() + rows)) {
    list_.select_row(*next);
    next->grab_focus();
  }
}

void InternetOptions::Flip() {
  shown_ = !shown_;
  ShowMark();
}

void InternetOptions::Send(const SentKey& key) {
  if (key.control || key.alt) {
    return;
  }
  if (key.key == "DOWN" || key.key == "UP") {
    Step(key.key == "DOWN" ? 1 : -1);
  } else if (key.key == "TAB") {
    window_.child_focus(key.shift ? Gtk::DirectionType::TAB_BACKWARD : Gtk::DirectionType::TAB_FORWARD);
  } else if (key.key == "ESC" || key.key == "ESCAPE") {
    Close();
  } else if (key.key == " ") {
    Gtk::Widget* focus = window_.get_focus();
    if (auto* row = dynamic_cast<Gtk::ListBoxRow*>(focus)) {
      if (row->get_index() == kPicturesRow) {
        Flip();
      }
    } else if (auto* button = dynamic_cast<Gtk::Button*>(focus)) {
      g_signal_emit_by_name(button->gobj(), "clicked");  // at once: the next key may be meant for elsewhere
    }
  }
}

void InternetOptions::Ok() {
  if (pictures_.setShown) {
    Guarded([this] { pictures_.setShown(shown_); });
  }
  Close();
}

void InternetOptions::Close() {
  window_.set_visible(false);
  Raise(onClosed_);  // the owner may take this object away, but not before the toolkit is out of it
}

}  // namespace kivandra::gtk
