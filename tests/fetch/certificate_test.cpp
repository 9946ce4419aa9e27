// SPDX-License-Identifier: GPL-3.0-or-later
// Pages of sites that prove who they are, and of sites that can't.
#include "fetch/fetch_test.h"

namespace kivandra::testing {
namespace {

using ::testing::HasSubstr;

constexpr char kSelfSigned[] = KV_TEST_DATA "/self_signed.pem";  // for localhost, till 2120
constexpr char kExpired[] = KV_TEST_DATA "/expired.pem";         // for localhost, till 2021

/// While it stands, this process trusts whoever holds the certificate of the file.
class Trust {
 public:
  explicit Trust(const char* file) {
    GTlsDatabase* trusted = g_tls_file_database_new(file, nullptr);
    g_tls_backend_set_default_database(g_tls_backend_get_default(), trusted);
    g_object_unref(trusted);
  }
  ~Trust() { g_tls_backend_set_default_database(g_tls_backend_get_default(), nullptr); }
  Trust(const Trust&) = delete;
  Trust& operator=(const Trust&) = delete;
};

class Certificates : public PageFetching {
 protected:
  RawServer server{Always(HttpAnswer("words")), kSelfSigned};
};

TEST_F(Certificates, APageIsReadIfItsSiteIsTrusted) {
  const Trust trust(kSelfSigned);
  EXPECT_EQ(Fetch(server.Url("/", "localhost")), "words");
}

TEST_F(Certificates, APageOfASiteThatVouchesForItselfIsEmpty) {
  EXPECT_EQ(Fetch(server.Url("/", "localhost")), "");
  EXPECT_GT(server.Callers(), 0);
  EXPECT_TRUE(server.Requests().empty()) << "address and cookies went to a stranger";
}

TEST_F(Certificates, APageOfASiteThatProvesToBeAnotherIsEmpty) {
  const Trust trust(kSelfSigned);
  EXPECT_EQ(Fetch(server.Url("/", "127.0.0.1")), "");
  EXPECT_GT(server.Callers(), 0);
  EXPECT_TRUE(server.Requests().empty());
}

TEST_F(Certificates, APageOfASiteWhoseProofIsOutOfDateIsEmpty) {
  RawServer old(Always(HttpAnswer("words")), kExpired);
  const Trust trust(kExpired);
  EXPECT_EQ(Fetch(old.Url("/", "localhost")), "");
  EXPECT_GT(old.Callers(), 0);
  EXPECT_TRUE(old.Requests().empty());
}

TEST_F(Certificates, ARedirectToAnUntrustedSiteIsAnEmptyPage) {
  RawServer first(
      Always(HttpAnswer("", "text/html", "302 Found", "Location: " + server.Url("/", "localhost") + "\r\n")));
  EXPECT_EQ(Fetch(first.Url("/")), "");
  EXPECT_GT(server.Callers(), 0);
  EXPECT_TRUE(server.Requests().empty());
}

TEST_F(Certificates, OverASecretChannelBrotliIsOfferedAsTheEngineOffersIt) {
  const Trust trust(kSelfSigned);
  ASSERT_EQ(Fetch(server.Url("/", "localhost")), "words");
  EXPECT_THAT(server.Requests().at(0), HasSubstr("\r\nAccept-Encoding: gzip, deflate, br\r\n"));
}

}  // namespace
}  // namespace kivandra::testing
