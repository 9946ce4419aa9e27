// SPDX-License-Identifier: GPL-3.0-or-later
// The style class "kv-flat": a combo box that shows its edge under the pointer and with the keyboard only.
#include "platform/button.h"
#include "platform_gtk/control_test.h"
#include "platform_gtk/own_forms.h"

namespace kivandra::gtk {
namespace {

class FlatComboBoxLookTest : public ControlTest {
 protected:
  FlatComboBoxLookTest() {
    const auto box = [](const char* name, const char* field) {
      return std::string("<child><object class='GtkComboBoxText' id='") + name + "'>" +
             "<property name='has-entry'>" + field + "</property>" +
             "<property name='width-request'>200</property>" + "<items><item>otter</item></items>" +
             "<style><class name='kv-flat'/></style></object></child>";
    };
    // The button lies far from the boxes, so that the pointer has a place away from them.
    own.Write("flat", "",
              box("cboField", "True") + box("cboList", "False") +
                  "<child><object class='GtkButton' id='cmdAway'><property name='label'>Away</property>"
                  "<property name='margin-top'>80</property></object></child>");
    form = ownForms.Load("flat");
    form->SetVisible(true);
    Laid(Away());
    HandsOn(Away()).Click(Away());
    Settle();
  }
  ~FlatComboBoxLookTest() override {
    form->Unload();
    Settle();
  }

  Gtk::Widget& Away() { return WidgetOf(form->Get<Button>("cmdAway")); }
  /// The box with a field, and the box that is a list alone.
  std::vector<Gtk::Widget*> Boxes() {
    auto boxes =
        WidgetsBelow(WindowOf(Away()), [](auto& each) { return GTK_IS_COMBO_BOX(each.gobj()) != FALSE; });
    EXPECT_EQ(boxes.size(), 2U);
    return boxes;
  }

  /// Whether the box draws its upper and its lower edge.
  static bool Raised(Gtk::Widget& box) {
    const int width = box.get_width();
    const int height = box.get_height();
    GtkSnapshot* snapshot = gtk_snapshot_new();
    GTK_WIDGET_GET_CLASS(box.gobj())->snapshot(box.gobj(), snapshot);
    GskRenderNode* node = gtk_snapshot_free_to_node(snapshot);
    if (node == nullptr) {
      return false;
    }
    auto surface = Cairo::ImageSurface::create(Cairo::Surface::Format::ARGB32, width, height);
    gsk_render_node_draw(node, Cairo::Context::create(surface)->cobj());
    gsk_render_node_unref(node);
    surface->flush();
    // Whatever is drawn on the edge is the box's own: the ground belongs to the window.
    const auto drawn = [&](int x, int y) {
      return surface->get_data()[y * surface->get_stride() + x * 4 + 3] != 0;
    };
    return drawn(width / 4, 0) && drawn(width / 4, height - 1);
  }
  bool UntilRaised(Gtk::Widget& box, bool raised) {
    return Until([&] { return Raised(box) == raised; });
  }

  OwnForms own;
  FormLoader ownForms{own.Folder(), pages};
};

TEST_F(FlatComboBoxLookTest, IsFlatWhenIdleAndRaisedUnderThePointer) {
  for (Gtk::Widget* box : Boxes()) {
    EXPECT_TRUE(UntilRaised(*box, false));
    HandsOn(*box).MoveTo(*box);
    EXPECT_TRUE(UntilRaised(*box, true));
    HandsOn(*box).MoveTo(Away());
    EXPECT_TRUE(UntilRaised(*box, false));
  }
}

TEST_F(FlatComboBoxLookTest, IsRaisedWhileItHasTheKeyboard) {
  for (Gtk::Widget* box : Boxes()) {
    box->grab_focus();
    EXPECT_TRUE(UntilRaised(*box, true));
    Away().grab_focus();
    EXPECT_TRUE(UntilRaised(*box, false));
  }
}

TEST_F(FlatComboBoxLookTest, NeverRisesWhileItIsSwitchedOff) {
  for (Gtk::Widget* box : Boxes()) {
    HandsOn(*box).MoveTo(*box);
    EXPECT_TRUE(UntilRaised(*box, true));
    box->set_sensitive(false);
    EXPECT_TRUE(UntilRaised(*box, false)) << "the pointer is still there";
  }
}

}  // namespace
}  // namespace kivandra::gtk
