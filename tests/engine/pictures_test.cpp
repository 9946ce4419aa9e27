// SPDX-License-Identifier: GPL-3.0-or-later
// Pages with and without their pictures.
#include "engine/engine_test.h"

namespace kivandra::testing {
namespace {

using ::testing::Test;

class Pictures : public Test {
 protected:
  LoopbackServer server;
  TestWindow window;

  void SetUp() override {
    server.Serve("/a", {"<title>a</title><img src=/p.svg>", "text/html"});
    server.Serve("/p.svg", {"<svg xmlns='http://www.w3.org/2000/svg' width='7' height='7'/>",
                            "image/svg+xml",
                            200,
                            {{"Cache-Control", "no-store"}}});
  }
  void TearDown() override { Engine().SetImagesShown(true); }
  static std::string Width(TestWindow& of) { return of.Script("return document.images[0].naturalWidth"); }
};

TEST_F(Pictures, AreShownAtFirst) {
  EXPECT_TRUE(Engine().ImagesShown());
  ASSERT_TRUE(window.Load(server.Url("/a")));
  EXPECT_EQ(Width(window), "7");
}

TEST_F(Pictures, AreLeftOutOfTheNextPageOfEveryWindowAndComeBack) {
  TestWindow other;
  ASSERT_TRUE(other.Load(server.Url("/a")));
  Engine().SetImagesShown(false);
  EXPECT_FALSE(Engine().ImagesShown());
  TestWindow later;
  for (TestWindow* each : {&window, &other, &later}) {
    ASSERT_TRUE(each->Load(server.Url("/a")));
    EXPECT_EQ(Width(*each), "0");
  }
  EXPECT_EQ(server.Count("/p.svg"), 1);
  Engine().SetImagesShown(true);
  other.journal.clear();
  other.Browser().Refresh();
  ASSERT_TRUE(other.WaitFor("DownloadComplete"));
  EXPECT_EQ(Width(other), "7");
}

TEST_F(Pictures, AWindowThatAPageOpensFollowsTheSameChoice) {
  ASSERT_TRUE(window.Load(server.Url("/a")));
  Engine().SetImagesShown(false);
  std::unique_ptr<TestWindow> popUp;
  window.newWindow = [&](WebBrowser*& ppDisp, bool&) {
    popUp = std::make_unique<TestWindow>();
    ppDisp = &popUp->Browser();
  };
  window.RunScript("open('/a')");
  ASSERT_TRUE(WaitUntil([&] { return popUp && popUp->Count("DocumentComplete top ") > 0; }));
  EXPECT_EQ(Width(*popUp), "0");
}

TEST_F(Pictures, AChoiceMadeAfterAWindowClosedDoesNoHarm) {
  ASSERT_TRUE(window.Load(server.Url("/a")));
  window.CloseWindow();
  Engine().SetImagesShown(false);
  window.Owned().reset();
  Engine().SetImagesShown(true);
  EXPECT_TRUE(Engine().ImagesShown());
}

}  // namespace
}  // namespace kivandra::testing
