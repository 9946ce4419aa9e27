// SPDX-License-Identifier: GPL-3.0-or-later
// The dialogs that belong to a page.
#include <gmock/gmock.h>
#include <gtk/gtkunixprint.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "engine/desktop_input.h"
#include "engine/engine_test.h"
#include "platform/gtk/web/web_dialogs.h"

namespace kivandra::testing {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::Test;

/// The open windows of a kind.
std::vector<GtkWindow*> Open(GType kind) {
  std::vector<GtkWindow*> found;
  GListModel* windows = gtk_window_get_toplevels();
  for (guint i = 0; i < g_list_model_get_n_items(windows); ++i) {
    gpointer window = g_list_model_get_item(windows, i);
    g_object_unref(window);
    if (g_type_is_a(G_OBJECT_TYPE(window), kind) != FALSE) found.push_back(GTK_WINDOW(window));
  }
  return found;
}

std::string ReadAll(const std::filesystem::path& file) {
  std::ostringstream text;
  text << std::ifstream(file).rdbuf();
  return text.str();
}

class Dialogs : public Test {
 protected:
  LoopbackServer server;
  TestWindow window;
  std::filesystem::path folder = std::filesystem::path(g_get_home_dir()) / "saved pages";

  void SetUp() override {
    std::filesystem::create_directories(folder);
    server.Serve("/a", {"<!DOCTYPE html><title>A page: 1/2</title><p>Grüße <a href=/next>on</a></p>",
                        "text/html; charset=utf-8"});
    ASSERT_TRUE(window.Load(server.Url("/a")));
    ASSERT_TRUE(WaitUntil([&] { return webkit_web_view_get_title(window.View()) != nullptr; }));
  }
  void TearDown() override {
    while (!Open(GTK_TYPE_DIALOG).empty()) gtk_window_destroy(Open(GTK_TYPE_DIALOG).back());
    std::filesystem::remove_all(folder);
  }
  GtkWindow* Ask(int command, GType kind) {
    window.Browser().ExecWB(command, 1);
    const std::vector<GtkWindow*> found = Open(kind);
    EXPECT_EQ(found.size(), 1U);
    return found.empty() ? nullptr : found.front();
  }
  void Save(const std::string& name) {
    const std::filesystem::path path = folder / name;
    GFile* file = g_file_new_for_path(path.c_str());
    gtk::SavePage(window.View(), file);
    g_object_unref(file);
  }
  static std::string TextOf(GtkWindow* box) {
    char* title = nullptr;
    char* text = nullptr;
    g_object_get(box, "text", &title, "secondary-text", &text, nullptr);
    std::string both = title;
    both.push_back('|');
    both.append(text);
    g_free(title);
    g_free(text);
    return both;
  }
};

struct Kind {
  int command;
  GType (*type)();
};
const Kind kKinds[] = {{OLECMDID_SAVEAS, gtk_file_chooser_dialog_get_type},
                       {OLECMDID_PRINT, gtk_print_unix_dialog_get_type},
                       {OLECMDID_PRINTPREVIEW, gtk_print_unix_dialog_get_type},
                       {OLECMDID_PAGESETUP, gtk_page_setup_unix_dialog_get_type},
                       {OLECMDID_PROPERTIES, gtk_message_dialog_get_type}};

TEST_F(Dialogs, AreRealOnesAndMayBeCancelled) {
  for (const Kind& kind : kKinds) {
    SCOPED_TRACE(kind.command);
    GtkWindow* dialog = Ask(kind.command, kind.type());
    ASSERT_NE(dialog, nullptr);
    EXPECT_TRUE(gtk_window_get_modal(dialog));
    window.Browser().ExecWB(kind.command, 1);
    EXPECT_EQ(Open(kind.type()).size(), 1U);  // asked twice, open once
    gtk_dialog_response(GTK_DIALOG(dialog), GTK_RESPONSE_CANCEL);
    EXPECT_TRUE(Open(kind.type()).empty());
  }
  EXPECT_EQ(window.Script("return document.title"), "A page: 1/2");
}

TEST_F(Dialogs, GoWithTheirWindow) {
  for (const Kind& kind : kKinds) {
    SCOPED_TRACE(kind.command);
    TestWindow other;
    ASSERT_TRUE(other.Load(server.Url("/a")));
    other.Browser().ExecWB(kind.command, 1);
    ASSERT_EQ(Open(kind.type()).size(), 1U);
    other.CloseWindow();
    EXPECT_TRUE(WaitUntil([&] { return Open(kind.type()).empty(); }));
  }
}

TEST_F(Dialogs, SaveAsAsksWithTheTitleAsName) {
  GtkWindow* dialog = Ask(OLECMDID_SAVEAS, GTK_TYPE_FILE_CHOOSER_DIALOG);
  auto* chooser = GTK_FILE_CHOOSER(dialog);
  char* name = gtk_file_chooser_get_current_name(chooser);
  EXPECT_STREQ(name, "A page 1 2.html");
  g_free(name);
  DesktopInput input(GTK_WIDGET(dialog));
  GFile* place = g_file_new_for_path(folder.c_str());
  gtk_file_chooser_set_current_folder(chooser, place, nullptr);
  ASSERT_TRUE(WaitUntil([&] {
    GFile* file = gtk_file_chooser_get_file(chooser);
    const bool there = file != nullptr && g_file_has_prefix(file, place) != FALSE;
    if (file != nullptr) g_object_unref(file);
    return there;
  }));
  g_object_unref(place);
  input.Press({"Return"});
  EXPECT_TRUE(WaitUntil([&] { return ReadAll(folder / "A page 1 2.html").ends_with("</html>"); }));
  EXPECT_TRUE(Open(GTK_TYPE_FILE_CHOOSER_DIALOG).empty());
}

TEST_F(Dialogs, ASavedPageIsOneThatABrowserOpens) {
  Save("x.html");
  ASSERT_TRUE(WaitUntil([&] { return ReadAll(folder / "x.html").ends_with("</html>"); }));
  ASSERT_TRUE(window.Load(folder / "x.html"));
  EXPECT_EQ(
      window.Script("return document.title + '|' + document.body.textContent + '|' + document.links[0].href"),
      "A page: 1/2|Grüße on|" + server.Url("/next"));
}

TEST_F(Dialogs, SaveAsWritesAWholePageIntoOneFile) {
  Save("x.mhtml");
  ASSERT_TRUE(WaitUntil([&] { return !ReadAll(folder / "x.mhtml").empty(); }));
  EXPECT_THAT(ReadAll(folder / "x.mhtml"), HasSubstr("multipart/related"));
  EXPECT_THAT(ReadAll(folder / "x.mhtml"), HasSubstr(server.Url("/a")));
}

TEST_F(Dialogs, WhatIsNoHtmlIsSavedAsItCame) {
  server.Serve("/t", {"plain\ntext", "text/plain"});
  ASSERT_TRUE(window.Load(server.Url("/t")));
  Save("x.txt");
  ASSERT_TRUE(WaitUntil([&] { return !ReadAll(folder / "x.txt").empty(); }));
  EXPECT_EQ(ReadAll(folder / "x.txt"), "plain\ntext");
}

TEST_F(Dialogs, AFailedSaveIsSaidInPlainWords) {
  for (const char* name : {"no/such/folder.html", "no/such/folder.mhtml"}) {
    SCOPED_TRACE(name);
    Save(name);
    ASSERT_TRUE(WaitUntil([&] { return !Open(GTK_TYPE_MESSAGE_DIALOG).empty(); }));
    GtkWindow* box = Open(GTK_TYPE_MESSAGE_DIALOG).front();
    EXPECT_EQ(TextOf(box), "The page was not saved|This folder is not there any more. Choose another one.");
    gtk_dialog_response(GTK_DIALOG(box), GTK_RESPONSE_CLOSE);
  }
}

TEST_F(Dialogs, AWindowThatClosesWhileItsPageIsSavedDoesNoHarm) {
  Save("x.html");
  Save("x.mhtml");
  window.CloseWindow();
  window.Owned().reset();
  TestWindow other;
  EXPECT_TRUE(other.Load(server.Url("/a")));
}

TEST(SavingWords, NameTheFullDisk) {
  GError* error = g_error_new_literal(G_IO_ERROR, G_IO_ERROR_NO_SPACE, "ENOSPC");
  EXPECT_THAT(gtk::WordsForSaving(error), HasSubstr("no more room on the disk"));
  g_error_free(error);
}

TEST(FileNames, AreOneValidNameWhateverTheTitle) {
  EXPECT_EQ(gtk::FileNameFor("", "text/html"), "page.html");
  EXPECT_EQ(gtk::FileNameFor("A dog", "text/html"), "A dog.html");
  EXPECT_EQ(gtk::FileNameFor("../../etc/passwd", "text/html"), "etc passwd.html");
  EXPECT_EQ(gtk::FileNameFor("~root/.x\n\ty", "text/html"), "root .x y.html");
  EXPECT_EQ(gtk::FileNameFor("..", ""), "page.html");
  EXPECT_EQ(gtk::FileNameFor("a\u202egpj.exe", "text/html"), "a gpj.exe.html");
  EXPECT_EQ(gtk::FileNameFor("dog.jpg", "image/jpeg"), "dog.jpg");
  EXPECT_EQ(gtk::FileNameFor("dog", "image/../../x"), "dog");
  EXPECT_EQ(gtk::FileNameFor(std::string("a\0b\xff", 4), "text/plain"), "a\ufffdb\ufffd.txt");
  for (const std::string& sign : {std::string("x"), std::string("ñ"), std::string("\U0001f600")}) {
    std::ostringstream title;
    for (int i = 0; i < 10000; ++i) title << sign;
    const std::string name = gtk::FileNameFor(title.str(), "text/html");
    EXPECT_LE(name.size(), 255U);
    EXPECT_GT(name.size(), 200U);
    EXPECT_TRUE(g_utf8_validate(name.data(), static_cast<gssize>(name.size()), nullptr));
  }
}

TEST_F(Dialogs, PropertiesShowTitleAndAddressOfAnyLength) {
  window.RunScript("document.title = 'x'.repeat(10000)");
  ASSERT_TRUE(window.WaitFor("TitleChange xxx"));
  GtkWindow* box = Ask(OLECMDID_PROPERTIES, GTK_TYPE_MESSAGE_DIALOG);
  const std::string text = TextOf(box);
  EXPECT_THAT(text, HasSubstr(server.Url("/a")));
  EXPECT_LT(text.size(), 1000U);
}

TEST_F(Dialogs, PrintingWithoutAPrinterIsSaid) {
  window.Browser().ExecWB(OLECMDID_PRINT, 2);
  ASSERT_TRUE(WaitUntil([&] { return !Open(GTK_TYPE_MESSAGE_DIALOG).empty(); }));
  EXPECT_THAT(TextOf(Open(GTK_TYPE_MESSAGE_DIALOG).front()), HasSubstr("The page was not printed"));
}

TEST_F(Dialogs, APageMayAskForPrintingOnceForEachPress) {
  server.Serve("/p",
               {"<body onload=print() style='margin:0' onclick='for (let i = 0; i < 9; ++i) window.print()'>"
                "x<p style='height:500px'>"});
  ASSERT_TRUE(window.Load(server.Url("/p")));
  window.RunScript("for (let i = 0; i < 100; ++i) print()");
  window.WaitForScripts();
  EXPECT_TRUE(Open(GTK_TYPE_PRINT_UNIX_DIALOG).empty());
  DesktopInput input(GTK_WIDGET(window.View()));
  input.Click(100, 100);
  ASSERT_TRUE(WaitUntil([&] { return Open(GTK_TYPE_PRINT_UNIX_DIALOG).size() == 1; }));
  window.WaitForScripts();
  gtk_dialog_response(GTK_DIALOG(Open(GTK_TYPE_PRINT_UNIX_DIALOG).front()), GTK_RESPONSE_CANCEL);
  window.RunScript("print()");
  window.WaitForScripts();
  EXPECT_TRUE(Open(GTK_TYPE_PRINT_UNIX_DIALOG).empty());
}

}  // namespace
}  // namespace kivandra::testing
