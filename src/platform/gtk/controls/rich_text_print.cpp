// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gtk/controls/rich_text_print.h"

#include <utility>
#include <vector>

#include "platform/gtk/controls/default_printer.h"
#include "platform/gtk/guard.h"
#include "platform/platform_error.h"

namespace kivandra::gtk {
namespace {

constexpr double kMarginMillimetres = 20;
constexpr int kLineGap = 3 * PANGO_SCALE;  // points
constexpr const char* kPrintFont = "Cabin, DejaVu Sans 11";
constexpr std::size_t kBytesAtOnce = std::size_t{64} << 10U;  // then events have their turn

/// Where a page begins: a piece and a line of it.
struct PageStart {
  PiecePlace piece;
  int line = 0;
};

struct FreeLayout {
  void operator()(PangoLayout* layout) const { g_object_unref(layout); }
};
using Layout = std::unique_ptr<PangoLayout, FreeLayout>;

void Insert(PangoAttrList* list, PangoAttribute* attribute, std::size_t begin, std::size_t end) {
  attribute->start_index = static_cast<guint>(begin);
  attribute->end_index = static_cast<guint>(end);
  pango_attr_list_insert(list, attribute);
}

Layout LayOut(GtkPrintContext* context, const TextPiece& piece) {
  Layout layout(gtk_print_context_create_pango_layout(context));
  PangoFontDescription* font = pango_font_description_from_string(kPrintFont);
  pango_layout_set_font_description(layout.get(), font);
  pango_font_description_free(font);
  pango_layout_set_width(layout.get(), static_cast<int>(gtk_print_context_get_width(context) * PANGO_SCALE));
  pango_layout_set_wrap(layout.get(), PANGO_WRAP_WORD_CHAR);
  pango_layout_set_text(layout.get(), piece.words.data(), static_cast<int>(piece.words.size()));
  PangoAttrList* attributes = pango_attr_list_new();
  const char* words = piece.words.c_str();
  for (const ShownLink& link : piece.links) {
    const auto begin = static_cast<std::size_t>(g_utf8_offset_to_pointer(words, link.begin) - words);
    const auto end = static_cast<std::size_t>(g_utf8_offset_to_pointer(words, link.end) - words);
    Insert(attributes, pango_attr_underline_new(PANGO_UNDERLINE_SINGLE), begin, end);
    Insert(attributes, pango_attr_foreground_new(0x0A0A, 0x5F5F, 0x9E9E), begin, end);
  }
  pango_layout_set_attributes(layout.get(), attributes);
  pango_attr_list_unref(attributes);
  return layout;
}

/// One print of a text: page breaks first, some at a time, then page after page.
class Print {
 public:
  Print(std::shared_ptr<const LinkedText> text, GtkPrintOperation* operation) : text_(std::move(text)) {
    g_signal_connect(operation, "paginate", G_CALLBACK(OnPaginate), this);
    g_signal_connect(operation, "draw-page", G_CALLBACK(OnDrawPage), this);
  }

 private:
  static gboolean OnPaginate(GtkPrintOperation* operation, GtkPrintContext* context, gpointer self) {
    auto* print = static_cast<Print*>(self);
    if (!Guarded([&] { return print->BreakMore(context); })) {
      return FALSE;
    }
    gtk_print_operation_set_n_pages(operation, static_cast<int>(print->pages_.size()));
    return TRUE;
  }

  static void OnDrawPage(GtkPrintOperation*, GtkPrintContext* context, int page, gpointer self) {
    Guarded([&] { static_cast<Print*>(self)->Draw(context, static_cast<std::size_t>(page)); });
  }

  /// Finds the next page breaks; true when the last is found.
  bool BreakMore(GtkPrintContext* context) {
    const double height = gtk_print_context_get_height(context);
    const std::size_t until = next_.byte + kBytesAtOnce;
    TextPiece piece;
    while (next_.byte < until) {
      const PiecePlace here = next_;
      if (!NextPiece(*text_, next_, piece)) {
        return true;
      }
      const Layout layout = LayOut(context, piece);
      int number = 0;
      for (GSList* line = pango_layout_get_lines_readonly(layout.get()); line != nullptr; line = line->next) {
        const double needed = Height(line->data);
        if (filled_ > 0 && filled_ + needed > height) {
          pages_.push_back({here, number});
          filled_ = 0;
        }
        filled_ += needed;
        ++number;
      }
    }
    return false;
  }

