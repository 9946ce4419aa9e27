// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/automation_client.h"

#include <chrono>

#include "platform/linux/automation_names.h"
#include "platform/linux/bus_connection.h"
#include "platform/platform_error.h"

namespace kivandra::linux_impl {
namespace {

/// A call may run the whole start of the program, with its splash.
constexpr int kCallMilliseconds = 60'000;

}  // namespace

AutomationClient::AutomationClient() : connection_(ConnectToSessionBus(std::chrono::seconds(10))) {}

AutomationClient::~AutomationClient() { g_clear_object(&connection_); }

AutomationClient::Answer AutomationClient::Open(const std::string& address) {
  bool visible = false;
  Answer answer = ReadVisible(visible);
  if (answer == Answer::kTaken && !visible) {
    answer = Call("org.freedesktop.DBus.Properties", "Set",
                  g_variant_new("(ssv)", kAutomationInterface, "Visible", g_variant_new_boolean(TRUE)));
  }
  if (answer == Answer::kTaken && !address.empty()) {
    answer = Navigate(address);
    if (answer == Answer::kNoWindow) {
      answer = Call(kAutomationInterface, "NewWindow", nullptr);
      answer = answer == Answer::kTaken ? Navigate(address) : answer;
    }
  }
  if (answer == Answer::kTaken) {
    (void)Call(kFrameInterface, "Present", nullptr);
  }
  return answer;
}

AutomationClient::Answer AutomationClient::Navigate(const std::string& address) {
  return Call(kAutomationInterface, "Navigate", g_variant_new("(s)", address.c_str()));
}

AutomationClient::Answer AutomationClient::ReadVisible(bool& visible) {
  GVariant* reply = nullptr;
  const Answer answer = Call("org.freedesktop.DBus.Properties", "Get",
                             g_variant_new("(ss)", kAutomationInterface, "Visible"), &reply);
  if (reply != nullptr) {
    GVariant* value = nullptr;
    g_variant_get(reply, "(v)", &value);
    visible = g_variant_is_of_type(value, G_VARIANT_TYPE_BOOLEAN) && g_variant_get_boolean(value) == TRUE;
    g_variant_unref(value);
    g_variant_unref(reply);
  }
  return answer;
}

AutomationClient::Answer AutomationClient::Call(const char* interface, const char* method,
                                                GVariant* arguments, GVariant** reply) {
  GError* error = nullptr;
  GVariant* answer = g_dbus_connection_call_sync(connection_, kAutomationBusName, kAutomationPath, interface,
                                                 method, arguments, nullptr, G_DBUS_CALL_FLAGS_NO_AUTO_START,
                                                 kCallMilliseconds, nullptr, &error);
  if (answer == nullptr) {
    return Refusal(error);
  }
  if (reply != nullptr) {
    *reply = answer;
  } else {
    g_variant_unref(answer);
  }
  return Answer::kTaken;
}

AutomationClient::Answer AutomationClient::Refusal(GError* error) {
  gchar* name = g_dbus_error_get_remote_error(error);
  const std::string remote = name == nullptr ? "" : name;
  g_free(name);
  g_dbus_error_strip_remote_error(error);
  words_ = error->message;
  g_error_free(error);
  // NoReply: the program went while it was asked.
  for (const char* gone :
       {kAutomationNotReady, "org.freedesktop.DBus.Error.ServiceUnknown",
        "org.freedesktop.DBus.Error.NameHasNoOwner", "org.freedesktop.DBus.Error.UnknownMethod",
        "org.freedesktop.DBus.Error.NoReply"}) {
    if (remote == gone) {
      return Answer::kNotThere;
    }
  }
  return remote == kAutomationError + std::to_string(kObjectNotSet) ? Answer::kNoWindow : Answer::kRefused;
}

}  // namespace kivandra::linux_impl
