// SPDX-License-Identifier: GPL-3.0-or-later
#include "fakes/fake_web_browser.h"

#include <utility>

namespace kivandra::fakes {

FakeNavigation::FakeNavigation(std::string url, Journal& journal) : url_(std::move(url)), journal_(journal) {}

FakeNavigation::~FakeNavigation() { FakeNavigation::Refuse(); }

const std::string& FakeNavigation::Url() const { return url_; }

void FakeNavigation::Allow() { Answer("allow ", true); }

void FakeNavigation::AllowFile() { Answer("allow file ", true); }

void FakeNavigation::Refuse() { Answer("refuse ", false); }

bool FakeNavigation::Pending() const { return pending_; }

void FakeNavigation::OnDropped(std::function<void()> handler) { dropped_ = std::move(handler); }

void FakeNavigation::Drop() {
  if (!pending_) {
    return;
  }
  pending_ = false;
  journal_.Note("dropped " + url_);
  if (dropped_) {
    std::exchange(dropped_, nullptr)();
  }
}

bool FakeNavigation::Allowed() const { return allowed_; }

void FakeNavigation::Answer(const char* what, bool allowed) {
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

FakeHtmlDocument::FakeHtmlDocument(std::string name, Journal& journal)
    : name_(std::move(name)), journal_(journal) {}

void FakeHtmlDocument::PaintText(const std::string& text, int bound) {
  journal_.Call(name_ + ".PaintText " + Quoted(text) + ", " + std::to_string(bound));
}

FakePageFrame::FakePageFrame(std::string name, bool top, Journal& journal)
    : document(std::make_shared<FakeHtmlDocument>(name, journal)),
      name_(std::move(name)),
      top_(top),
      journal_(journal) {}

bool FakePageFrame::IsTopLevel() const { return top_; }

void FakePageFrame::ClearUnloadHandler() { journal_.Call(name_ + ".onunload = 1"); }

std::shared_ptr<HtmlDocument> FakePageFrame::Document() { return document; }

FakeWebBrowser::FakeWebBrowser(const std::string& name, Journal& journal)
    : FakeControl(name, journal), top(name + ".Document", true, journal), journal_(journal) {}

void FakeWebBrowser::SetEvents(WebBrowserEvents* receiver) { events = receiver; }

void FakeWebBrowser::Navigate(const std::string& address) {
  Say("Navigate " + Quoted(address));
  Ask(address);
}

void FakeWebBrowser::Stop() { Say("Stop"); }

void FakeWebBrowser::GoBack() {
  Say("GoBack");
  if (back.empty()) {
    throw PlatformError(kInvalidCall, "no page behind");
  }
  if (onBack) {
    onBack();
  }
  Ask(back);
}

void FakeWebBrowser::GoForward() {
  Say("GoForward");
  if (forward.empty()) {
    throw PlatformError(kInvalidCall, "no page before");
  }
  Ask(forward);
}

void FakeWebBrowser::Refresh() {
  Say("Refresh");
  Ask(locationURL);
}

std::string FakeWebBrowser::LocationURL() const { return locationURL; }

std::string FakeWebBrowser::LocationName() const { return locationName; }

bool FakeWebBrowser::Busy() const { return busy; }

PageFrame* FakeWebBrowser::Page() { return hasPage ? &top : nullptr; }

int FakeWebBrowser::QueryStatusWB(int command) const {
  Say("QueryStatusWB " + std::to_string(command));
  return 3;
}

void FakeWebBrowser::ExecWB(int command, int option, int value) {
  Say("ExecWB " + std::to_string(command) + ", " + std::to_string(option) +
      (command == OLECMDID_ZOOM ? ", " + std::to_string(value) : ""));
  if (onExec) {
    onExec(command);
  }
}

void FakeWebBrowser::SetRegisterAsBrowser(bool value) {
  Say(std::string("RegisterAsBrowser = ") + (value ? "True" : "False"));
}

void FakeWebBrowser::SetScriptObject(const std::string& name, ScriptObject* object) {
  Say("ScriptObject " + name + (object != nullptr ? " set" : " taken"));
  scriptObject = object;
}

std::shared_ptr<FakeNavigation> FakeWebBrowser::Ask(const std::string& url) {
  auto navigation = std::make_shared<FakeNavigation>(url, journal_);
  asked.push_back(navigation);
  if (events != nullptr) {
    events->BeforeNavigate2(navigation);
  }
  return navigation;
}

void FakeWebBrowser::ShowPage(const std::string& url, const std::string& title) {
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

}  // namespace kivandra::fakes
