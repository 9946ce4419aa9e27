// SPDX-License-Identifier: GPL-3.0-or-later
// The text with links: showing it, its links by mouse and keyboard, printing it.
#include <ctime>
#include <filesystem>

#include "platform/button.h"
#include "platform/gtk/controls/rich_text_box_control.h"
#include "platform/rich_text_box.h"
#include "platform_gtk/control_test.h"
#include "platform_gtk/pdf_text.h"

namespace kivandra::gtk {
namespace {

/// A text in which every link is marked.
struct Marked {
  void Words(const std::string& words) { text += words; }
  void Link(const std::string& words) {
    links.push_back({text.size(), text.size() + words.size()});
    text += words;
  }
  std::string text;
  std::vector<TextSpan> links;
};

class RichTextTest : public ControlTest {
 protected:
  RichTextTest() {
    Show("Navigation");
    box = &dynamic_cast<RichTextBoxControl&>(form->Get<RichTextBox>("URLS"));
    box->OnLink([this](unsigned message, TextSpan link) {
      told.push_back(std::to_string(message) + " " + box->TextRange(link));
    });
    text.Words(" ->Otters URL ");
    text.Link("http://a.example/otters");
    text.Words("   ->Seals URL ");
    text.Link("http://a.example/seals");
    text.Words("  ");
    box->SetText(text.text, text.links);
    Settle();
    Laid(View());
  }

  Gtk::TextView& View() { return dynamic_cast<Gtk::TextView&>(WidgetOf(*box)); }
  [[nodiscard]] std::string Shown() { return View().get_buffer()->get_text().raw(); }
  /// A place in the view, in the middle of a character.
  std::pair<int, int> Character(int offset) {
    Gdk::Rectangle place;
    View().get_iter_location(View().get_buffer()->get_iter_at_offset(offset), place);
    int x = 0;
    int y = 0;
    View().buffer_to_window_coords(Gtk::TextWindowType::WIDGET, place.get_x() + place.get_width() / 2,
                                   place.get_y() + place.get_height() / 2, x, y);
    return {x, y};
  }
  int InLink(std::size_t link) const { return static_cast<int>(text.links[link].begin) + 4; }
  void ClickAt(int offset, int button = 1) {
    const auto [x, y] = Character(offset);
    HandsOn(View()).Click(View(), x, y, button);
    Settle();
  }

