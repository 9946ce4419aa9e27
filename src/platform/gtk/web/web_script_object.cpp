// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gtk/web/web_script_object.h"

#include <sstream>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/gtk/web/web_frames.h"
#include "platform/platform_error.h"

namespace kivandra::gtk {
namespace {

constexpr char kMessageName[] = "program";

/// Runs in the page's own world before any script of the page, takes hold of the message channel while that
/// is still untouched, and makes the object. If there is none yet, it waits for the event that the program's
/// own world sends to a page that is there already, and asks then; no page knows the event's name.
constexpr char kOfferScript[] = R"js(
((word, wakeEvent, description) => {
  const channel = window.webkit.messageHandlers.program;
  const post = channel.postMessage.bind(channel);
  const send = (member, values) => post([word, member, ...values]);
  const {defineProperty, freeze} = Object;
  const offer = ([name, ...members]) => {
    const object = {};
    for (const [member, isProperty] of members) {
      defineProperty(object, member, isProperty
          ? {enumerable: true, get: () => send(member, []), set: (value) => { send(member, [value]).catch(() => {}); }}
          : {enumerable: true, value: (...values) => send(member, values)});
    }
    defineProperty(window, name, {value: freeze(object), writable: false, configurable: false, enumerable: true});
  };
  if (description) {
    offer(description);
  } else {
    document.addEventListener(wakeEvent, (event) => {
      event.stopImmediatePropagation();
      post([word]).then((answer) => offer(JSON.parse(answer))).catch(() => {});
    }, {once: true});
  }
})
)js";

std::string RandomWord() {
  std::string word = "w";
  for (int i = 0; i < 2; ++i) {
    char* part = g_uuid_string_random();  // 122 random bits from the system
    word += part;
    g_free(part);
  }
  return word;
}

/// The text as a script's literal.
std::string Quoted(std::string_view text) {
  std::string quoted;
  quoted.reserve(text.size() + 2);
  quoted.push_back('"');
  for (const char c : text) {
    if (c == '"' || c == '\\') quoted.push_back('\\');
    quoted.push_back(c);
  }
  quoted.push_back('"');
  return quoted;
}

std::string TextOf(JSCValue* value) {
  char* text = jsc_value_to_string(value);
  std::string result = text != nullptr ? text : "";
  g_free(text);
  return result;
}

ScriptValue FromScript(JSCValue* value) {
  if (jsc_value_is_null(value) || jsc_value_is_undefined(value)) return {};
  if (jsc_value_is_boolean(value)) return jsc_value_to_boolean(value) != FALSE;
  if (jsc_value_is_number(value)) return jsc_value_to_double(value);
  if (jsc_value_is_string(value)) return TextOf(value);
  throw PlatformError(kInvalidCall, "A script passed a value that is neither text, number nor Boolean.");
}

JSCValue* ToScript(JSCContext* context, const ScriptValue& value) {
  struct Visitor {
    JSCContext* context;
    JSCValue* operator()(std::monostate) const { return jsc_value_new_undefined(context); }
    JSCValue* operator()(bool truth) const { return jsc_value_new_boolean(context, truth); }
    JSCValue* operator()(double number) const { return jsc_value_new_number(context, number); }
    JSCValue* operator()(const std::string& text) const {
      return jsc_value_new_string(context, text.c_str());
    }
  };
  return std::visit(Visitor{context}, value);
}

/// The elements of the array that a page posted; empty if it posted something else.
std::vector<JSCValue*> ElementsOf(JSCValue* message) {
  std::vector<JSCValue*> elements;
  if (!jsc_value_is_array(message)) return elements;
  JSCValue* length = jsc_value_object_get_property(message, "length");
  const auto count = static_cast<guint>(jsc_value_to_int32(length));
  g_object_unref(length);
  constexpr guint kMostElements = 32;
  for (guint i = 0; i < count && i < kMostElements; ++i) {
    elements.push_back(jsc_value_object_get_property_at_index(message, i));
  }
  return elements;
}

}  // namespace

ScriptObjectHost::ScriptObjectHost(WebKitUserContentManager* manager, WebKitWebView* view)
    : manager_(manager), view_(view), word_(RandomWord()), wakeEvent_(RandomWord()) {}

ScriptObjectHost::~ScriptObjectHost() {
  if (script_ != nullptr) webkit_user_script_unref(script_);
}

void ScriptObjectHost::Start() {
  webkit_user_content_manager_register_script_message_handler_with_reply(manager_, kMessageName, nullptr);
  signals_.Connect<&ScriptObjectHost::OnMessage>(manager_, "script-message-with-reply-received::program",
                                                 this);
  Inject();
}

void ScriptObjectHost::Set(const std::string& name, ScriptObject* object) {
  if (object == object_ && name == name_) return;
  object_ = object;
  name_ = name;
  Inject();
  if (object_ == nullptr) return;
  const std::string wake = "document.dispatchEvent(new Event(" + Quoted(wakeEvent_) + "))";
  webkit_web_view_evaluate_javascript(view_, wake.c_str(), -1, kOwnWorld, nullptr, nullptr, nullptr, nullptr);
}

void ScriptObjectHost::Cut() {
  object_ = nullptr;
  signals_.Cut();
}

void ScriptObjectHost::Inject() {
  if (script_ != nullptr) {
    webkit_user_content_manager_remove_script(manager_, script_);
    webkit_user_script_unref(script_);
  }
  const std::string source = std::string(kOfferScript) + "(" + Quoted(word_) + ", " + Quoted(wakeEvent_) +
                             ", " + (object_ != nullptr ? Description() : "null") + ");";
  script_ = webkit_user_script_new(source.c_str(), WEBKIT_USER_CONTENT_INJECT_TOP_FRAME,
                                   WEBKIT_USER_SCRIPT_INJECT_AT_DOCUMENT_START, nullptr, nullptr);
  webkit_user_content_manager_add_script(manager_, script_);
}

std::string ScriptObjectHost::Description() const {
  std::ostringstream description;
  description << '[' << Quoted(name_);
  for (const ScriptObject::Member& member : object_->Members()) {
    description << ", [" << Quoted(member.name) << ", " << (member.isProperty ? "true" : "false") << ']';
  }
  description << ']';
  return description.str();
}

gboolean ScriptObjectHost::OnMessage(JSCValue* message, WebKitScriptMessageReply* reply) {
  const std::vector<JSCValue*> elements = ElementsOf(message);
  JSCContext* context = jsc_value_get_context(message);
  JSCValue* answer = nullptr;
  try {
    if (object_ == nullptr || elements.empty() || TextOf(elements[0]) != word_) {
      throw PlatformError(kInvalidCall, "There is no such object.");
    }
    if (elements.size() == 1) {
      answer = jsc_value_new_string(context, Description().c_str());
    } else {
      std::vector<ScriptValue> arguments;
      for (std::size_t i = 2; i < elements.size(); ++i) arguments.push_back(FromScript(elements[i]));
      answer = ToScript(context, object_->Invoke(TextOf(elements[1]), arguments));
    }
    webkit_script_message_reply_return_value(reply, answer);
  } catch (const PlatformError& error) {
    webkit_script_message_reply_return_error_message(reply, error.what());
  }
  if (answer != nullptr) g_object_unref(answer);
  for (JSCValue* element : elements) g_object_unref(element);
  return TRUE;
}

}  // namespace kivandra::gtk
