// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gtk/bars/tool_face.h"

#include "platform/gtk/bars/tool_pictures.h"
#include "platform/gtk/captions.h"
#include "platform/gtk/controls/picture.h"
#include "platform/gtk/utf8_text.h"

namespace kivandra::gtk {
namespace {

constexpr int kPictureAbove = 32;
constexpr int kPictureBeside = 24;
constexpr int kMostLettersOnBar = 24;
constexpr int kMostLettersInRow = 40;

bool HasWords(const ToolData& tool) { return tool.display != ToolDisplay::Image; }

/// A picture that is wider than high carries its own words and its own face.
bool IsDrawnWhole(const ToolData& tool, const PictureSize& size) {
  return tool.display == ToolDisplay::Image && size.width > size.height;
}

Gtk::Label* NewWord(const ToolData& tool, Gtk::Button& button, int mostLetters) {
  auto* word = Gtk::make_managed<Gtk::Label>();
  word->set_text_with_mnemonic(ShownText(MnemonicOf(tool.caption)));
  word->set_mnemonic_widget(button);
  word->set_single_line_mode(true);
  word->set_ellipsize(Pango::EllipsizeMode::END);
  word->set_max_width_chars(mostLetters);
  return word;
}

/// The tool tip; a caption that is cut off is told there too.
Glib::ustring TipOf(const ToolData& tool, int mostLetters) {
  const bool cut = HasWords(tool) && ValidText(tool.caption).size() > static_cast<std::size_t>(mostLetters);
  return ShownText(tool.toolTip.empty() && cut ? WordsOfCaption(tool.caption) : tool.toolTip);
}

ToolFace NewFace(const ToolData& tool, const std::string& file, int mostLetters) {
  ToolFace face{Gtk::make_managed<Gtk::Button>(), nullptr};
  if (HasWords(tool)) {
    face.word = NewWord(tool, *face.button, mostLetters);
  }
  SetAccessibleName(*face.button, AccessibleNameOf(tool, file));
  if (const auto tip = TipOf(tool, mostLetters); !tip.empty()) {
    face.button->set_tooltip_text(tip);
  }
  return face;
}

}  // namespace

ToolFace NewBarFace(const ToolData& tool, const std::string& file) {
  ToolFace face = NewFace(tool, file, kMostLettersOnBar);
  face.button->add_css_class("kv-tool");
  face.button->set_focus_on_click(false);
  const bool above = tool.display == ToolDisplay::ImageAboveText;
  auto* content =
      Gtk::make_managed<Gtk::Box>(above ? Gtk::Orientation::VERTICAL : Gtk::Orientation::HORIZONTAL);
  content->set_halign(Gtk::Align::CENTER);
  face.button->set_child(*content);
  if (tool.display != ToolDisplay::Text && !file.empty()) {
    PictureSize size = SizeOfPicture(file);
    if (IsDrawnWhole(tool, size)) {
      face.button->add_css_class("kv-flat-picture");
    } else {
      size.width = size.height = above ? kPictureAbove : kPictureBeside;
    }
    gtk_box_append(content->gobj(), NewPicture(file, size.width, size.height));
  }
  if (face.word != nullptr) {
    content->append(*face.word);
    face.button->add_css_class(above ? "kv-above" : "kv-beside");
  }
  if (above && !tool.enabled) {
    face.button->add_css_class("kv-invite");  // what is rarely enabled says so when it is
  }
  return face;
}

ToolFace NewRowFace(const ToolData& tool, const std::string& file) {
  ToolFace face = NewFace(tool, file, kMostLettersInRow);
  g_object_set(face.button->gobj(), "accessible-role", GTK_ACCESSIBLE_ROLE_MENU_ITEM, nullptr);
  face.button->set_focus_on_click(false);
  PictureSize size = SizeOfPicture(file);
  if (IsDrawnWhole(tool, size)) {
    face.button->add_css_class("kv-art");
    gtk_button_set_child(face.button->gobj(), NewPicture(file, size.width, size.height));
    return face;
  }
  face.button->add_css_class("kv-row");
  auto* content = Gtk::make_managed<Gtk::Box>();
  face.button->set_child(*content);
  if (tool.display != ToolDisplay::Text && !file.empty()) {
    gtk_box_append(content->gobj(), NewPicture(file, kPictureBeside, kPictureBeside));
    face.button->add_css_class("kv-with-picture");
  }
  if (face.word != nullptr) {
    face.word->set_hexpand(true);
    face.word->set_xalign(0);
    content->append(*face.word);
  }
  if (!tool.subBand.empty()) {
    auto* chevron = Gtk::make_managed<Gtk::Image>();
    chevron->set_from_icon_name("chevron-right-symbolic");
    chevron->add_css_class("kv-chevron");
    content->append(*chevron);
  }
  return face;
}

Gtk::Widget* NewLine(const std::string& file, Gtk::Orientation orientation) {
  if (const PictureSize size = SizeOfPicture(file); size.width > 0) {
    auto* line = Gtk::make_managed<Gtk::Box>();
    line->add_css_class("kv-line");
    line->set_halign(Gtk::Align::CENTER);
    gtk_box_append(line->gobj(), NewPicture(file, size.width, size.height));
    return line;
  }
  return Gtk::make_managed<Gtk::Separator>(orientation);
}

std::string AccessibleNameOf(const ToolData& tool, const std::string& file) {
  std::string name;
  if (HasWords(tool) || tool.kind == ToolKind::Edit) {
    name = WordsOfCaption(tool.caption);
  }
  // The caption of a tool that is only a picture is never seen; the words of the picture are.
  for (const std::string& other :
       {WordsOfPicture(file), tool.toolTip, WordsOfCaption(tool.caption), tool.name}) {
    name = name.empty() ? other : name;
  }
  return name;
}

void SetAccessibleName(Gtk::Widget& widget, const std::string& name) {
  gtk_accessible_update_property(GTK_ACCESSIBLE(widget.gobj()), GTK_ACCESSIBLE_PROPERTY_LABEL,
                                 ShownText(name).c_str(), -1);
  // With the name of a label inside it would be read out twice.
  gtk_accessible_reset_relation(GTK_ACCESSIBLE(widget.gobj()), GTK_ACCESSIBLE_RELATION_LABELLED_BY);
}

void MarkOpener(Gtk::Widget& widget) {
  gtk_accessible_update_property(GTK_ACCESSIBLE(widget.gobj()), GTK_ACCESSIBLE_PROPERTY_HAS_POPUP, TRUE, -1);
  gtk_accessible_update_state(GTK_ACCESSIBLE(widget.gobj()), GTK_ACCESSIBLE_STATE_EXPANDED, FALSE, -1);
}

void MarkOpen(Gtk::Widget& widget, bool open) {
  if (open) {
    widget.add_css_class("kv-open");
    widget.set_state_flags(Gtk::StateFlags::CHECKED, false);
  } else {
    widget.remove_css_class("kv-open");
    widget.unset_state_flags(Gtk::StateFlags::CHECKED);
  }
  gtk_accessible_update_state(GTK_ACCESSIBLE(widget.gobj()), GTK_ACCESSIBLE_STATE_EXPANDED,
                              open ? TRUE : FALSE, -1);
}

}  // namespace kivandra::gtk
