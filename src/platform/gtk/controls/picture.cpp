// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gtk/controls/picture.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

/// Counts of one picture widget that outlive a redraw.
struct Shown {
  std::string file;
  GdkTexture* texture = nullptr;
  int textureWidth =
      0;  // device pixels that an SVG was drawn for; 0 for pictures that have pixels of their own
  int textureHeight = 0;
  GdkPixbufAnimationIter* frames = nullptr;  // of an animated picture that nobody has stopped
  guint tick = 0;

  void DropTexture() {
    g_clear_object(&texture);
    textureWidth = 0;
    textureHeight = 0;
  }
};

struct KvPicture {
  GtkWidget parent;
  Shown* shown;
};

struct KvPictureClass {
  GtkWidgetClass parent;
};

enum { kFile = 1 };

// The type system keeps one class for the process, so its folder is one for the process too.
std::string& AssetsDirectory() {
  static std::string directory;
  return directory;
}

G_DEFINE_TYPE(KvPicture, kv_picture, GTK_TYPE_WIDGET)

KvPicture* AsPicture(gpointer object) { return static_cast<KvPicture*>(object); }

bool IsDrawn(const std::string& file) { return g_str_has_suffix(file.c_str(), ".svg") != FALSE; }

/// Whether the desktop wants things to stand still.
bool MotionReduced(GtkWidget* widget) {
  gboolean animations = TRUE;
  g_object_get(gtk_widget_get_settings(widget), "gtk-enable-animations", &animations, nullptr);
  return animations == FALSE;
}

void StopTicking(KvPicture* self) {
  if (self->shown->tick != 0) {
    g_source_remove(std::exchange(self->shown->tick, 0U));
  }
}

void TakeFrame(Shown& shown) {
  shown.DropTexture();
  shown.texture = gdk_texture_new_for_pixbuf(gdk_pixbuf_animation_iter_get_pixbuf(shown.frames));
}

gboolean NextFrame(gpointer data);

void StartTicking(KvPicture* self) {
  Shown& shown = *self->shown;
  if (shown.frames == nullptr || shown.tick != 0 || !gtk_widget_get_mapped(GTK_WIDGET(self)) ||
      MotionReduced(GTK_WIDGET(self))) {
    return;
  }
  const int delay = gdk_pixbuf_animation_iter_get_delay_time(shown.frames);
  if (delay >= 0) {
    constexpr int kShortest = 20;  // some files say 0
    shown.tick = g_timeout_add(static_cast<guint>(std::max(delay, kShortest)), NextFrame, self);
  }
}

gboolean NextFrame(gpointer data) {
  KvPicture* self = AsPicture(data);
  Shown& shown = *self->shown;
  shown.tick = 0;
  if (gdk_pixbuf_animation_iter_advance(shown.frames, nullptr)) {
    TakeFrame(shown);
    gtk_widget_queue_draw(GTK_WIDGET(self));
  }
  StartTicking(self);
  return G_SOURCE_REMOVE;
}

/// The desktop's wish holds at once, also for a picture that moves already.
void OnMotionSetting(KvPicture* self) {
  if (MotionReduced(GTK_WIDGET(self))) {
    StopTicking(self);
  } else {
    StartTicking(self);
  }
}

void Load(KvPicture* self, const char* file) {
  Shown& shown = *self->shown;
  StopTicking(self);
  g_clear_object(&shown.frames);
  shown.DropTexture();
  shown.file = file == nullptr ? "" : file;
  if (!shown.file.empty() && !g_path_is_absolute(shown.file.c_str())) {
    shown.file = AssetsDirectory() + "/" + shown.file;
  }
  if (!shown.file.empty() && !IsDrawn(shown.file)) {
    if (GdkPixbufAnimation* animation = gdk_pixbuf_animation_new_from_file(shown.file.c_str(), nullptr)) {
      shown.frames = gdk_pixbuf_animation_get_iter(animation, nullptr);
      TakeFrame(shown);
      if (gdk_pixbuf_animation_is_static_image(animation)) {
        g_clear_object(&shown.frames);
      }
      g_object_unref(animation);
    }
  }
  StartTicking(self);
  gtk_widget_queue_draw(GTK_WIDGET(self));
}

/// Draws an SVG for the present size and scale, once for each.
void Draw(KvPicture* self) {
  Shown& shown = *self->shown;
  const int scale = gtk_widget_get_scale_factor(GTK_WIDGET(self));
  const int width = gtk_widget_get_width(GTK_WIDGET(self)) * scale;
  const int height = gtk_widget_get_height(GTK_WIDGET(self)) * scale;
  if (!IsDrawn(shown.file) || (shown.textureWidth == width && shown.textureHeight == height)) {
    return;
  }
  shown.DropTexture();
  shown.textureWidth = width;
  shown.textureHeight = height;
  if (GdkPixbuf* drawn =
          gdk_pixbuf_new_from_file_at_scale(shown.file.c_str(), width, height, TRUE, nullptr)) {
    shown.texture = gdk_texture_new_for_pixbuf(drawn);
    g_object_unref(drawn);
  }
}