  Marked text;
  RichTextBoxControl* box = nullptr;
  Journal told;
};

TEST_F(RichTextTest, AClickOnALinkIsTold) {
  ClickAt(InLink(1));
  EXPECT_TRUE(Until([&] { return told.size() >= 2; }));
  EXPECT_EQ(told, (Journal{"513 http://a.example/seals", "514 http://a.example/seals"}));
}

TEST_F(RichTextTest, ARightClickIsNoLeftClick) {
  ClickAt(InLink(0), 3);
  EXPECT_TRUE(Until([&] { return !told.empty(); }));
  EXPECT_EQ(told, Journal{"517 http://a.example/otters"});
}

TEST_F(RichTextTest, AClickBesideTheLinksTellsNothing) {
  ClickAt(3);
  EXPECT_TRUE(told.empty());
}

TEST_F(RichTextTest, ADragThatSelectsTextAndEndsOnALinkIsNoClick) {
  for (const int from : {3, InLink(0)}) {
    told.clear();
    const auto [x, y] = Character(from);
    const auto [toX, toY] = Character(InLink(0) + 12);
    HandsOn(View()).MoveTo(View(), x, y);
    HandsOn(View()).ButtonDown();
    HandsOn(View()).MoveTo(View(), (x + toX) / 2, toY);
    HandsOn(View()).MoveTo(View(), toX, toY);
    HandsOn(View()).ButtonUp();
    EXPECT_TRUE(Until([&] { return View().get_buffer()->get_has_selection(); }));
    Settle();
    for (const auto& line : told) {
      EXPECT_NE(line.substr(0, 3), "514");
    }
    View().get_buffer()->place_cursor(View().get_buffer()->begin());
  }
}

TEST_F(RichTextTest, TabGoesFromLinkToLinkAndEnterOpensOne) {
  View().grab_focus();
  Press(View(), {"Tab", "Return", "Tab", "KP_Enter", "shift+Tab", "Return"});
  EXPECT_TRUE(Until([&] { return told.size() >= 3; }));
  EXPECT_EQ(told, (Journal{"514 http://a.example/otters", "514 http://a.example/seals",
                           "514 http://a.example/otters"}));
}

TEST_F(RichTextTest, ArrowKeysReachALinkToo) {
  View().grab_focus();
  std::vector<std::string> keys(text.links[0].begin + 1, "Right");
  keys.emplace_back("Return");
  Press(View(), keys);
  EXPECT_TRUE(Until([&] { return told == Journal{"514 http://a.example/otters"}; }));
}

TEST_F(RichTextTest, TabLeavesTheTextBehindTheLastLink) {
  View().grab_focus();
  Press(View(), {"Tab", "Tab", "Tab"});
  Gtk::Widget& print = WidgetOf(form->Get<Button>("CancelButton"));
  EXPECT_TRUE(Until([&] { return print.has_focus(); }));
}

TEST_F(RichTextTest, NothingCanBeTyped) {
  View().grab_focus();
  const std::string before = Shown();
  Press(View(), {"x", "Delete", "BackSpace", "ctrl+v"});
  EXPECT_EQ(Shown(), before);
}

TEST_F(RichTextTest, ItsWindowMayCloseInsideTheHandler) {
  box->OnLink([this](unsigned, TextSpan) { form->Unload(); });
  ClickAt(InLink(1));
  EXPECT_TRUE(Until([&] { return !form->Loaded(); }));
  EXPECT_THROW((void)box->TextRange({0, 1}), PlatformError);
}

TEST_F(RichTextTest, BytesThatAreNoTextAreShownAndGivenBackWhole) {
  Marked odd;
  odd.Words(std::string("a\0b \xff\xc3", 6));
  odd.Link("http://x/\xe2\x82");
  odd.Words("\xac end \xf0\x9f\xa6\xa6");
  box->SetText(odd.text, odd.links);
  EXPECT_TRUE(g_utf8_validate(Shown().c_str(), -1, nullptr));
  EXPECT_NE(Shown().find("end \xf0\x9f\xa6\xa6"), std::string::npos);
  EXPECT_EQ(box->TextRange({0, odd.text.size()}), odd.text);
  EXPECT_EQ(box->TextRange(odd.links[0]), "http://x/\xe2\x82");
}

TEST_F(RichTextTest, ARangeThatIsNotThereIsRefused) {
  EXPECT_THROW((void)box->TextRange({0, text.text.size() + 1}), PlatformError);
  EXPECT_THROW((void)box->TextRange({5, 4}), PlatformError);
  EXPECT_EQ(box->TextRange({text.text.size(), text.text.size()}), "");
}

TEST_F(RichTextTest, ANewTextReplacesTheOldOne) {
  box->SetText("short", {});
  EXPECT_EQ(Shown(), "short");
  box->SetText("", {});
  EXPECT_EQ(Shown(), "");
  EXPECT_TRUE(box->Complete());
}

TEST_F(RichTextTest, AFullDayComesWhole) {
  Marked day;
  for (int i = 0; i < 3000; ++i) {
    day.Words(" ->Page URL ");
    day.Link("http://a.example/" + std::to_string(i));
    day.Words("  ");
  }
  box->SetText(day.text, day.links);
  for (std::size_t before = 0; !box->Complete() && Shown().size() > before;) {
    before = Shown().size();
    Until([&] { return box->Complete() || Shown().size() > before; });
  }
  EXPECT_TRUE(box->Complete());
  std::string shown = Shown();
  EXPECT_EQ(shown.size(), day.text.size());  // a blank for each break
  std::replace(shown.begin(), shown.end(), '\n', ' ');
  EXPECT_EQ(shown, day.text);
}

TEST_F(RichTextTest, FiftyMegabytesInOneLineComeInPieces) {
  const std::clock_t began = std::clock();
  std::string line;
  const std::string word(999, 'w');
  while (line.size() < std::size_t{50} << 20U) {
    line += word + " ";
  }
  box->SetText(line, {{line.size() - 10, line.size()}});
  EXPECT_LT(Shown().size(), std::size_t{1} << 20U);
  EXPECT_EQ(box->TextRange({line.size() - 4, line.size()}), "www ");
  const auto before = Shown().size();
  EXPECT_TRUE(Until([&] { return Shown().size() > before; }));  // and events run between
  const auto buffer = View().get_buffer();
  for (int i = 0; i < buffer->get_line_count(); ++i) {
    auto end = buffer->get_iter_at_line(i);
    end.forward_to_line_end();
    ASSERT_LE(end.get_line_offset(), static_cast<int>(kLongestPiece));
  }
  EXPECT_LT(std::clock() - began, 2 * CLOCKS_PER_SEC);
}

TEST_F(RichTextTest, WhoRunsEventsToTheirEndWaitsForNoLongText) {
  std::string lines;
  while (lines.size() < std::size_t{8} << 20U) {
    lines += "A line that is long enough to be laid out in a row or two of the window.\n";
  }
  box->SetText(lines, {});
  std::size_t before = Shown().size();
  for (int i = 0; i < 3; ++i) {
    Settle();
    EXPECT_LE(Shown().size() - before, std::size_t{64} << 10U);
    EXPECT_FALSE(box->Complete());
    before = Shown().size();
    EXPECT_TRUE(Until([&] { return Shown().size() > before; })) << "and yet it comes";
  }
}

TEST(TextPiecesTest, BreakAtABlankOutsideOfLinks) {
  LinkedText text;
  text.text = std::string(kLongestPiece - 10, 'a') + " b c d e f g h i j k";
  text.links = {{kLongestPiece - 8, kLongestPiece + 8}};
  PiecePlace place;
  TextPiece piece;
  ASSERT_TRUE(NextPiece(text, place, piece));
  EXPECT_EQ(piece.words, std::string(kLongestPiece - 10, 'a'));
  ASSERT_TRUE(NextPiece(text, place, piece));
  EXPECT_EQ(piece.words, "b c d e f g h i j k");
  ASSERT_EQ(piece.links.size(), 1U);
  EXPECT_FALSE(NextPiece(text, place, piece));
}

TEST(TextPiecesTest, WithoutABlankBreakBetweenCharacters) {
  LinkedText text;
  while (text.text.size() < 3 * kLongestPiece) {
    text.text += "\xe2\x82\xac";
  }
  text.links = {{0, text.text.size()}};
  PiecePlace place;
  TextPiece piece;
  std::string whole;
  while (NextPiece(text, place, piece)) {
    ASSERT_EQ(piece.links.size(), 1U);
    EXPECT_EQ(piece.links[0].link, 0U);
    whole += piece.words;
  }
  EXPECT_EQ(whole, text.text);
}

TEST(TextPiecesTest, KeepTheLinesOfTheText) {
  const LinkedText text{"one\n\ntwo\n", {}};
  PiecePlace place;
  TextPiece piece;
  Journal lines;
  while (NextPiece(text, place, piece)) {
    lines.push_back(piece.words);
  }
  EXPECT_EQ(lines, (Journal{"one", "", "two"}));
}

class PrintTest : public RichTextTest {
 protected:
  PrintTest() {
    box->SetPrintRoad([this](GtkPrintOperation* operation) {
      char* job = nullptr;
      g_object_get(operation, "job-name", &job, nullptr);
      document = job;
      g_free(job);
      gtk_print_operation_set_export_filename(operation, path.c_str());
      return GTK_PRINT_OPERATION_ACTION_EXPORT;
    });
  }
  ~PrintTest() override { std::filesystem::remove_all(folder); }