  void Draw(GtkPrintContext* context, std::size_t page) {
    cairo_t* cairo = gtk_print_context_get_cairo_context(context);
    const bool last = page + 1 == pages_.size();
    PiecePlace place = pages_[page].piece;
    int skip = pages_[page].line;
    double y = 0;
    TextPiece piece;
    while (true) {
      const bool endsHere = !last && place.byte == pages_[page + 1].piece.byte;
      const int end = endsHere ? pages_[page + 1].line : G_MAXINT;
      if (end == 0 || !NextPiece(*text_, place, piece)) {
        return;
      }
      const Layout layout = LayOut(context, piece);
      int number = 0;
      for (GSList* line = pango_layout_get_lines_readonly(layout.get()); line != nullptr && number < end;
           line = line->next) {
        if (number++ >= skip) {
          y += DrawLine(cairo, line->data, y);
        }
      }
      skip = 0;
      if (endsHere) {
        return;
      }
    }
  }

  static double Height(gpointer line) {
    PangoRectangle box;
    pango_layout_line_get_extents(static_cast<PangoLayoutLine*>(line), nullptr, &box);
    return static_cast<double>(box.height + kLineGap) / PANGO_SCALE;
  }

  /// Gives back the height.
  static double DrawLine(cairo_t* cairo, gpointer line, double y) {
    PangoRectangle box;
    pango_layout_line_get_extents(static_cast<PangoLayoutLine*>(line), nullptr, &box);
    cairo_move_to(cairo, 0, y - static_cast<double>(box.y) / PANGO_SCALE);
    pango_cairo_show_layout_line(cairo, static_cast<PangoLayoutLine*>(line));
    return static_cast<double>(box.height + kLineGap) / PANGO_SCALE;
  }

  std::shared_ptr<const LinkedText> text_;
  PiecePlace next_;
  double filled_ = 0;
  std::vector<PageStart> pages_{PageStart{}};
};

/// A4 or Letter, as the country has it, with room at the edges.
void SetPaper(GtkPrintOperation* operation) {
  GtkPageSetup* setup = gtk_page_setup_new();
  gtk_page_setup_set_left_margin(setup, kMarginMillimetres, GTK_UNIT_MM);
  gtk_page_setup_set_right_margin(setup, kMarginMillimetres, GTK_UNIT_MM);
  gtk_page_setup_set_top_margin(setup, kMarginMillimetres, GTK_UNIT_MM);
  gtk_page_setup_set_bottom_margin(setup, kMarginMillimetres, GTK_UNIT_MM);
  gtk_print_operation_set_default_page_setup(operation, setup);
  g_object_unref(setup);
}

/// Sends it to the default printer, without a dialog.
GtkPrintOperationAction ToThePrinter(GtkPrintOperation* operation) {
  const std::string printer = FindPrinter();
  GtkPrintSettings* settings = gtk_print_settings_new();
  gtk_print_settings_set_printer(settings, printer.c_str());
  gtk_print_operation_set_print_settings(operation, settings);
  g_object_unref(settings);
  return GTK_PRINT_OPERATION_ACTION_PRINT;
}

struct Underway {
  Underway() { Flag() = true; }
  ~Underway() { Flag() = false; }
  Underway(const Underway&) = delete;
  Underway& operator=(const Underway&) = delete;
  static bool& Flag() {
    static bool underway = false;
    return underway;
  }
};

struct Unref {
  void operator()(GtkPrintOperation* operation) const { g_object_unref(operation); }
};

}  // namespace

void PrintText(std::shared_ptr<const LinkedText> text, const std::string& document, GtkWindow* window,
               const PrintRoad& road) {
  if (Underway::Flag()) {
    throw PlatformError(kPrinterError, "another text is being printed");
  }
  const Underway underway;
  const std::unique_ptr<GtkPrintOperation, Unref> operation(gtk_print_operation_new());
  const Print print(std::move(text), operation.get());
  SetPaper(operation.get());
  gtk_print_operation_set_unit(operation.get(), GTK_UNIT_POINTS);
  char* name = g_utf8_make_valid(document.data(), static_cast<gssize>(document.size()));
  gtk_print_operation_set_job_name(operation.get(), name);
  g_free(name);
  const GtkPrintOperationAction action = road ? road(operation.get()) : ToThePrinter(operation.get());
  GError* error = nullptr;
  const GtkPrintOperationResult result = gtk_print_operation_run(operation.get(), action, window, &error);
  std::string why = "there is no printer";
  if (error != nullptr) {
    why = error->message;
    g_error_free(error);
  }
  if (result != GTK_PRINT_OPERATION_RESULT_APPLY) {
    throw PlatformError(kPrinterError, why);
  }
}

}  // namespace kivandra::gtk
