// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <deque>
#include <memory>
#include <optional>
#include <utility>

#include "platform/gtk/controls/rich_text_pieces.h"
#include "platform/gtk/controls/rich_text_print.h"
#include "platform/gtk/controls/widget_control.h"

namespace kivandra::gtk {

/// Over a `GtkTextView`. A long text comes piece by piece from the event loop, so that the window stays
/// alive. Tab and Shift+Tab go from link to link and leave the text behind its last and first one; the arrow
/// keys walk through it letter by letter; Enter opens the link at the cursor.
class RichTextBoxControl : public WidgetControl, public RichTextBox {
 public:
  explicit RichTextBoxControl(Gtk::TextView& view);
  ~RichTextBoxControl() override;

  void SetText(const std::string& text, const std::vector<TextSpan>& links) override;
  [[nodiscard]] std::string TextRange(const TextSpan& span) const override;
  void PrintDoc(const std::string& document) override;
  void OnLink(std::function<void(unsigned message, TextSpan link)> handler) override;
  void LetGo() override;

  /// Prints otherwise than on the default printer from here on: for tests.
  void SetPrintRoad(PrintRoad road) { road_ = std::move(road); }
  /// Whether the whole text is on show.
  [[nodiscard]] bool Complete() const { return complete_; }

 private:
  [[nodiscard]] Gtk::TextView& View() const;
  void MakeTags(Gtk::TextView& view);
  void WatchMouse(Gtk::TextView& view);
  void WatchKeys(Gtk::TextView& view);

  /// Goes on showing the text, from the event loop.
  void KeepShowing();
  /// Shows the next part of the text; false when as much is on show as is wanted.
  bool ShowMore(std::size_t bytes);
  void WatchScrolling(Gtk::TextView& view);
  void Append(const TextPiece& piece);

  bool MouseEvent(GdkEvent* event);
  bool KeyPressed(unsigned keyval);
  bool GoToLink(bool forward);
  void MarkCurrentLink();
  /// The shown part of a link at a character, as an index of `shown_`.
  [[nodiscard]] std::optional<std::size_t> ShownAt(int character) const;
  [[nodiscard]] std::optional<std::size_t> LinkUnder(double x, double y) const;
  [[nodiscard]] std::optional<std::size_t> LinkAtCursor() const;
  [[nodiscard]] int Cursor() const;
  /// Raises the link event from the event loop.
  void Tell(unsigned message, std::size_t link);
  void TellNext();

  std::shared_ptr<const LinkedText> content_ = std::make_shared<LinkedText>();
  PiecePlace place_;                 // where the part begins that is not shown yet
  std::size_t wanted_ = 0;           // how many bytes are to be on show
  std::vector<ShownLink> shown_;     // characters of the buffer
  std::optional<ShownLink> marked_;  // the link at the cursor
  bool complete_ = true;
  std::function<void(unsigned, TextSpan)> link_;
  PrintRoad road_;
  Glib::RefPtr<Gtk::TextTag> linkTag_;
  Glib::RefPtr<Gtk::TextTag> currentTag_;
  sigc::connection loading_;
  sigc::connection telling_;
  std::deque<std::pair<unsigned, TextSpan>> told_;

  bool gone_ = false;  // the window is; its view may still hear of a focus that is lost

  struct Press {
    std::size_t link;
    double x;
    double y;
    bool selected;  // some text was selected before
  };
  std::optional<Press> press_;
};

}  // namespace kivandra::gtk
