// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/engine_test.h"

#include <cstdlib>
#include <filesystem>

#include "platform/gtk/gtk_start.h"
#include "platform/gtk/web/web_browser_control.h"

namespace kivandra::testing {
namespace {

constexpr int kPatienceMilliseconds = 20000;

std::unique_ptr<gtk::WebEngine>& EngineSlot() {
  static std::unique_ptr<gtk::WebEngine> engine;
  return engine;
}

struct ScriptAnswer {
  bool done = false;
  std::string text;
};

void OnScriptDone(GObject* source, GAsyncResult* result, gpointer data) {
  const std::unique_ptr<std::shared_ptr<ScriptAnswer>> answer(
      static_cast<std::shared_ptr<ScriptAnswer>*>(data));
  GError* error = nullptr;
  JSCValue* value =
      webkit_web_view_call_async_javascript_function_finish(WEBKIT_WEB_VIEW(source), result, &error);
  if (value != nullptr) {
    char* text = jsc_value_to_string(value);
    (*answer)->text = text;
    g_free(text);
    g_object_unref(value);
  } else {
    (*answer)->text = std::string("error: ") + error->message;
    g_error_free(error);
  }
  (*answer)->done = true;
}

}  // namespace

gtk::WebEngine& Engine() {
  if (!EngineSlot()) EngineSlot() = std::make_unique<gtk::WebEngine>(KIVANDRA_ASSETS "/pages");
  return *EngineSlot();
}

bool WaitUntil(const std::function<bool()>& done) {
  bool late = false;
  const guint alarm = g_timeout_add(
      kPatienceMilliseconds,
      [](gpointer flag) -> gboolean {
        *static_cast<bool*>(flag) = true;
        return G_SOURCE_CONTINUE;
      },
      &late);
  while (!done() && !late) g_main_context_iteration(nullptr, TRUE);
  g_source_remove(alarm);
  return done();
}

void Settle() {
  while (g_main_context_iteration(nullptr, FALSE) != FALSE) {
  }
}

TestWindow::TestWindow() : window_(std::make_unique<Gtk::Window>()) {
  place_ = Gtk::make_managed<Gtk::Box>();
  window_->set_child(*place_);
  window_->set_default_size(800, 600);
  browser_ = Engine().MakeBrowser(*place_);
  browser_->SetEvents(this);
  window_->present();
}

TestWindow::~TestWindow() = default;

WebKitWebView* TestWindow::View() {
  return dynamic_cast<gtk::WebBrowserControl&>(*browser_).View()->Widget();
}

void TestWindow::CloseWindow() {
  gtk_window_destroy(window_->gobj());
  window_.reset();
}

int TestWindow::Count(const std::string& beginning) const {
  int count = 0;
  for (const std::string& line : journal) count += line.starts_with(beginning) ? 1 : 0;
  return count;
}

std::string TestWindow::Last(const std::string& beginning) const {
  for (auto line = journal.rbegin(); line != journal.rend(); ++line) {
    if (line->starts_with(beginning)) return *line;
  }
  return {};
}

bool TestWindow::Load(const std::string& address) {
  const int before = Count("DocumentComplete top ");
  browser_->Navigate(address);
  return WaitUntil([&] { return Count("DocumentComplete top ") > before && !browser_->Busy(); });
}

bool TestWindow::WaitFor(const std::string& beginning, int times) {
  return WaitUntil([&] { return Count(beginning) >= times; });
}

std::string TestWindow::Script(const std::string& source) {
  const auto answer = std::make_shared<ScriptAnswer>();
  webkit_web_view_call_async_javascript_function(View(), source.c_str(), -1, nullptr, nullptr, nullptr,
                                                 nullptr, OnScriptDone,
                                                 new std::shared_ptr<ScriptAnswer>(answer));
  WaitUntil([&] { return answer->done; });
  return answer->text;
}

void TestWindow::RunScript(const std::string& source) {
  webkit_web_view_evaluate_javascript(View(), source.c_str(), -1, nullptr, nullptr, nullptr, nullptr,
                                      nullptr);
}

void TestWindow::WaitForScripts() {
  (void)Script("return new Promise((done) => setTimeout(() => setTimeout(done, 0), 0))");
  (void)Script("return 1");
}

void TestWindow::BeforeNavigate2(std::shared_ptr<Navigation> navigation) {
  journal.push_back("BeforeNavigate2 " + navigation->Url());
  judge(std::move(navigation));
}

void TestWindow::NavigateComplete2(PageFrame& pDisp, const std::string& URL) {
  journal.push_back("NavigateComplete2 " + std::string(pDisp.IsTopLevel() ? "top " : "frame ") + URL);
  onNavigated(pDisp);
}

void TestWindow::DocumentComplete(PageFrame& pDisp, const std::string& URL) {
  journal.push_back("DocumentComplete " + std::string(pDisp.IsTopLevel() ? "top " : "frame ") + URL +
                    (pDisp.Document() ? "" : " (no document)"));
}

void TestWindow::CommandStateChange(long Command, bool Enable) {
  journal.push_back("CommandStateChange " + std::to_string(Command) + (Enable ? " true" : " false"));
}

void TestWindow::NewWindow2(WebBrowser*& ppDisp, bool& Cancel) {
  journal.emplace_back("NewWindow2");
  newWindow(ppDisp, Cancel);
}

void TestWindow::OnQuit() {
  journal.emplace_back("OnQuit");
  onQuit();
}

}  // namespace kivandra::testing

int main(int argc, char** argv) {
  ::testing::InitGoogleTest(&argc, argv);
  kivandra::gtk::PrepareEngineEnvironment();
  if (!kivandra::gtk::StartToolkit(KIVANDRA_ASSETS)) return 1;
  const int result = RUN_ALL_TESTS();
  kivandra::testing::EngineSlot().reset();
  return result;
}
