// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gtk/controls/skin_control.h"

#include "platform/gtk/controls/skin_sheet.h"

namespace {

struct KvSkinForm {
  GObject parent;
};

struct KvSkinFormClass {
  GObjectClass parent;
};

G_DEFINE_TYPE(KvSkinForm, kv_skin_form, G_TYPE_OBJECT)

void kv_skin_form_class_init(KvSkinFormClass*) {}
void kv_skin_form_init(KvSkinForm*) {}

}  // namespace

namespace kivandra::gtk {

void RegisterSkinType() { g_type_ensure(kv_skin_form_get_type()); }

bool IsSkin(GObject* object) { return G_TYPE_CHECK_INSTANCE_TYPE(object, kv_skin_form_get_type()); }

SkinControl::SkinControl(Gtk::Widget& window, const std::string& structure)
    : window_(window), structure_(structure) {}

void SkinControl::SetProperty14(int) { Alive(); }

void SkinControl::SetSkinFile(const std::string& path) {
  Alive();
  auto sheet = SkinSheet::Load(path, structure_);
  window_.remove_css_class(sheet_ ? sheet_->CssClass() : "kv-skin");
  window_.add_css_class(sheet->CssClass());
  sheet_ = std::move(sheet);
}

void SkinControl::ApplyTo(Control&) { Alive(); }

}  // namespace kivandra::gtk
