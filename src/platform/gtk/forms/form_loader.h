// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtkmm.h>

#include <memory>
#include <string>
#include <vector>

#include "platform/form.h"
#include "platform/gtk/engine_factory.h"

namespace kivandra::gtk {

class FormBase;
class MdiArea;
class TopForm;

/// The windows of the program, each made from `<assets>/forms/<name>.ui`. In such a file the root object
/// bears the form's name: a `GtkWindow` for a window of the desktop, a `GtkBox` for a child window; the ids
/// of the other objects are the names of the controls. A `GtkBox` named `MDIClient` makes its window the
/// frame.
class FormLoader : public Forms {
 public:
  /// `assets` is the folder of forms, style sheets, icons and pictures; `engine` must outlive the loader.
  FormLoader(std::string assets, EngineFactory& engine);
  ~FormLoader() override;
  FormLoader(const FormLoader&) = delete;
  FormLoader& operator=(const FormLoader&) = delete;

  std::shared_ptr<Form> Load(const std::string& name) override;
  [[nodiscard]] std::vector<std::shared_ptr<Form>> Loaded() const override;
  [[nodiscard]] Twips ScreenWidth() const override;

  // For the forms and their controls.
  [[nodiscard]] const std::string& AssetsDirectory() const { return assets_; }
  [[nodiscard]] EngineFactory& Engine() const { return engine_; }
  /// Text of the sheet of shapes, which every skin completes.
  [[nodiscard]] const std::string& Structure() const { return structure_; }
  /// The loaded frame's area, or null.
  [[nodiscard]] MdiArea* Area() const { return area_; }
  [[nodiscard]] std::vector<std::shared_ptr<FormBase>> Children() const;
  /// The window that a box or a modal window stands over: the active one, or else the last that was.
  [[nodiscard]] Gtk::Window* ActiveWindow() const;
  /// The form is unloaded.
  void Forget(FormBase& form);
  /// A top window has become active.
  void Activated(TopForm& form);
  /// A top window lies over the others; the keyboard may follow.
  void Shown(TopForm& form);
  /// A top window was hidden: the one before it becomes active, if the focus was in this program.
  void Left(TopForm& form);

 private:
  std::shared_ptr<FormBase> Make(const std::string& name, const Glib::RefPtr<Gtk::Builder>& builder,
                                 GObject* root);
  void MakeFrame(TopForm& form, Gtk::Box& place);

  std::string assets_;
  EngineFactory& engine_;
  std::string structure_;
  std::vector<std::shared_ptr<FormBase>> loaded_;
  std::vector<std::weak_ptr<FormBase>> activations_;  // top windows, the latest in front last
  std::weak_ptr<FormBase> active_;                    // the last that had the keyboard
  TopForm* frame_ = nullptr;
  MdiArea* area_ = nullptr;
};

}  // namespace kivandra::gtk