  static std::string MakeFolder() {
    std::string made = (std::filesystem::temp_directory_path() / "print-XXXXXX").string();
    EXPECT_NE(g_mkdtemp(made.data()), nullptr);
    return made;
  }
  static std::string WithoutBlanks(std::string words) {
    std::erase_if(words, [](char c) { return c == ' ' || c == '\n'; });
    return words;
  }

  std::string folder = MakeFolder();
  std::string path = folder + "/out.pdf";
  std::string document;
};

TEST_F(PrintTest, PutsTheTextOnPaperUnderTheDocumentsName) {
  box->PrintDoc("/home/x/21/");
  EXPECT_EQ(document, "/home/x/21/");
  const PdfFile pdf(path);
  EXPECT_EQ(pdf.Pages(), 1);
  EXPECT_EQ(WithoutBlanks(pdf.Letters()), WithoutBlanks(text.text));
}

TEST_F(PrintTest, ALongTextTakesSeveralPagesAndLosesNothing) {
  Marked day;
  for (int i = 0; i < 1000; ++i) {
    day.Words(" ->Page URL ");
    day.Link("http://a.example/" + std::to_string(i));
    day.Words("  ");
  }
  box->SetText(day.text, day.links);
  box->PrintDoc("day");
  const PdfFile pdf(path);
  EXPECT_GT(pdf.Pages(), 5);
  EXPECT_EQ(WithoutBlanks(pdf.Letters()), WithoutBlanks(day.text));
}

TEST_F(PrintTest, AnEmptyTextIsOneEmptyPage) {
  box->SetText("", {});
  box->PrintDoc("nothing");
  EXPECT_EQ(PdfFile(path).Pages(), 1);
}

TEST_F(PrintTest, APrintThatFailsIsSaid) {
  path = folder + "/nowhere/out.pdf";
  EXPECT_THROW(box->PrintDoc("day"), PlatformError);
}

}  // namespace
}  // namespace kivandra::gtk
