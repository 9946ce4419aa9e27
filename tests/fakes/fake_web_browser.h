// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "fakes/fake_controls.h"
#include "platform/web_browser.h"

namespace kivandra::fakes {

/// A navigation that writes its answer to the journal. Unanswered means refused, as in the real one.
class FakeNavigation : public Navigation {
 public:
  FakeNavigation(std::string url, Journal& journal) : url_(std::move(url)), journal_(journal) {}
  ~FakeNavigation() override { FakeNavigation::Refuse(); }

  [[nodiscard]] const std::string& Url() const override { return url_; }
  void Allow() override { Answer("allow ", true); }
  void AllowFile() override { Answer("allow file ", true); }
  void Refuse() override { Answer("refuse ", false); }
  [[nodiscard]] bool Pending() const override { return pending_; }
  void OnDropped(std::function<void()> handler) override { dropped_ = std::move(handler); }

  /// The engine gives the question up.
  void Drop() {
    if (!pending_) {
      return;
    }
    pending_ = false;
    journal_.Note("dropped " + url_);
    if (dropped_) {
      std::exchange(dropped_, nullptr)();
    }
  }
  [[nodiscard]] bool Allowed() const { return allowed_; }

  /// Runs when the navigation is allowed.
  std::function<void()> whenAllowed;

 private:
  void Answer(const char* what, bool allowed) {
    if (!pending_) {
      return;
    }
    pending_ = false;
    allowed_ = allowed;
    journal_.Note(what + url_);
    if (allowed && whenAllowed) {
      whenAllowed();
    }
  }

  std::string url_;
  Journal& journal_;
  bool pending_ = true;
  bool allowed_ = false;
  std::function<void()> dropped_;
};

class FakeHtmlDocument : public HtmlDocument {
 public:
  FakeHtmlDocument(std::string name, Journal& journal) : name_(std::move(name)), journal_(journal) {}
  void PaintText(const std::string& text, int bound) override {
    journal_.Call(name_ + ".PaintText " + Quoted(text) + ", " + std::to_string(bound));
  }

 private:
  std::string name_;
  Journal& journal_;
};

class FakePageFrame : public PageFrame {
 public:
  FakePageFrame(std::string name, bool top, Journal& journal)
      : document(std::make_shared<FakeHtmlDocument>(name, journal)),
        name_(std::move(name)),
        top_(top),
        journal_(journal) {}
  [[nodiscard]] bool IsTopLevel() const override { return top_; }
  void ClearUnloadHandler() override { journal_.Call(name_ + ".onunload = 1"); }
  [[nodiscard]] std::shared_ptr<HtmlDocument> Document() override { return document; }

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
  FakeWebBrowser(const std::string& name, Journal& journal)
      : FakeControl(name, journal), top(name + ".Document", true, journal), journal_(journal) {}

  void SetEvents(WebBrowserEvents* receiver) override { events = receiver; }
  void Navigate(const std::string& address) override {
    Say("Navigate " + Quoted(address));
    Ask(address);
  }
  void Stop() override { Say("Stop"); }
  void GoBack() override {
    Say("GoBack");
    if (back.empty()) {
      throw PlatformError(kInvalidCall, "no page behind");
    }
    if (onBack) {
      onBack();
    }
    Ask(back);
  }
  void GoForward() override {
    Say("GoForward");
    if (forward.empty()) {
      throw PlatformError(kInvalidCall, "no page before");
    }
    Ask(forward);
  }
  void Refresh() override {
    Say("Refresh");
    Ask(locationURL);
  }
  [[nodiscard]] std::string LocationURL() const override { return locationURL; }
  [[nodiscard]] std::string LocationName() const override { return locationName; }
  [[nodiscard]] bool Busy() const override { return busy; }
  [[nodiscard]] PageFrame* Page() override { return hasPage ? &top : nullptr; }
  [[nodiscard]] int QueryStatusWB(int command) const override {
    Say("QueryStatusWB " + std::to_string(command));
    return 3;
  }
  void ExecWB(int command, int option, int value) override {
    Say("ExecWB " + std::to_string(command) + ", " + std::to_string(option) +
        (command == OLECMDID_ZOOM ? ", " + std::to_string(value) : ""));
    if (onExec) {
      onExec(command);
    }
  }
  void SetRegisterAsBrowser(bool value) override {
    Say(std::string("RegisterAsBrowser = ") + (value ? "True" : "False"));
  }
  void SetScriptObject(const std::string& name, ScriptObject* object) override {
    Say("ScriptObject " + name + (object != nullptr ? " set" : " taken"));
    scriptObject = object;
  }

  /// The engine asks about an address of its own accord: a link, a frame, a redirect.
  std::shared_ptr<FakeNavigation> Ask(const std::string& url) {
    auto navigation = std::make_shared<FakeNavigation>(url, journal_);
    asked.push_back(navigation);
    if (events != nullptr) {
      events->BeforeNavigate2(navigation);
    }
    return navigation;
  }
  /// A page arrives: what the engine raises for a top-level document, in its order.
  void ShowPage(const std::string& url, const std::string& title) {
    locationURL = url;
    locationName = title;
    if (events != nullptr) {
      events->DownloadBegin();
    }
    if (events != nullptr) {
      events->TitleChange(title);
    }
    if (events != nullptr) {
      events->NavigateComplete2(top, url);
    }
    if (events != nullptr) {
      events->DocumentComplete(top, url);
    }
    if (events != nullptr) {
      events->DownloadComplete();
    }
  }

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
