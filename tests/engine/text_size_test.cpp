// SPDX-License-Identifier: GPL-3.0-or-later
// Letters of five sizes.
#include "engine/engine_test.h"
#include "platform/platform_error.h"

namespace kivandra::testing {
namespace {

using ::testing::Test;

class TextSize : public Test {
 protected:
  LoopbackServer server;
  TestWindow window;

  void SetUp() override {
    for (const char* path : {"/a", "/b"}) {
      server.Serve(path, {"<body style='margin:0'><div id=d style='width:300px;height:200px'>"
                          "<span id=s style='font-size:16px'>mmmm</span></div>"});
    }
    ASSERT_TRUE(window.Load(server.Url("/a")));
  }
  static double Letters(TestWindow& of) {
    return std::stod(of.Script("return s.getBoundingClientRect().width"));
  }
  static std::string Layout(TestWindow& of) {
    return of.Script("return d.getBoundingClientRect().width + ' ' + document.documentElement.clientWidth");
  }
  bool Becomes(TestWindow& of, double width) {
    return WaitUntil([&] { return std::abs(Letters(of) - width) < width * 0.06; });
  }
};

TEST_F(TextSize, ChangesTheLettersAndLeavesTheLayout) {
  const double own = Letters(window);
  const std::string layout = Layout(window);
  constexpr double kSizes[] = {0.75, 0.875, 1.0, 1.25, 1.5};
  for (const int size : {4, 3, 2, 1, 0, 2}) {
    window.Browser().ExecWB(OLECMDID_ZOOM, 2, size);
    EXPECT_TRUE(Becomes(window, own * kSizes[size])) << size << ": " << Letters(window) / own;
    EXPECT_EQ(Layout(window), layout);
  }
}

TEST_F(TextSize, StaysForTheWindowsNextPagesAndNoOtherWindow) {
  const double own = Letters(window);
  window.Browser().ExecWB(OLECMDID_ZOOM, 2, 4);
  ASSERT_TRUE(window.Load(server.Url("/b", "localhost")));
  EXPECT_TRUE(Becomes(window, own * 1.5));
  TestWindow other;
  ASSERT_TRUE(other.Load(server.Url("/a")));
  EXPECT_TRUE(Becomes(other, own));
  std::unique_ptr<TestWindow> popUp;
  window.newWindow = [&](WebBrowser*& ppDisp, bool&) {
    popUp = std::make_unique<TestWindow>();
    ppDisp = &popUp->Browser();
  };
  window.RunScript("open('/b')");
  ASSERT_TRUE(WaitUntil([&] { return popUp && popUp->Count("DocumentComplete top ") > 0; }));
  EXPECT_TRUE(Becomes(*popUp, own));
}

TEST_F(TextSize, ASizeThatThereIsNotIsRefused) {
  for (const int size : {-1, 5, 1000000}) {
    EXPECT_THROW(window.Browser().ExecWB(OLECMDID_ZOOM, 2, size), PlatformError);
  }
}

}  // namespace
}  // namespace kivandra::testing