void Snapshot(GtkWidget* widget, GtkSnapshot* snapshot) {
  KvPicture* self = AsPicture(widget);
  Draw(self);
  GdkTexture* texture = self->shown->texture;
  if (texture == nullptr) {
    return;
  }
  const double width = gdk_texture_get_width(texture);
  const double height = gdk_texture_get_height(texture);
  const double room = std::min(gtk_widget_get_width(widget) / width, gtk_widget_get_height(widget) / height);
  const double drawnWidth = std::round(width * room);
  const double drawnHeight = std::round(height * room);
  const auto x = static_cast<float>(std::floor((gtk_widget_get_width(widget) - drawnWidth) / 2));
  const auto y = static_cast<float>(std::floor((gtk_widget_get_height(widget) - drawnHeight) / 2));
  const graphene_rect_t bounds =
      GRAPHENE_RECT_INIT(x, y, static_cast<float>(drawnWidth), static_cast<float>(drawnHeight));
  gtk_snapshot_append_texture(snapshot, texture, &bounds);
}

void Map(GtkWidget* widget) {
  GTK_WIDGET_CLASS(kv_picture_parent_class)->map(widget);
  StartTicking(AsPicture(widget));
}

void Unmap(GtkWidget* widget) {
  StopTicking(AsPicture(widget));
  GTK_WIDGET_CLASS(kv_picture_parent_class)->unmap(widget);
}

void SetProperty(GObject* object, guint id, const GValue* value, GParamSpec* property) {
  if (id == kFile) {
    Load(AsPicture(object), g_value_get_string(value));
  } else {
    G_OBJECT_WARN_INVALID_PROPERTY_ID(object, id, property);
  }
}

void Finalize(GObject* object) {
  KvPicture* self = AsPicture(object);
  StopTicking(self);
  g_clear_object(&self->shown->frames);
  self->shown->DropTexture();
  delete self->shown;
  G_OBJECT_CLASS(kv_picture_parent_class)->finalize(object);
}

void kv_picture_class_init(KvPictureClass* type) {
  auto* object = G_OBJECT_CLASS(type);
  object->set_property = SetProperty;
  object->finalize = Finalize;
  type->parent.snapshot = Snapshot;
  type->parent.map = Map;
  type->parent.unmap = Unmap;
  // The name that the style sheets know pictures by.
  gtk_widget_class_set_css_name(&type->parent, "image");
  gtk_widget_class_set_accessible_role(&type->parent, GTK_ACCESSIBLE_ROLE_IMG);
  g_object_class_install_property(
      object, kFile,
      g_param_spec_string("file", nullptr, nullptr, nullptr,
                          static_cast<GParamFlags>(G_PARAM_WRITABLE | G_PARAM_STATIC_STRINGS)));
}

void kv_picture_init(KvPicture* self) {
  self->shown = new Shown;
  g_signal_connect_object(gtk_widget_get_settings(GTK_WIDGET(self)), "notify::gtk-enable-animations",
                          G_CALLBACK(OnMotionSetting), self, G_CONNECT_SWAPPED);
}

}  // namespace

namespace kivandra::gtk {

void RegisterPictureType(const std::string& assetsDirectory) {
  AssetsDirectory() = assetsDirectory;
  g_type_ensure(kv_picture_get_type());
}

GtkWidget* NewPicture(const std::string& file, int width, int height) {
  auto* widget = static_cast<GtkWidget*>(
      g_object_new(kv_picture_get_type(), "file", file.c_str(), "accessible-role",
                   GTK_ACCESSIBLE_ROLE_PRESENTATION, "width-request", width, "height-request", height,
                   "halign", GTK_ALIGN_CENTER, "valign", GTK_ALIGN_CENTER, nullptr));
  if (width < 0) {
    gtk_widget_set_halign(widget, GTK_ALIGN_FILL);
    gtk_widget_set_valign(widget, GTK_ALIGN_FILL);
  }
  return widget;
}

void ShowPicture(GtkWidget* picture, const std::string& file) { Load(AsPicture(picture), file.c_str()); }

void StopPicture(GtkWidget* picture) {
  KvPicture* self = AsPicture(picture);
  StopTicking(self);
  g_clear_object(&self->shown->frames);
}

}  // namespace kivandra::gtk
