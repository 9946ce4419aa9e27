// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gtk/forms/form_base.h"

#include <utility>

#include "platform/gtk/controls/absent_control.h"
#include "platform/gtk/controls/control_factory.h"
#include "platform/gtk/controls/widget_control.h"
#include "platform/gtk/forms/form_loader.h"

namespace kivandra::gtk {

FormBase::FormBase(FormLoader& loader, std::string name, Glib::RefPtr<Gtk::Builder> builder)
    : loader_(loader), name_(std::move(name)), builder_(std::move(builder)) {}

FormBase::~FormBase() = default;

void FormBase::Alive() const {
  if (!loaded_) {
    throw PlatformError(kObjectNotSet, "the window " + name_ + " is unloaded");
  }
}

void FormBase::SetEvents(FormEvents* events) { events_ = events; }

std::string FormBase::Caption() const { return Alive(), caption_; }

void FormBase::SetCaption(const std::string& caption) {
  Alive();
  caption_ = caption;
  CaptionChanged(caption);
}

std::string FormBase::Tag() const { return Alive(), tag_; }

void FormBase::SetTag(const std::string& tag) { Alive(), tag_ = tag; }

Control& FormBase::FindControl(std::string_view name, ControlKind kind) {
  Alive();
  const auto found = controls_.find(name);
  if (found == controls_.end()) {
    auto control = MakeControl(*this, loader_, builder_, std::string(name), kind);
    return *controls_.emplace(std::string(name), std::move(control)).first->second;
  }
  if (!IsKind(*found->second, kind)) {
    throw PlatformError(kObjectNotSet, name_ + " has " + std::string(name) + " as another kind of control");
  }
  return *found->second;
}

bool FormBase::MayClose(UnloadMode mode) {
  bool cancel = false;
  Tell(&FormEvents::Form_QueryUnload, cancel, mode);
  return !cancel;
}

bool FormBase::Close(UnloadMode mode) {
  // Unload from inside the question would only ask again; a person who asks again meanwhile has a turn of his
  // own.
  if (!loaded_ || closing_ || (asking_ && mode == UnloadMode::Code)) {
    return true;
  }
  const auto hold = shared_from_this();
  const bool outer = std::exchange(asking_, true);
  const bool may = MayClose(mode);
  asking_ = outer;
  if (may) {
    CloseAsked();
  }
  return may;
}

void FormBase::CloseAsked() {
  if (loaded_ && !closing_) {
    const auto hold = shared_from_this();
    closing_ = true;
    FinishClosing();
  }
}

void FormBase::FinishClosing() {
  const auto hold = shared_from_this();
  CloseInside();
  Tell(&FormEvents::Form_Unload);
  loaded_ = false;
  events_ = nullptr;
  LetControlsGo();
  loader_.Forget(*this);
  Leave();
  Glib::signal_idle().connect_once([hold] { Guarded([&] { hold->Dispose(); }); });
}

void FormBase::LetControlsGo() {
  for (auto& [name, control] : controls_) {
    if (auto* widget = dynamic_cast<WidgetControl*>(control.get())) {
      widget->LetGo();
    } else if (auto* absent = dynamic_cast<AbsentControl*>(control.get())) {
      absent->LetGo();
    }
  }
}

}  // namespace kivandra::gtk
