// SPDX-License-Identifier: GPL-3.0-or-later
// Sites that can't prove who they are.
#include <gmock/gmock.h>

#include "engine/engine_test.h"

namespace kivandra::testing {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

constexpr char kSelfSigned[] = KV_TEST_DATA "/self_signed.pem";
constexpr char kExpired[] = KV_TEST_DATA "/expired.pem";
constexpr char kNotSafe[] = "This page is not safe to open";

class Certificates : public ::testing::Test {
 protected:
  LoopbackServer plain;
  LoopbackServer server{kSelfSigned};
  TestWindow window;

  void SetUp() override { server.Serve("/a", {"<title>secret</title>secret"}); }
};

TEST_F(Certificates, APageThatCannotProveWhoItIsIsNotShown) {
  LoopbackServer old(kExpired);
  old.Serve("/a", {"secret"});
  for (const LoopbackServer* untrusted : {&server, &old}) {
    ASSERT_TRUE(window.Load(untrusted->Url("/a")));
    EXPECT_EQ(window.Browser().LocationName(), kNotSafe);
    EXPECT_TRUE(untrusted->Requests().empty()) << "address and cookies went to a stranger";
    EXPECT_EQ(window.Script("return document.documentElement.outerHTML.includes('secret')"), "false");
    EXPECT_FALSE(window.Browser().Busy());
    EXPECT_EQ(window.Count("DownloadBegin"), window.Count("DownloadComplete"));
  }
}

TEST_F(Certificates, ThePageInItsPlaceSaysSoInPlainWordsAndOffersNoWayOn) {
  const std::string url = server.Url("/a");
  ASSERT_TRUE(window.Load(url));
  const std::string words = window.Script("return document.body.innerText");
  EXPECT_THAT(words, HasSubstr(kNotSafe));
  EXPECT_THAT(words, HasSubstr("Ask a grown-up"));
  EXPECT_EQ(window.Script("return /certificate|tls|ssl|error|code|unacceptable|risk|continue|proceed|0x/i"
                          ".test(document.body.innerText)"),
            "false");
  // The one thing to press is a fresh try, which is judged and ends in the same place.
  EXPECT_EQ(window.Script("return document.querySelectorAll('a, button, input, form').length"), "1");
  EXPECT_EQ(window.Script("return document.querySelector('a').href"), url);
  window.journal.clear();
  window.RunScript("document.querySelector('a').click()");
  ASSERT_TRUE(window.WaitFor("DocumentComplete top " + url));
  EXPECT_EQ(window.Count("BeforeNavigate2 " + url), 1);
  EXPECT_EQ(window.Browser().LocationName(), kNotSafe);
  EXPECT_TRUE(server.Requests().empty());
}

TEST_F(Certificates, AFrameOrPictureThatCannotProveWhoItIsStaysEmpty) {
  server.Serve("/p", {"<svg xmlns='http://www.w3.org/2000/svg'/>", "image/svg+xml"});
  plain.Serve("/a", {"<title>a</title>a<iframe src='" + server.Url("/a") + "'></iframe><img src='" +
                     server.Url("/p") + "'>"});
  ASSERT_TRUE(window.Load(plain.Url("/a")));
  ASSERT_EQ(window.Count("BeforeNavigate2 " + server.Url("/a")), 1);
  EXPECT_EQ(window.Browser().LocationName(), "a");
  EXPECT_EQ(window.Count("NavigateComplete2 frame " + server.Url("/a")), 0);
  EXPECT_EQ(window.Count("DownloadBegin"), window.Count("DownloadComplete"));
  EXPECT_TRUE(server.Requests().empty());
}

TEST_F(Certificates, ARedirectToSuchASiteIsNotFollowed) {
  plain.Serve("/a", {"", "text/html", 302, {{"Location", server.Url("/a")}}});
  window.Browser().Navigate(plain.Url("/a"));
  ASSERT_TRUE(window.WaitFor("DocumentComplete top " + server.Url("/a")));
  EXPECT_EQ(window.Browser().LocationName(), kNotSafe);
  EXPECT_TRUE(server.Requests().empty());
}

TEST_F(Certificates, ATrustedSiteIsShownAndIsOfferedBrotliToo) {
  // The same words that a fetch on the side sends: a server must not be able to tell the two apart.
  GTlsCertificate* certificate = g_tls_certificate_new_from_file(kSelfSigned, nullptr);
  webkit_network_session_allow_tls_certificate_for_host(Engine().Session().Get(), certificate, "localhost");
  g_object_unref(certificate);
  ASSERT_TRUE(window.Load(server.Url("/a", "localhost")));
  EXPECT_EQ(window.Browser().LocationName(), "secret");
  EXPECT_EQ(server.Last("/a").headers.at("accept-encoding"), "gzip, deflate, br");
  plain.Serve("/a", {"a"});
  ASSERT_TRUE(window.Load(plain.Url("/a")));
  EXPECT_EQ(plain.Last("/a").headers.at("accept-encoding"), "gzip, deflate");
}

}  // namespace
}  // namespace kivandra::testing
