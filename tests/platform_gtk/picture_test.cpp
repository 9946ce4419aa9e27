// SPDX-License-Identifier: GPL-3.0-or-later
// Pictures that move, and a desktop that wants less motion.
#include <filesystem>
#include <fstream>

#include "platform/gtk/controls/page_view_control.h"
#include "platform_gtk/window_test.h"

namespace kivandra::gtk {
namespace {

constexpr unsigned kFrameMilliseconds = 30;

/// A picture of one pixel whose frames are red and blue, for ever in turn.
std::string RedAndBlue() {
  const auto frame = [](char firstByte) {
    constexpr char kHundredths = kFrameMilliseconds / 10;
    const char control[] = {'\x21', '\xf9', 4, 0, kHundredths, 0, 0, 0};
    const char image[] = {'\x2c', 0, 0, 0, 0, 1, 0, 1, 0, 0, 2, 2, firstByte, 1, 0};
    return std::string(control, sizeof control) + std::string(image, sizeof image);
  };
  const char screen[] = {1, 0, 1, 0, '\x80', 0, 0, '\xff', 0, 0, 0, 0, '\xff'};
  const char again[] = {3, 1, 0, 0, 0};
  return "GIF89a" + std::string(screen, sizeof screen) + "\x21\xff\x0bNETSCAPE2.0" +
         std::string(again, sizeof again) + frame('\x44') + frame('\x4c') + ";";
}

class PictureTest : public WindowTest {
 protected:
  PictureTest() {
    std::ofstream(path, std::ios::binary) << RedAndBlue();
    window.set_default_size(100, 100);
    window.set_child(place);
  }
  ~PictureTest() override {
    WantMotion(true);
    window.close();
    Settle();
    std::filesystem::remove(path);
  }

  static void WantMotion(bool wanted) {
    Gtk::Settings::get_default()->property_gtk_enable_animations() = wanted;
  }
  void Show() {
    window.set_visible(true);
    view.Navigate(path);
    ASSERT_TRUE(Until([&] { return !Colour().empty(); }));
  }
  /// "red" or "blue", and nothing while nothing is drawn.
  std::string Colour() {
    GtkWidget* picture = gtk_widget_get_first_child(GTK_WIDGET(place.gobj()));
    if (picture == nullptr || gtk_widget_get_width(picture) == 0) {
      return {};
    }
    GtkSnapshot* snapshot = gtk_snapshot_new();
    GTK_WIDGET_GET_CLASS(picture)->snapshot(picture, snapshot);
    GskRenderNode* node = gtk_snapshot_free_to_node(snapshot);
    if (node == nullptr) {
      return {};
    }
    auto surface = Cairo::ImageSurface::create(Cairo::Surface::Format::ARGB32, 100, 100);
    gsk_render_node_draw(node, Cairo::Context::create(surface)->cobj());
    gsk_render_node_unref(node);
    surface->flush();
    const unsigned char* pixel = surface->get_data() + 50L * surface->get_stride() + 50L * 4;
    return pixel[2] > pixel[0] ? "red" : pixel[0] > pixel[2] ? "blue" : "";
  }
  bool Moves() {
    const std::string before = Colour();
    return Until([&] { return Colour() != before; });
  }
  /// Whether the picture keeps its colour for the time of many frames.
  bool StandsStill() {
    const std::string before = Colour();
    bool same = !before.empty();
    int frames = 20;
    Glib::signal_timeout().connect(
        [&] {
          same = same && Colour() == before;
          return --frames > 0;
        },
        kFrameMilliseconds / 2);
    Until([&] { return frames == 0; });
    return same;
  }

  std::string path =
      (std::filesystem::temp_directory_path() / ("moves-" + std::to_string(getpid()) + ".gif"));
  Gtk::Window window;
  Gtk::Box place;
  PageViewControl view{place, pages};
};

TEST_F(PictureTest, MovesUntilItIsStopped) {
  Show();
  EXPECT_TRUE(Moves());
  view.Stop();
  EXPECT_TRUE(StandsStill());
}

TEST_F(PictureTest, StandsStillOnADesktopThatWantsLessMotion) {
  WantMotion(false);
  Show();
  EXPECT_EQ(Colour(), "red") << "the first frame";
  EXPECT_TRUE(StandsStill());
}

TEST_F(PictureTest, TheDesktopsWishHoldsWhileItMoves) {
  Show();
  EXPECT_TRUE(Moves());
  WantMotion(false);
  EXPECT_TRUE(StandsStill());
  WantMotion(true);
  EXPECT_TRUE(Moves());
}

TEST_F(PictureTest, AStoppedPictureStaysStoppedWhateverTheDesktopWants) {
  Show();
  view.Stop();
  WantMotion(false);
  WantMotion(true);
  EXPECT_TRUE(StandsStill());
}

TEST_F(PictureTest, LoadedUnderTheWishItMovesWhenTheWishIsGone) {
  WantMotion(false);
  Show();
  view.Navigate(path);
  WantMotion(true);
  EXPECT_TRUE(Moves());
}

TEST_F(PictureTest, HiddenItWaitsAndGoesOnWhenItIsSeenAgain) {
  Show();
  window.set_visible(false);
  WantMotion(false);
  WantMotion(true);
  EXPECT_TRUE(StandsStill());
  window.set_visible(true);
  EXPECT_TRUE(Moves());
}

TEST_F(PictureTest, TheWishMayChangeAfterThePictureIsGone) {
  Show();
  place.remove(*place.get_first_child());
  WantMotion(false);
  WantMotion(true);
  Settle();
  EXPECT_EQ(place.get_first_child(), nullptr);
}

}  // namespace
}  // namespace kivandra::gtk
