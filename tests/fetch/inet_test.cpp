// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/inet.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "fetch/raw_server.h"
#include "linux/temporary_folder.h"
#include "platform/linux/site_server.h"
#include "platform/platform_error.h"

namespace kivandra::linux_impl {
namespace {

using kivandra::testing::Connection;
using kivandra::testing::HttpAnswer;
using kivandra::testing::RawServer;
using std::chrono::milliseconds;
using ::testing::HasSubstr;
using ::testing::Not;

RawServer::Handler Always(const std::string& answer) {
  return [answer](Connection& connection, const std::string&) { connection.Send(answer); };
}

/// The words of a fetch that fails; fails the test if it does not.
std::string Problem(const std::string& url, InetLimits limits = {},
                    const std::function<bool()>& wanted = {}) {
  try {
    const std::string body = SoupInet().OpenURL(url, limits, wanted);
    ADD_FAILURE() << url << " gives " << body.size() << " bytes";
  } catch (const PlatformError& error) {
    EXPECT_STRNE(error.what(), "");
    return error.what();
  }
  return {};
}

TEST(SoupInetTest, GivesTheBodyByteForByte) {
  std::string bytes;
  for (int i = 0; i < 300000; ++i) {
    bytes += static_cast<char>(i * 7);
  }
  for (const std::string& body : {bytes, std::string(), std::string("1.4.5"), std::string("1.4.5\r\n")}) {
    // Neither the type nor a packing that the server tells of changes anything.
    RawServer server(
        Always(HttpAnswer(body, "text/html; charset=utf-16", "200 OK", "Content-Encoding: gzip\r\n")));
    EXPECT_EQ(SoupInet().OpenURL(server.Url("/file"), {}, {}), body);
    ASSERT_EQ(server.Requests().size(), 1U);
    EXPECT_THAT(server.Requests()[0], HasSubstr("GET /file HTTP/1.1"));
    EXPECT_THAT(server.Requests()[0], Not(HasSubstr("Cookie:")));
    EXPECT_THAT(server.Requests()[0], Not(HasSubstr("Accept-Encoding:")));
  }
}

TEST(SoupInetTest, GivesABodyWithoutALength) {
  RawServer server(Always("HTTP/1.1 200 OK\r\nConnection: close\r\n\r\n1.4.5"));
  EXPECT_EQ(SoupInet().OpenURL(server.Url("/"), {}, {}), "1.4.5");
}

TEST(SoupInetTest, FollowsARedirectAndForgetsItsCookies) {
  RawServer server([](Connection& connection, const std::string& request) {
    connection.Send(request.starts_with("GET /old ")
                        ? HttpAnswer("", "text/plain", "302 Found", "Location: /new\r\nSet-Cookie: a=b\r\n")
                        : HttpAnswer("there"));
  });
  EXPECT_EQ(SoupInet().OpenURL(server.Url("/old"), {}, {}), "there");
  EXPECT_THAT(server.Requests().back(), Not(HasSubstr("Cookie:")));
}

TEST(SoupInetTest, ARedirectWithoutAnEndIsAFailure) {
  RawServer server(Always(HttpAnswer("", "text/plain", "302 Found", "Location: /\r\n")));
  Problem(server.Url("/"));
}

TEST(SoupInetTest, AnyOtherAnswerIsAFailure) {
  for (const char* status :
       {"404 Not Found", "500 Oops", "204 No Content", "206 Partial Content", "401 No"}) {
    RawServer server(Always(HttpAnswer("<html>", "text/html", status)));
    EXPECT_THAT(Problem(server.Url("/")), HasSubstr(std::string(status).substr(0, 3)));
  }
}

TEST(SoupInetTest, AnAnswerThatIsNoneIsAFailure) {
  for (const std::string& answer : {std::string("\0\xff\n\n", 4), std::string("HTTP/1.1"), std::string()}) {
    RawServer server(Always(answer));
    Problem(server.Url("/"));
  }
}

TEST(SoupInetTest, ABodyThatBreaksOffIsAFailure) {
  RawServer server(Always("HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\nhalf"));
  Problem(server.Url("/"));
  RawServer reset([](Connection& connection, const std::string&) {
    connection.Send("HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\nhalf");
    connection.Reset();
  });
  Problem(reset.Url("/"));
}

TEST(SoupInetTest, NobodyThereIsAFailure) {
  std::string gone;
  {
    const RawServer server(Always(""));
    gone = server.Url("/");
  }
  Problem(gone);
  Problem("http://nobody.invalid/");
}

TEST(SoupInetTest, WhatIsNoWebAddressIsAFailure) {
  for (const char* url : {"", "file:///etc/passwd", "ftp://127.0.0.1/", "http://", "BrowserVer.dat",
                          "http:///x", "javascript:1", "http://[::1"}) {
    Problem(url);
  }
}

TEST(SoupInetTest, ACertificateThatNobodyTrustsIsAFailure) {
  RawServer server(Always(HttpAnswer("1.4.5")), std::string(KV_TEST_DATA) + "/self_signed.pem");
  Problem(server.Url("/", "localhost"));
}

TEST(SoupInetTest, AServerThatSaysNothingIsGivenUp) {
  RawServer mute([](Connection& connection, const std::string&) { connection.WaitForEnd(); });
  EXPECT_EQ(Problem(mute.Url("/"), {milliseconds(50), milliseconds(60000), 100}),
            "The server does not answer.");
  RawServer stuck([](Connection& connection, const std::string&) {
    connection.Send("HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\nhalf");
    connection.WaitForEnd();
  });
  EXPECT_EQ(Problem(stuck.Url("/"), {milliseconds(50), milliseconds(60000), 100}),
            "The server does not answer.");
}

TEST(SoupInetTest, AServerThatDripsIsGivenUpInTheEnd) {
  // Never silent for long, and never done.
  RawServer drip([](Connection& connection, const std::string&) {
    connection.Send("HTTP/1.1 200 OK\r\nConnection: close\r\n\r\n");
    while (connection.Send("x")) {
      g_usleep(1000);
    }
  });
  EXPECT_EQ(Problem(drip.Url("/"), {milliseconds(60000), milliseconds(200), 100000000}),
            "The file takes too long.");
}

TEST(SoupInetTest, ABodyMayBeAsLargeAsTheLimitAndNoLarger) {
  const InetLimits limits{milliseconds(30000), milliseconds(30000), 100000};
  RawServer fits(Always(HttpAnswer(std::string(100000, 'x'))));
  EXPECT_EQ(SoupInet().OpenURL(fits.Url("/"), limits, {}).size(), 100000U);
  RawServer tooLarge(Always(HttpAnswer(std::string(100001, 'x'))));
  EXPECT_EQ(Problem(tooLarge.Url("/"), limits), "The file is too large.");
}

TEST(SoupInetTest, EndsOnceItIsNotWanted) {
  RawServer mute([](Connection& connection, const std::string&) { connection.WaitForEnd(); });
  EXPECT_EQ(Problem(mute.Url("/"), {}, [] { return false; }), "The file is not wanted any more.");
  // An event of the loop takes the wish away while the server is silent.
  bool wanted = true;
  g_timeout_add(
      20,
      [](gpointer flag) -> gboolean {
        *static_cast<bool*>(flag) = false;
        return G_SOURCE_REMOVE;
      },
      &wanted);
  EXPECT_EQ(Problem(mute.Url("/"), {}, [&] { return wanted; }), "The file is not wanted any more.");
}

TEST(SoupInetTest, AFileThatIsThereByTheTimeItIsNotWantedIsNotGiven) {
  RawServer server(Always(HttpAnswer("1.4.5")));
  // The event that takes the wish away lasts for as long as other files need: the file has come by its end.
  EXPECT_EQ(Problem(server.Url("/"), {},
                    [&] {
                      for (int i = 0; i < 3; ++i) {
                        EXPECT_EQ(SoupInet().OpenURL(server.Url("/other"), {}, {}), "1.4.5");
                      }
                      return false;
                    }),
            "The file is not wanted any more.");
}

TEST(SoupInetTest, AFetchInsideAFetchWorks) {
  RawServer server(Always(HttpAnswer("1.4.5")));
  SoupInet inet;
  std::string inner;
  bool asked = false;
  const std::string outer = inet.OpenURL(server.Url("/outer"), {}, [&] {
    if (!std::exchange(asked, true)) {
      inner = inet.OpenURL(server.Url("/inner"), {}, {});
    }
    return true;
  });
  EXPECT_EQ(inner, "1.4.5");
  EXPECT_EQ(outer, "1.4.5");
}

TEST(SoupInetTest, TheSiteServerOfTheSameThreadAnswersMeanwhile) {
  tests::TemporaryFolder folder;
  folder.Write("site/BrowserVer.dat", "1.4.5");
  SiteServer server(folder.Path("site"), {"kivandra.localhost", "answers.localhost"});
  ASSERT_EQ(server.Start(0), "");
  const std::string site = "http://kivandra.localhost:" + std::to_string(server.Port());
  EXPECT_EQ(SoupInet().OpenURL(site + "/BrowserVer.dat", {}, {}), "1.4.5");
  EXPECT_THAT(Problem(site + "/browser_update.exe"), HasSubstr("404"));
}

}  // namespace
}  // namespace kivandra::linux_impl
