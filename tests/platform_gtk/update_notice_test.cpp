// SPDX-License-Identifier: GPL-3.0-or-later
// The notice of an update that comes in: its sign of progress, and the ways to close it.
#include "platform/page_view.h"
#include "platform/picture_box.h"
#include "platform_gtk/control_test.h"

namespace kivandra::gtk {
namespace {

class UpdateNoticeTest : public ControlTest {
 protected:
  void ShowNotice() {
    form = forms.Load("Updateform");
    form->Get<PageView>("WebBrowser1").Navigate("http://site.example/update/update1.html");
    form->SetVisible(true);
    spinner = WidgetOf(form->Get<PictureBox>("Progress")).get_first_child();
    Laid(*spinner);
  }
  ~UpdateNoticeTest() override {
    WantMotion(true);
    form->Unload();
    Settle();
  }

  static void WantMotion(bool wanted) {
    Gtk::Settings::get_default()->property_gtk_enable_animations() = wanted;
  }
  /// What the sign looks like at this moment, pixel by pixel.
  std::string Look() {
    GtkSnapshot* snapshot = gtk_snapshot_new();
    GtkWidget* row = spinner->get_parent()->gobj();
    GTK_WIDGET_GET_CLASS(row)->snapshot(row, snapshot);
    GskRenderNode* node = gtk_snapshot_free_to_node(snapshot);
    auto surface = Cairo::ImageSurface::create(Cairo::Surface::Format::ARGB32, 40, 40);
    if (node != nullptr) {
      gsk_render_node_draw(node, Cairo::Context::create(surface)->cobj());
      gsk_render_node_unref(node);
    }
    surface->flush();
    return {reinterpret_cast<const char*>(surface->get_data()),
            static_cast<std::size_t>(surface->get_stride()) * 40U};
  }
  bool Seen() { return Look().find_first_not_of('\0') != std::string::npos; }
  bool Moves() {
    const std::string before = Look();
    return Until([&] { return Look() != before; });
  }
  /// Whether it keeps its look for the time of many of the screen's frames.
  bool StandsStill() {
    const std::string before = Look();
    bool same = true;
    int looks = 20;
    Glib::signal_timeout().connect([&] { return same = same && Look() == before, --looks > 0; }, 16);
    Until([&] { return looks == 0; });
    return same;
  }

  Gtk::Widget* spinner = nullptr;
};

TEST_F(UpdateNoticeTest, ItsSignMovesWhileTheUpdateComesIn) {
  ShowNotice();
  EXPECT_TRUE(Moves());
  EXPECT_TRUE(IsNamed(*spinner, "The update comes in"));
}

TEST_F(UpdateNoticeTest, ItsSignStandsStillOnADesktopThatWantsLessMotion) {
  WantMotion(false);
  ShowNotice();
  EXPECT_TRUE(StandsStill());
  EXPECT_TRUE(Seen());
}

TEST_F(UpdateNoticeTest, ItsSignGoesWhenNothingComesAnyMore) {
  ShowNotice();
  const Twips height = form->Height();
  EXPECT_TRUE(Seen());
  form->Get<PictureBox>("Progress").SetEnabled(false);
  EXPECT_TRUE(Until([&] { return !Seen(); }));
  EXPECT_EQ(form->Height(), height);
}

TEST_F(UpdateNoticeTest, APersonMayCloseIt) {
  ShowNotice();
  Press(*spinner, {"Escape"});
  EXPECT_TRUE(Until([&] { return !form->Loaded(); }));
}

}  // namespace
}  // namespace kivandra::gtk
