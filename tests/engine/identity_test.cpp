// SPDX-License-Identifier: GPL-3.0-or-later
// What the engine says of itself to servers, and what surrounds it.
#include <gmock/gmock.h>

#include <optional>

#include "engine/engine_test.h"

namespace kivandra::testing {
namespace {

using ::testing::HasSubstr;
using ::testing::Test;

class Identity : public Test {
 protected:
  LoopbackServer server;
  TestWindow window;

  static std::string CookieHeader(const std::string& url) {
    std::optional<std::string> header;
    Engine().Session().CookieHeader(url, [&](std::string text) { header = std::move(text); });
    EXPECT_FALSE(header.has_value());
    WaitUntil([&] { return header.has_value(); });
    return header.value_or("none came");
  }
};

TEST_F(Identity, IsWhatTheEngineReallySends) {
  server.Serve("/a", {"a"});
  ASSERT_TRUE(window.Load(server.Url("/a")));
  const Request request = server.Last("/a");
  gtk::WebSession& session = Engine().Session();
  EXPECT_EQ(request.headers.at("user-agent"), session.UserAgent());
  EXPECT_EQ(request.headers.at("accept"), session.Accept());
  EXPECT_EQ(request.headers.at("accept-language"), session.AcceptLanguage());
}

TEST_F(Identity, KnowsTheCookiesOfEachHost) {
  server.Serve("/set", {"a",
                        "text/html",
                        200,
                        {{"Set-Cookie", "plain=1; Path=/"},
                         {"Set-Cookie", "hidden=2; HttpOnly; Max-Age=1000; Path=/"}}});
  server.Serve("/a", {"a"});
  ASSERT_TRUE(window.Load(server.Url("/set")));
  ASSERT_TRUE(window.Load(server.Url("/a")));
  EXPECT_EQ(server.Last("/a").headers.at("cookie"), CookieHeader(server.Url("/a")));
  EXPECT_THAT(CookieHeader(server.Url("/a")), HasSubstr("hidden=2"));
  EXPECT_EQ(CookieHeader(server.Url("/a", "other.localhost")), "");
  EXPECT_EQ(CookieHeader("not an address"), "");

  Engine().Session().InternetSetOptionA(INTERNET_OPTION_END_BROWSER_SESSION);
  EXPECT_EQ(CookieHeader(server.Url("/a")), "hidden=2");
}

TEST_F(Identity, KnowsTheReferrerWhileAQuestionIsJudged) {
  server.Serve("/a", {"a"});
  server.Serve("/b", {"b"});
  ASSERT_TRUE(window.Load(server.Url("/a")));
  std::string during;
  window.judge = [&](const auto& navigation) {
    during = Engine().Session().Referrer(navigation->Url());
    navigation->Allow();
  };
  window.RunScript("location.href='/b'");
  ASSERT_TRUE(window.WaitFor("DocumentComplete top " + server.Url("/b")));
  EXPECT_EQ(during, server.Url("/a"));
  EXPECT_EQ(server.Last("/b").headers.at("referer"), during);
  EXPECT_EQ(Engine().Session().Referrer(server.Url("/b")), "");
}

TEST(Surroundings, TheEngineIsShutIn) { EXPECT_EQ(gtk::SandboxProblem(), ""); }

TEST(Surroundings, NoDebuggerGetsIn) {
  g_setenv("WEBKIT_INSPECTOR_SERVER", "127.0.0.1:1", TRUE);
  g_setenv("GTK_DEBUG", "interactive", TRUE);
  gtk::PrepareEngineEnvironment();
  EXPECT_EQ(g_getenv("WEBKIT_INSPECTOR_SERVER"), nullptr);
  EXPECT_EQ(g_getenv("GTK_DEBUG"), nullptr);
}

}  // namespace
}  // namespace kivandra::testing
