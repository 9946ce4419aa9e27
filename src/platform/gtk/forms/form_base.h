// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtkmm.h>

#include <map>
#include <memory>
#include <string>

#include "platform/form.h"
#include "platform/gtk/guard.h"
#include "platform/platform_error.h"

namespace kivandra::gtk {

class FormLoader;

/// What top windows and child windows have in common: name, caption, controls, and the way out.
///
/// A form that is unloaded goes in two steps. At once: it is hidden, leaves the list of loaded windows, its
/// controls throw and its events stop. From the event loop, when nobody is inside one of its handlers: its
/// widgets go.
class FormBase : public Form, public std::enable_shared_from_this<FormBase> {
 public:
  FormBase(FormLoader& loader, std::string name, Glib::RefPtr<Gtk::Builder> builder);
  ~FormBase() override;

  [[nodiscard]] const std::string& Name() const override { return name_; }
  [[nodiscard]] bool MDIChild() const override { return false; }
  [[nodiscard]] bool Loaded() const override { return loaded_; }
  void SetEvents(FormEvents* events) override;
  [[nodiscard]] std::string Caption() const override;
  void SetCaption(const std::string& caption) override;
  [[nodiscard]] std::string Tag() const override;
  void SetTag(const std::string& tag) override;
  bool Unload() override { return Close(UnloadMode::Code); }
  Control& FindControl(std::string_view name, ControlKind kind) override;

  /// Unload with its reason.
  bool Close(UnloadMode mode);
  /// The second half of Close alone, for a form whose owner was asked already.
  void CloseAsked();
  /// First half of Close: asks the owner, and whoever must be asked with it. False if someone cancelled.
  virtual bool MayClose(UnloadMode mode);
  /// Takes the widgets away; the form is unloaded. To be called from the event loop, or at the program's end.
  virtual void Dispose() = 0;
  /// The widget that bears a skin.
  [[nodiscard]] virtual Gtk::Widget& Dress() = 0;

 protected:
  /// Throws PlatformError once the form is unloaded.
  void Alive() const;
  [[nodiscard]] FormLoader& Loader() const { return loader_; }
  [[nodiscard]] const Glib::RefPtr<Gtk::Builder>& Builder() const { return builder_; }
  void DropBuilder() { builder_.reset(); }
  /// Shows the caption.
  virtual void CaptionChanged(const std::string& caption) = 0;
  /// Second half of Close: after the owner was told; hides the window.
  virtual void Leave() = 0;
  /// What must close together with this form, before it.
  virtual void CloseInside() {}
  /// Raises an event; the form outlives it.
  template <typename Event, typename... Arguments>
  void Tell(Event event, Arguments&&... arguments) {
    const auto hold = shared_from_this();
    if (loaded_ && events_ != nullptr) {
      Guarded([&] { (events_->*event)(std::forward<Arguments>(arguments)...); });
    }
  }

 private:
  friend class FormLoader;
  void FinishClosing();
  void LetControlsGo();

  FormLoader& loader_;
  std::string name_;
  Glib::RefPtr<Gtk::Builder> builder_;  // holds every object of the form file until Dispose
  FormEvents* events_ = nullptr;
  std::string caption_;
  std::string tag_;
  bool loaded_ = true;
  bool asking_ = false;   // its owner is being asked whether it may close
  bool closing_ = false;  // it may, and is on its way out
  std::map<std::string, std::unique_ptr<Control>, std::less<>> controls_;
};

}  // namespace kivandra::gtk
