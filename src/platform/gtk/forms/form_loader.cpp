// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gtk/forms/form_loader.h"

#include <algorithm>

#include "platform/gtk/controls/skin_sheet.h"
#include "platform/gtk/controls/widget_control.h"
#include "platform/gtk/forms/child_form.h"
#include "platform/gtk/forms/frame_size.h"
#include "platform/gtk/forms/top_form.h"
#include "platform/gtk/mdi/mdi_area.h"
#include "platform/gtk/mdi/mdi_keys.h"

namespace kivandra::gtk {
namespace {

constexpr long kFileNotFound = 53;

/// A button with an access key is told by its label; without this a screen reader would say its caption
/// twice, once with the underscore.
void NameButtonsOnce(GtkBuilder* builder) {
  GSList* objects = gtk_builder_get_objects(builder);
  for (GSList* each = objects; each != nullptr; each = each->next) {
    if (GTK_IS_BUTTON(each->data) && gtk_button_get_use_underline(GTK_BUTTON(each->data)) != FALSE) {
      gtk_accessible_reset_property(GTK_ACCESSIBLE(each->data), GTK_ACCESSIBLE_PROPERTY_LABEL);
    }
  }
  g_slist_free(objects);
}

Glib::RefPtr<Gtk::Builder> ReadForm(const std::string& path) {
  // A builder of the toolkit itself: the wrapper's own makes widgets that run every class function through
  // C++, and one of those can't choose an empty item of a combo box without crashing.
  auto builder = Glib::wrap(gtk_builder_new());
  GError* error = nullptr;
  if (!gtk_builder_add_from_file(builder->gobj(), path.c_str(), &error)) {
    const std::string why = error->message;
    g_error_free(error);
    throw PlatformError(kFileNotFound, why);
  }
  return builder;
}

}  // namespace

FormLoader::FormLoader(std::string assets, EngineFactory& engine)
    : assets_(std::move(assets)), engine_(engine), structure_(ReadSheet(assets_ + "/css/structure.css")) {}

FormLoader::~FormLoader() {
  // What is still loaded at the end of the program goes without being asked: children before their frame.
  auto all = std::exchange(loaded_, {});
  std::stable_partition(all.begin(), all.end(),
                        [](const auto& form) { return dynamic_cast<ChildForm*>(form.get()) != nullptr; });
  for (const auto& form : all) {
    form->SetEvents(nullptr);
    form->Dispose();
  }
}

std::shared_ptr<Form> FormLoader::Load(const std::string& name) {
  const auto builder = ReadForm(assets_ + "/forms/" + name + ".ui");
  NameButtonsOnce(builder->gobj());
  GObject* root = gtk_builder_get_object(builder->gobj(), name.c_str());
  if (root == nullptr) {
    throw PlatformError(kFileNotFound, "the form file of " + name + " has no object of that name");
  }
  auto form = Make(name, builder, root);
  loaded_.push_back(form);
  return form;
}

std::shared_ptr<FormBase> FormLoader::Make(const std::string& name, const Glib::RefPtr<Gtk::Builder>& builder,
                                           GObject* root) {
  if (GTK_IS_WINDOW(root)) {
    auto form = std::make_shared<TopForm>(*this, name, builder, *Glib::wrap(GTK_WINDOW(root)));
    GObject* place = gtk_builder_get_object(builder->gobj(), "MDIClient");
    if (place != nullptr && GTK_IS_BOX(place)) {
      MakeFrame(*form, *Glib::wrap(GTK_BOX(place)));
    }
    return form;
  }
  if (!GTK_IS_BOX(root)) {
    throw PlatformError(kFileNotFound,
                        "the form file of " + name + " is neither a window nor a child window");
  }
  if (area_ == nullptr) {
    throw PlatformError(kObjectNotSet, "no frame is loaded for the child window " + name);
  }
  return std::make_shared<ChildForm>(*this, name, builder, *Glib::wrap(GTK_BOX(root)), *area_);
}

void FormLoader::MakeFrame(TopForm& form, Gtk::Box& place) {
  auto* area = Gtk::make_managed<MdiArea>();
  place.append(*area);
  form.SetArea(area);
  frame_ = &form;
  area_ = area;
  GiveFrameSize(form.Window());
  AddMdiKeys(form.Window(), *area);
}

std::vector<std::shared_ptr<Form>> FormLoader::Loaded() const { return {loaded_.begin(), loaded_.end()}; }

Twips FormLoader::ScreenWidth() const {
  const auto display = Gdk::Display::get_default();
  const auto monitor = display != nullptr && display->get_monitors()->get_n_items() > 0
                           ? std::dynamic_pointer_cast<Gdk::Monitor>(display->get_monitors()->get_object(0))
                           : nullptr;
  if (!monitor) {
    throw PlatformError(kObjectNotSet, "there is no screen");
  }
  Gdk::Rectangle area;
  monitor->get_geometry(area);
  return area.get_width() * kTwipsPerPixel;
}

std::vector<std::shared_ptr<FormBase>> FormLoader::Children() const {
  std::vector<std::shared_ptr<FormBase>> children;
  std::copy_if(loaded_.begin(), loaded_.end(), std::back_inserter(children),
               [](const auto& form) { return dynamic_cast<ChildForm*>(form.get()) != nullptr; });
  return children;
}

Gtk::Window* FormLoader::ActiveWindow() const {
  for (auto each = activations_.rbegin(); each != activations_.rend(); ++each) {
    const auto form = std::dynamic_pointer_cast<TopForm>(each->lock());
    if (form && form->Loaded() && form->Visible()) {
      return &form->Window();
    }
  }
  return nullptr;
}

void FormLoader::Forget(FormBase& form) {
  if (&form == frame_) {
    frame_ = nullptr;
    area_ = nullptr;
  }
  std::erase_if(loaded_, [&](const auto& each) { return each.get() == &form; });
}

void FormLoader::Activated(TopForm& form) {
  active_ = form.weak_from_this();
  Shown(form);
}

void FormLoader::Shown(TopForm& form) {
  std::erase_if(activations_, [&](const auto& each) { return each.expired() || each.lock().get() == &form; });
  activations_.push_back(form.weak_from_this());
}

void FormLoader::Left(TopForm& form) {
  const bool wasLatest = !activations_.empty() && activations_.back().lock().get() == &form;
  const bool wasActive = active_.lock().get() == &form;
  std::erase_if(activations_, [&](const auto& each) { return each.expired() || each.lock().get() == &form; });
  if (wasLatest || wasActive) {
    if (Gtk::Window* next = ActiveWindow()) {
      next->present();
    }
  }
}

}  // namespace kivandra::gtk
