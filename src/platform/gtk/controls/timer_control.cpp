// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gtk/controls/timer_control.h"

#include <utility>

#include "platform/gtk/guard.h"

namespace {

struct KvTimer {
  GObject parent;
  int interval;
  gboolean enabled;
};

struct KvTimerClass {
  GObjectClass parent;
};

enum { kInterval = 1, kEnabled };

G_DEFINE_TYPE(KvTimer, kv_timer, G_TYPE_OBJECT)

KvTimer* AsTimer(GObject* object) { return reinterpret_cast<KvTimer*>(object); }

void SetProperty(GObject* object, guint id, const GValue* value, GParamSpec* property) {
  if (id == kInterval) {
    AsTimer(object)->interval = g_value_get_int(value);
  } else if (id == kEnabled) {
    AsTimer(object)->enabled = g_value_get_boolean(value);
  } else {
    G_OBJECT_WARN_INVALID_PROPERTY_ID(object, id, property);
  }
}

void GetProperty(GObject* object, guint id, GValue* value, GParamSpec* property) {
  if (id == kInterval) {
    g_value_set_int(value, AsTimer(object)->interval);
  } else if (id == kEnabled) {
    g_value_set_boolean(value, AsTimer(object)->enabled);
  } else {
    G_OBJECT_WARN_INVALID_PROPERTY_ID(object, id, property);
  }
}

void kv_timer_class_init(KvTimerClass* type) {
  type->parent.set_property = SetProperty;
  type->parent.get_property = GetProperty;
  constexpr auto kFlags = static_cast<GParamFlags>(G_PARAM_READWRITE | G_PARAM_STATIC_STRINGS);
  g_object_class_install_property(&type->parent, kInterval,
                                  g_param_spec_int("interval", nullptr, nullptr, 0, G_MAXINT, 0, kFlags));
  g_object_class_install_property(&type->parent, kEnabled,
                                  g_param_spec_boolean("enabled", nullptr, nullptr, FALSE, kFlags));
}

void kv_timer_init(KvTimer*) {}

}  // namespace

namespace kivandra::gtk {

void RegisterTimerType() { g_type_ensure(kv_timer_get_type()); }

bool IsTimer(GObject* object) { return G_TYPE_CHECK_INSTANCE_TYPE(object, kv_timer_get_type()); }

TimerControl::TimerControl(GObject* designed) : interval_(AsTimer(designed)->interval) {
  AbsentControl::SetEnabled(AsTimer(designed)->enabled != FALSE);
  Start();
}

TimerControl::~TimerControl() { Stop(); }

void TimerControl::SetEnabled(bool enabled) {
  AbsentControl::SetEnabled(enabled);
  if (enabled) {
    Start();
  } else {
    Stop();
  }
}

int TimerControl::Interval() const { return Alive(), interval_; }

void TimerControl::OnTimer(std::function<void()> handler) {
  Alive();
  handler_ = std::move(handler);
}

void TimerControl::LetGo() {
  Stop();
  AbsentControl::LetGo();
}

void TimerControl::Start() {
  if (source_ == 0 && Enabled() && interval_ > 0) {
    source_ = g_timeout_add(static_cast<guint>(interval_), Tick, this);
  }
}

void TimerControl::Stop() {
  if (source_ != 0) {
    g_source_remove(std::exchange(source_, 0U));
  }
}

gboolean TimerControl::Tick(gpointer data) {
  auto* self = static_cast<TimerControl*>(data);
  // The handler may stop or destroy this timer: nothing of it is touched afterwards.
  Raise(self->handler_);
  return G_SOURCE_CONTINUE;
}

}  // namespace kivandra::gtk
