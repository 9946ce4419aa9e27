// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gtk/web/web_frames.h"

#include <cstring>
#include <string_view>

#include "platform/gtk/web/web_address.h"

namespace kivandra::gtk {
namespace {

/// Runs in every document at its start, in the program's own world. Setting the attribute replaces the
/// handler that the page gave its body, whichever world set it; the body may come, or be replaced, until the
/// page is complete.
constexpr char kReporterScript[] = R"js(
(() => {
  const clearUnload = () => { if (document.body) document.body.setAttribute('onunload', '1'); };
  const clearUnloadForGood = () => {
    clearUnload();
    document.addEventListener('DOMContentLoaded', clearUnload);
    window.addEventListener('load', clearUnload);
  };
  if (window === window.top) {
    if (window.kivandraClearsUnload) clearUnloadForGood();
    window.kivandraClearUnload = clearUnloadForGood;
    return;
  }
  const post = (event) =>
      window.webkit.messageHandlers.frame.postMessage([event, location.href, document.contentType || '']);
  const postNavigate = () => post('navigate').then((clear) => { if (clear) clearUnloadForGood(); }, () => {});
  postNavigate();
  window.addEventListener('load', () => post('complete').catch(() => {}));
  window.addEventListener('hashchange', () => { postNavigate(); post('complete').catch(() => {}); });
})();
)js";

constexpr char kMessageName[] = "frame";

bool IsHtmlType(std::string_view type) { return type == "text/html" || type == "application/xhtml+xml"; }

std::string ElementText(JSCValue* array, guint index) {
  JSCValue* element = jsc_value_object_get_property_at_index(array, index);
  char* text = jsc_value_to_string(element);
  std::string result = text != nullptr ? text : "";
  g_free(text);
  g_object_unref(element);
  return result;
}

/// The document of a frame inside a page. The engine runs the program's scripts on request in the page itself
/// alone, so nothing is painted here.
class InnerDocument final : public HtmlDocument {
 public:
  void PaintText(const std::string& /*text*/, int /*bound*/) override {}
};

/// A frame inside a page, for the length of one event.
class InnerFrame final : public PageFrame {
 public:
  explicit InnerFrame(bool isHtml) : isHtml_(isHtml) {}

  [[nodiscard]] bool IsTopLevel() const override { return false; }
  void ClearUnloadHandler() override { clearUnload_ = true; }
  [[nodiscard]] std::shared_ptr<HtmlDocument> Document() override {
    return isHtml_ ? std::make_shared<InnerDocument>() : nullptr;
  }
  [[nodiscard]] bool ClearsUnload() const { return clearUnload_; }

 private:
  bool isHtml_;
  bool clearUnload_ = false;
};

}  // namespace

void TopFrame::ClearUnloadHandler() {
  // A page is reported before anything of it is read: on a busy machine its first script may still be to
  // come.
  constexpr const char* kScript =
      "window.kivandraClearsUnload = true; if (window.kivandraClearUnload) window.kivandraClearUnload();";
  webkit_web_view_evaluate_javascript(view_, kScript, -1, kOwnWorld, nullptr, nullptr, nullptr, nullptr);
}

std::shared_ptr<HtmlDocument> TopFrame::Document() {
  WebKitWebResource* resource = webkit_web_view_get_main_resource(view_);
  WebKitURIResponse* response = resource != nullptr ? webkit_web_resource_get_response(resource) : nullptr;
  const char* type = response != nullptr ? webkit_uri_response_get_mime_type(response) : nullptr;
  return type != nullptr && IsHtmlType(type) ? std::make_shared<WebDocument>(page_) : nullptr;
}

void FrameReporter::Start(Receiver* receiver) {
  receiver_ = receiver;
  WebKitUserScript* script = webkit_user_script_new_for_world(
      kReporterScript, WEBKIT_USER_CONTENT_INJECT_ALL_FRAMES, WEBKIT_USER_SCRIPT_INJECT_AT_DOCUMENT_START,
      kOwnWorld, nullptr, nullptr);
  webkit_user_content_manager_add_script(manager_, script);
  webkit_user_script_unref(script);
  webkit_user_content_manager_register_script_message_handler_with_reply(manager_, kMessageName, kOwnWorld);
  signals_.Connect<&FrameReporter::OnMessage>(manager_, "script-message-with-reply-received::frame", this);
}

void FrameReporter::Cut() {
  receiver_ = nullptr;
  signals_.Cut();
}

gboolean FrameReporter::OnMessage(JSCValue* message, WebKitScriptMessageReply* reply) {
  const std::string event = ElementText(message, 0);
  const std::string url = ElementText(message, 1);
  InnerFrame frame(IsHtmlType(ElementText(message, 2)));
  if (receiver_ != nullptr && !IsBlankDocument(url)) {
    if (event == "navigate") {
      receiver_->FrameNavigated(frame, url);
    } else {
      receiver_->FrameCompleted(frame, url);
    }
  }
  JSCValue* answer = jsc_value_new_boolean(jsc_value_get_context(message), frame.ClearsUnload());
  webkit_script_message_reply_return_value(reply, answer);
  g_object_unref(answer);
  return TRUE;
}

}  // namespace kivandra::gtk
