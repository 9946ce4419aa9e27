// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/control.h"

namespace kivandra {

enum class WindowState { Normal = 0, Minimized = 1, Maximized = 2 };

/// Why a window is asked to close. ControlMenu: its close box or the keyboard's close command; Code: Unload;
/// WindowManager: the session ends; MdiForm: its frame closes.
enum class UnloadMode { ControlMenu = 0, Code = 1, WindowManager = 2, MdiForm = 4 };

/// What a window tells its owner; all of it from the event loop or from inside the operation that causes it.
/// The window may be unloaded inside any handler. No exception may leave a handler.
class FormEvents {
 public:
  virtual ~FormEvents() = default;

  virtual void Form_Activate() {}
  virtual void Form_Deactivate() {}
  virtual void Form_Resize() {}
  /// Sets `cancel` to keep the window open.
  virtual void Form_QueryUnload(bool& cancel, UnloadMode mode) {
    (void)cancel;
    (void)mode;
  }
  /// The window goes; its controls still work inside, never afterwards.
  virtual void Form_Unload() {}
};

/// One window, made from its form file. Lengths are twips. For a child window Left and Top count from the
/// corner of the area; for a top window they are wishes that the desktop may ignore. Every operation but
/// Loaded throws PlatformError once the window is unloaded.
class Form {
 public:
  virtual ~Form() = default;

  [[nodiscard]] virtual const std::string& Name() const = 0;
  [[nodiscard]] virtual bool Loaded() const = 0;
  virtual void SetEvents(FormEvents* events) = 0;

  /// Whether it lies in the area of the frame.
  [[nodiscard]] virtual bool MDIChild() const = 0;
  [[nodiscard]] virtual std::string Caption() const = 0;
  virtual void SetCaption(const std::string& caption) = 0;
  [[nodiscard]] virtual std::string Tag() const = 0;
  virtual void SetTag(const std::string& tag) = 0;

  [[nodiscard]] virtual bool Visible() const = 0;
  virtual void SetVisible(bool visible) = 0;
  /// Shows the window and runs events until it is hidden or unloaded; other windows take no input meanwhile.
  virtual void ShowModal() = 0;
  /// Asks (Form_QueryUnload, mode Code), tells (Form_Unload) and takes the window away. False if the owner
  /// cancelled. Does nothing and returns true for a window that is unloaded or in the middle of it.
  virtual bool Unload() = 0;
  /// In front of its siblings, and active if it is visible.
  virtual void BringToFront() = 0;
  virtual void SetFocus() = 0;

  [[nodiscard]] virtual enum WindowState WindowState() const = 0;
  virtual void SetWindowState(enum WindowState state) = 0;
  [[nodiscard]] virtual Twips Left() const = 0;
  virtual void SetLeft(Twips left) = 0;
  [[nodiscard]] virtual Twips Top() const = 0;
  virtual void SetTop(Twips top) = 0;
  /// Setting a length of a maximised or minimised window throws PlatformError, as moving it does.
  [[nodiscard]] virtual Twips Width() const = 0;
  virtual void SetWidth(Twips width) = 0;
  [[nodiscard]] virtual Twips Height() const = 0;
  virtual void SetHeight(Twips height) = 0;
  /// Inside of the window; of the frame: of the area in which its children lie.
  [[nodiscard]] virtual Twips ScaleWidth() const = 0;
  [[nodiscard]] virtual Twips ScaleHeight() const = 0;

  /// The control of this name and kind; lives as long as the form. Throws PlatformError if the form file has
  /// none.
  virtual Control& FindControl(std::string_view name, ControlKind kind) = 0;
  template <typename T>
  T& Get(std::string_view name) {
    return dynamic_cast<T&>(FindControl(name, T::kKind));
  }
};

/// The windows of the program.
class Forms {
 public:
  virtual ~Forms() = default;

  /// Makes the window from its form file, hidden. A form whose file makes it a child window lies in the area
  /// of the loaded frame. Throws PlatformError if there is no such file or it is broken.
  virtual std::shared_ptr<Form> Load(const std::string& name) = 0;
  /// Every loaded window in the order of loading.
  [[nodiscard]] virtual std::vector<std::shared_ptr<Form>> Loaded() const = 0;
  /// Width of the screen on which the program's windows stand.
  [[nodiscard]] virtual Twips ScreenWidth() const = 0;
};

}  // namespace kivandra
