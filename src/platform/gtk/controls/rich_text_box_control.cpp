// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gtk/controls/rich_text_box_control.h"

#include <algorithm>

#include "platform/gtk/guard.h"

namespace kivandra::gtk {
namespace {

constexpr int kGapBetweenLines = 5;  // pixels
// The first screen is there at once; of the rest as much at a time as is not felt, for laying out is slow: a
// second or two for each million letters. A full day comes whole; what is longer comes when one gets near it.
constexpr std::size_t kFirstBytes = std::size_t{16} << 10U;
constexpr std::size_t kBytesAtOnce = std::size_t{16} << 10U;
constexpr unsigned kStepMilliseconds = 60;
constexpr std::size_t kBytesAhead = std::size_t{2} << 20U;

Gdk::RGBA Colour(Gtk::Widget& widget, const char* name, const char* otherwise) {
  Gdk::RGBA colour;
  if (!widget.get_style_context()->lookup_color(name, colour)) {
    colour.set(otherwise);
  }
  return colour;
}

}  // namespace

RichTextBoxControl::RichTextBoxControl(Gtk::TextView& view) : WidgetControl(view) {
  view.set_editable(false);
  view.set_cursor_visible(true);
  view.set_accepts_tab(false);
  view.set_wrap_mode(Gtk::WrapMode::WORD_CHAR);
  view.set_pixels_inside_wrap(kGapBetweenLines);
  view.set_pixels_below_lines(kGapBetweenLines);
  view.get_buffer()->set_enable_undo(false);  // nothing to undo, and it would keep the text a second time
  MakeTags(view);
  WatchScrolling(view);
  WatchMouse(view);
  WatchKeys(view);
}

RichTextBoxControl::~RichTextBoxControl() {
  loading_.disconnect();
  telling_.disconnect();
}

void RichTextBoxControl::MakeTags(Gtk::TextView& view) {
  const auto buffer = view.get_buffer();
  linkTag_ = buffer->create_tag();
  linkTag_->property_underline() = Pango::Underline::SINGLE;
  linkTag_->property_foreground_rgba() = Colour(view, "kvc_link", "#0A5F9E");
  currentTag_ = buffer->create_tag();
  currentTag_->property_background_rgba() = Colour(view, "kvc_link_here", "#FFE9CF");
}

void RichTextBoxControl::SetText(const std::string& text, const std::vector<TextSpan>& links) {
  auto content = std::make_shared<LinkedText>();
  content->text = text;
  content->links = links;
  loading_.disconnect();
  press_.reset();
  content_ = std::move(content);
  place_ = {};
  shown_.clear();
  marked_.reset();
  complete_ = false;
  View().get_buffer()->set_text("");
  wanted_ = kBytesAhead;
  if (ShowMore(kFirstBytes)) {
    KeepShowing();
  }
}

void RichTextBoxControl::KeepShowing() {
  // A pause comes before each step, and only when what is there has been laid out. Whatever a step costs, a
  // caller who runs events until there are no more waits for one step at most.
  const auto step = [this] {
    if (ShowMore(kBytesAtOnce)) {
      KeepShowing();
    }
  };
  const auto pause = [this, step] {
    loading_ = Glib::signal_timeout().connect([step] { return Guarded(step), false; }, kStepMilliseconds,
                                              Glib::PRIORITY_LOW);
  };
  loading_ = Glib::signal_idle().connect([pause] { return Guarded(pause), false; }, Glib::PRIORITY_LOW);
}

void RichTextBoxControl::WatchScrolling(Gtk::TextView& view) {
  const auto heights = view.get_vadjustment();
  if (!heights) {
    return;
  }
  const auto look = [this, adjustment = heights.get()] {
    const double below = adjustment->get_upper() - adjustment->get_value() - adjustment->get_page_size();
    if (!gone_ && !complete_ && !loading_.connected() && below < 2 * adjustment->get_page_size()) {
      wanted_ = place_.byte + kBytesAhead;
      KeepShowing();
    }
  };
  heights->signal_value_changed().connect(look);
  heights->signal_changed().connect(look);
}

bool RichTextBoxControl::ShowMore(std::size_t bytes) {
  const auto buffer = View().get_buffer();
  const int cursor = Cursor();
  const int bound = buffer->get_selection_bound()->get_iter().get_offset();
  const std::size_t until = place_.byte + bytes;
  const bool first = place_.byte == 0;
  TextPiece piece;
  while (place_.byte < until) {
    const bool begins = place_.byte == 0;
    if (!NextPiece(*content_, place_, piece)) {
      complete_ = true;
      break;
    }
    if (!begins) {
      buffer->insert(buffer->end(), "\n");
    }
    Append(piece);
  }
  complete_ = complete_ || place_.byte >= content_->text.size();
  // What is added at the end pushes a cursor that stands there.
  if (first || Cursor() != cursor) {
    buffer->select_range(buffer->get_iter_at_offset(cursor), buffer->get_iter_at_offset(bound));
  }
  return !complete_ && place_.byte < wanted_;
}

void RichTextBoxControl::Append(const TextPiece& piece) {
  const auto buffer = View().get_buffer();
  const int start = buffer->get_char_count();
  buffer->insert(buffer->end(), piece.words.data(), piece.words.data() + piece.words.size());
  for (const ShownLink& link : piece.links) {
    buffer->apply_tag(linkTag_, buffer->get_iter_at_offset(start + link.begin),
                      buffer->get_iter_at_offset(start + link.end));
    shown_.push_back({start + link.begin, start + link.end, link.link});
  }
}

std::string RichTextBoxControl::TextRange(const TextSpan& span) const {
  Alive();
  if (span.begin > span.end || span.end > content_->text.size()) {
    throw PlatformError(kInvalidCall, "the text has no such range");
  }
  return content_->text.substr(span.begin, span.end - span.begin);
}

void RichTextBoxControl::PrintDoc(const std::string& document) {
  GtkRoot* root = gtk_widget_get_root(Widget().gobj());
  // The window may close while events run inside: nothing of this object is used after the call.
  const PrintRoad road = road_;
  PrintText(content_, document, GTK_IS_WINDOW(root) ? GTK_WINDOW(root) : nullptr, road);
}

void RichTextBoxControl::OnLink(std::function<void(unsigned, TextSpan)> handler) {
  Alive(), link_ = std::move(handler);
}

void RichTextBoxControl::LetGo() {
  loading_.disconnect();
  telling_.disconnect();
  link_ = nullptr;
  gone_ = true;
  WidgetControl::LetGo();
}

Gtk::TextView& RichTextBoxControl::View() const { return dynamic_cast<Gtk::TextView&>(Widget()); }

int RichTextBoxControl::Cursor() const {
  const auto buffer = View().get_buffer();
  return buffer->get_insert()->get_iter().get_offset();
}

}  // namespace kivandra::gtk
