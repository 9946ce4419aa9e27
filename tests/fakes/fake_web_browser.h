// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "fakes/fake_controls.h"
#include "platform/web_browser.h"

namespace kivandra::fakes {

/// A navigation that writes its answer to the journal. Unanswered means refused, as in the real one.
class FakeNavigation : public Navigation {
 public:
  FakeNavigation(std::string url, Journal& journal);
  ~FakeNavigation() override;

  [[nodiscard]] const std::string& Url() const override;
  void Allow() override;
  void AllowFile() override;
  void Refuse() override;
  [[nodiscard]] bool Pending() const override;
  void OnDropped(std::function<void()> handler) override;

  /// The engine gives the question up.
  void Drop();
  [[nodiscard]] bool Allowed() const;

  /// Runs when the navigation is allowed.
  std::function<void()> whenAllowed;

 private:
  void Answer(const char* what, bool allowed);

  std::string url_;
  Journal& journal_;
  bool pending_ = true;
  bool allowed_ = false;
  std::function<void()> dropped_;
};

class FakeHtmlDocument : public HtmlDocument {
 public:
  FakeHtmlDocument(std::string name, Journal& journal);
  void PaintText(const std::string& text, int bound) override;

 private:
  std::string name_;
  Journal& journal_;
};

class FakePageFrame : public PageFrame {
 public:
  FakePageFrame(std::string name, bool top, Journal& journal);
  [[nodiscard]] bool IsTopLevel() const override;
  void ClearUnloadHandler() override;
  [[nodiscard]] std::shared_ptr<HtmlDocument> Document() override;

  std::shared_ptr<HtmlDocument> document;

 private:
  std::string name_;
  bool top_;
  Journal& journal_;
};

/// An engine without pages: it raises BeforeNavigate2 where the real one does; the test raises the other
/// events.
class FakeWebBrowser : public FakeControl, public WebBrowser {
 public:
  FakeWebBrowser(const std::string& name, Journal& journal);

  void SetEvents(WebBrowserEvents* receiver) override;
  void Navigate(const std::string& address) override;
  void Stop() override;
  void GoBack() override;
  void GoForward() override;
  void Refresh() override;
  [[nodiscard]] std::string LocationURL() const override;
  [[nodiscard]] std::string LocationName() const override;
  [[nodiscard]] bool Busy() const override;
  [[nodiscard]] PageFrame* Page() override;
  [[nodiscard]] int QueryStatusWB(int command) const override;
  void ExecWB(int command, int option, int value) override;
  void SetRegisterAsBrowser(bool value) override;
  void SetScriptObject(const std::string& name, ScriptObject* object) override;

  /// The engine asks about an address of its own accord: a link, a frame, a redirect.
  std::shared_ptr<FakeNavigation> Ask(const std::string& url);
  /// A page arrives: what the engine raises for a top-level document, in its order.
  void ShowPage(const std::string& url, const std::string& title);

  WebBrowserEvents* events = nullptr;
  std::vector<std::weak_ptr<FakeNavigation>> asked;
  ScriptObject* scriptObject = nullptr;
  std::string locationURL;
  std::string locationName;
  std::string back;
  std::string forward;
  bool busy = false;
  std::function<void(int)> onExec;
  std::function<void()> onBack;  ///< runs inside GoBack, before the gate is asked
  FakePageFrame top;
  bool hasPage = true;  ///< whether there is a page to speak of

 private:
  Journal& journal_;
};

}  // namespace kivandra::fakes
