// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/automation_server.h"

#include <gio/gio.h>

#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "platform/linux/automation_names.h"
#include "platform/platform_error.h"

namespace kivandra::linux_impl {
namespace {

/// How often to look whether there is an object by now.
constexpr guint kLookMilliseconds = 200;
/// Longer than any address of use; each call is carried as a whole.
constexpr std::size_t kLongestText = 64UL * 1024;
constexpr std::string_view kProperties = "org.freedesktop.DBus.Properties";

constexpr const char* kDescription = R"(<node>
  <interface name="org.kivandra.Application">
    <property name="Visible" type="b" access="readwrite">
      <annotation name="org.freedesktop.DBus.Property.EmitsChangedSignal" value="false"/>
    </property>
    <method name="Navigate"><arg name="Shortcut" type="s" direction="in"/></method>
    <method name="NewWindow"/>
  </interface>
  <interface name="org.kivandra.Frame">
    <method name="Present"/>
  </interface>
</node>)";

/// The value of a variant that the object takes.
ScriptValue ValueOf(GVariant* variant) {
  if (g_variant_is_of_type(variant, G_VARIANT_TYPE_BOOLEAN)) {
    return g_variant_get_boolean(variant) == TRUE;
  }
  if (!g_variant_is_of_type(variant, G_VARIANT_TYPE_STRING)) {
    throw PlatformError(kInvalidCall, "Invalid procedure call or argument");
  }
  gsize length = 0;
  const gchar* text = g_variant_get_string(variant, &length);
  if (length > kLongestText) {
    throw PlatformError(kInvalidCall, "The text is too long.");
  }
  return std::string(text, length);
}

/// The variant of the one property's value.
GVariant* VariantOf(const ScriptValue& value) {
  if (!std::holds_alternative<bool>(value)) {
    throw PlatformError(kInvalidCall, "Invalid procedure call or argument");
  }
  return g_variant_new_boolean(std::get<bool>(value) ? TRUE : FALSE);
}

void Refuse(GDBusMethodInvocation* call, const std::string& name, const char* text) {
  // Other texts than UTF-8 can't travel on the bus.
  gchar* valid = g_utf8_make_valid(text, -1);
  g_dbus_method_invocation_return_dbus_error(call, name.c_str(), valid);
  g_free(valid);
}

/// A call's arguments, or of a call that assigns a property its value.
std::vector<ScriptValue> ArgumentsOf(GVariant* parameters) {
  std::vector<ScriptValue> arguments;
  for (gsize i = 0; i < g_variant_n_children(parameters); ++i) {
    GVariant* child = g_variant_get_child_value(parameters, i);
    const std::unique_ptr<GVariant, decltype(&g_variant_unref)> owned(child, &g_variant_unref);
    arguments.push_back(ValueOf(child));
  }
  return arguments;
}

}  // namespace

/// What GLib calls back holds a weak reference, so that nothing is left to come back to when the server goes.
class AutomationServer::Connection : public std::enable_shared_from_this<Connection> {
 public:
  explicit Connection(Program program) : program_(std::move(program)) {}
  ~Connection() {
    g_cancellable_cancel(cancel_);
    g_object_unref(cancel_);
    Withdraw();
    StopLooking();
    if (bus_ != nullptr) {
      g_signal_handler_disconnect(bus_, closed_);
    }
    g_clear_object(&bus_);
    g_dbus_node_info_unref(description_);
  }
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  void Begin() {
    g_bus_get(
        G_BUS_TYPE_SESSION, cancel_,
        [](GObject*, GAsyncResult* result, gpointer data) {
          GDBusConnection* bus = g_bus_get_finish(result, nullptr);
          const auto self = Take(data);
          if (bus != nullptr && self) {
            self->Connected(bus);
          } else {
            g_clear_object(&bus);
          }
        },
        new std::weak_ptr<Connection>(weak_from_this()));
  }
  [[nodiscard]] bool Offered() const { return named_; }

 private:
  static std::shared_ptr<Connection> Take(gpointer data) {
    const std::unique_ptr<std::weak_ptr<Connection>> held(static_cast<std::weak_ptr<Connection>*>(data));
    return held->lock();
  }

  void Connected(GDBusConnection* bus) {
    bus_ = bus;
    // The bus ends with the session, or by an accident that must not take the program with it.
    g_dbus_connection_set_exit_on_close(bus_, FALSE);
    closed_ =
        g_signal_connect(bus_, "closed", G_CALLBACK(+[](GDBusConnection*, gboolean, GError*, gpointer data) {
                           static_cast<Connection*>(data)->StopLooking();
                           static_cast<Connection*>(data)->Withdraw();
                         }),
                         this);
    look_ = g_timeout_add(
        kLookMilliseconds,
        [](gpointer data) -> gboolean {
          static_cast<Connection*>(data)->Look();
          return G_SOURCE_CONTINUE;
        },
        this);
  }

  void Look() {
    if (program_.object() == nullptr) {
      return;
    }
    StopLooking();
    static const GDBusInterfaceVTable kCalls{&Connection::Call, nullptr, nullptr, {}};
    for (GDBusInterfaceInfo** each = description_->interfaces; *each != nullptr; ++each) {
      const guint id =
          g_dbus_connection_register_object(bus_, kAutomationPath, *each, &kCalls, this, nullptr, nullptr);
      if (id != 0) {
        registered_.push_back(id);
      }
    }
    // By hand: GLib's own helper warns aloud when it gives up a name that somebody else has.
    constexpr guint kDoNotQueue = 4;
    g_dbus_connection_call(
        bus_, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "RequestName",
        g_variant_new("(su)", kAutomationBusName, kDoNotQueue), G_VARIANT_TYPE("(u)"), G_DBUS_CALL_FLAGS_NONE,
        -1, cancel_,
        [](GObject* source, GAsyncResult* result, gpointer data) {
          GVariant* reply = g_dbus_connection_call_finish(G_DBUS_CONNECTION(source), result, nullptr);
          if (const auto self = Take(data)) {
            self->Asked(reply);
          }
          g_clear_pointer(&reply, g_variant_unref);
        },
        new std::weak_ptr<Connection>(weak_from_this()));
  }

  /// `reply` is the bus's answer to the wish for the name, null if there is none.
  void Asked(GVariant* reply) {
    constexpr guint kOwner = 1;
    guint word = 0;
    if (reply != nullptr) {
      g_variant_get(reply, "(u)", &word);
    }
    named_ = word == kOwner;
    if (!named_) {
      Withdraw();
    }
  }

  void StopLooking() {
    if (look_ != 0) {
      g_source_remove(std::exchange(look_, 0));
    }
  }

  void Withdraw() {
    if (std::exchange(named_, false) && g_dbus_connection_is_closed(bus_) == FALSE) {
      g_dbus_connection_call(bus_, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                             "ReleaseName", g_variant_new("(s)", kAutomationBusName), nullptr,
                             G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr, nullptr);
    }
    for (const guint id : std::exchange(registered_, {})) {
      g_dbus_connection_unregister_object(bus_, id);
    }
  }

  static void Call(GDBusConnection*, const gchar*, const gchar*, const gchar* interface, const gchar* method,
                   GVariant* parameters, GDBusMethodInvocation* call, gpointer data) noexcept {
    // The call may close everything that led here.
    const auto self = static_cast<Connection*>(data)->shared_from_this();
    try {
      g_dbus_method_invocation_return_value(call, self->Answer(interface, method, parameters));
    } catch (const NotReady&) {
      Refuse(call, kAutomationNotReady, "Kivandra is starting or closing.");
    } catch (const PlatformError& error) {
      Refuse(call, kAutomationError + std::to_string(error.Number()), error.what());
    } catch (const std::exception& error) {
      Refuse(call, "org.freedesktop.DBus.Error.Failed", error.what());
    }
  }

  struct NotReady {};

  /// The reply's values; null for none. GLib has held every call against the description before.
  GVariant* Answer(std::string_view interface, std::string_view method, GVariant* parameters) {
    ScriptObject* object = program_.object();
    if (object == nullptr) {
      throw NotReady();
    }
    if (interface == kFrameInterface) {
      program_.present();
      return nullptr;
    }
    if (interface != kProperties) {
      object->Invoke(method, ArgumentsOf(parameters));
      return nullptr;
    }
    if (method == "Set") {
      GVariant* value = nullptr;
      g_variant_get(parameters, "(&s&sv)", nullptr, nullptr, &value);
      const std::unique_ptr<GVariant, decltype(&g_variant_unref)> owned(value, &g_variant_unref);
      object->Invoke("Visible", {ValueOf(value)});
      return nullptr;
    }
    if (method == "Get") {
      return g_variant_new("(v)", VariantOf(object->Invoke("Visible", {})));
    }
    const gchar* whose = nullptr;
    g_variant_get(parameters, "(&s)", &whose);
    GVariantBuilder all;
    g_variant_builder_init(&all, G_VARIANT_TYPE_VARDICT);
    if (std::string_view(whose) == kAutomationInterface) {
      g_variant_builder_add(&all, "{sv}", "Visible", VariantOf(object->Invoke("Visible", {})));
    }
    return g_variant_new("(a{sv})", &all);
  }

  Program program_;
  GDBusNodeInfo* description_ = g_dbus_node_info_new_for_xml(kDescription, nullptr);
  GCancellable* cancel_ = g_cancellable_new();
  GDBusConnection* bus_ = nullptr;
  guint look_ = 0;
  std::vector<guint> registered_;
  gulong closed_ = 0;
  bool named_ = false;
};

AutomationServer::AutomationServer(Program program)
    : connection_(std::make_shared<Connection>(std::move(program))) {
  connection_->Begin();
}

AutomationServer::~AutomationServer() = default;

bool AutomationServer::Offered() const { return connection_->Offered(); }

}  // namespace kivandra::linux_impl
