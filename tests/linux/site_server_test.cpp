// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/site_server.h"

#include <arpa/inet.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cstring>
#include <filesystem>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "linux/temporary_folder.h"
#include "linux/until.h"

namespace kivandra::linux_impl {
namespace {

using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

/// Sends bytes to a port of this machine and gives all that comes back.
std::string Exchange(int family, unsigned short port, const std::string& request) {
  sockaddr_in address4{};
  address4.sin_family = AF_INET;
  address4.sin_port = htons(port);
  address4.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  sockaddr_in6 address6{};
  address6.sin6_family = AF_INET6;
  address6.sin6_port = htons(port);
  address6.sin6_addr = in6addr_loopback;
  const auto* address = family == AF_INET ? reinterpret_cast<const sockaddr*>(&address4)
                                          : reinterpret_cast<const sockaddr*>(&address6);
  const int file = socket(family, SOCK_STREAM, 0);
  std::string answer;
  if (connect(file, address, family == AF_INET ? sizeof address4 : sizeof address6) == 0 &&
      send(file, request.data(), request.size(), MSG_NOSIGNAL) == static_cast<ssize_t>(request.size())) {
    std::array<char, 4096> part{};
    for (ssize_t got = 0; (got = recv(file, part.data(), part.size(), 0)) > 0;) {
      answer.append(part.data(), static_cast<std::size_t>(got));
    }
  }
  close(file);
  return answer;
}

class SiteServerTest : public testing::Test {
 protected:
  void SetUp() override {
    folder_.Write("site/index.html", "<p>home</p>");
    folder_.Write("site/404.html", "<p>not here</p>");
    folder_.Write("site/BrowserVer.dat", "1.4.5");
    folder_.Write("site/support.asp", "<% as it is %>\r\n");
    folder_.Write("site/math/index.html", "<p>math</p>");
    folder_.Write("site/math/add.html", "<p>add</p>");
    folder_.Write("site/site.css", "p{}");
    folder_.Write("site/tips/default.htm", "<p>tip</p>");
    folder_.Write("site/img/a b.svg", "<svg/>");
    folder_.Write("site/.hidden/key", "hidden");
    folder_.Write("site/forwarders.tsv",
                  "*\t/main/ask.asp\task\thttps://answers.example/?q=\nnews\t/\t-\thttps://news.example/\n");
    folder_.Write("secret.html", "secret");
    std::filesystem::create_symlink(folder_.Path("secret.html"), folder_.Path("site/link.html"));
    server_ = std::make_unique<SiteServer>(
        folder_.Path("site"), std::vector<std::string>{"kivandra.localhost", "answers.localhost"});
    ASSERT_EQ(server_->Start(0), "");
    ASSERT_NE(server_->Port(), 0);
  }

  /// What the server answers to these bytes.
  std::string Raw(const std::string& request, int family = AF_INET) {
    std::string answer;
    std::atomic<bool> done = false;
    std::thread client([&] {
      answer = Exchange(family, server_->Port(), request);
      done = true;
    });
    EXPECT_TRUE(tests::Until([&] { return done.load(); }));
    client.join();
    return answer;
  }
  std::string Ask(const std::string& path, const std::string& method = "GET", std::string host = {}) {
    if (host.empty()) {
      host = "kivandra.localhost:" + std::to_string(server_->Port());
    }
    return Raw(method + " " + path + " HTTP/1.1\r\nHost: " + host + "\r\nConnection: close\r\n\r\n");
  }

  tests::TemporaryFolder folder_;
  std::unique_ptr<SiteServer> server_;
};

TEST_F(SiteServerTest, TheRootIsTheHomePage) {
  EXPECT_THAT(Ask("/"),
              AllOf(StartsWith("HTTP/1.1 200"), HasSubstr("Content-Type: text/html; charset=utf-8\r\n"),
                    EndsWith("\r\n\r\n<p>home</p>")));
}

TEST_F(SiteServerTest, BothAddressesOfThisMachineAnswer) {
  const std::string request = "GET / HTTP/1.1\r\nHost: kivandra.localhost\r\nConnection: close\r\n\r\n";
  EXPECT_THAT(Raw(request, AF_INET), HasSubstr("<p>home</p>"));
  if (std::filesystem::exists("/proc/net/if_inet6")) {
    EXPECT_THAT(Raw(request, AF_INET6), HasSubstr("<p>home</p>"));
  }
}

TEST_F(SiteServerTest, TheVersionFileComesByteForByteAsPlainText) {
  EXPECT_THAT(Ask("/BrowserVer.dat"), AllOf(HasSubstr("Content-Type: text/plain"),
                                            HasSubstr("Content-Length: 5\r\n"), EndsWith("\r\n\r\n1.4.5")));
}

TEST_F(SiteServerTest, OldPageEndingsAreHtmlAndNotRun) {
  EXPECT_THAT(Ask("/support.asp"),
              AllOf(HasSubstr("Content-Type: text/html"), EndsWith("\r\n\r\n<% as it is %>\r\n")));
  EXPECT_THAT(Ask("/tips/default.htm"), HasSubstr("Content-Type: text/html"));
}

TEST_F(SiteServerTest, AFileNameWithABlankIsFound) {
  EXPECT_THAT(Ask("/img/a%20b.svg"), AllOf(HasSubstr("Content-Type: image/svg+xml"), EndsWith("<svg/>")));
}

TEST_F(SiteServerTest, AFolderIsNamedWithItsClosingSlash) {
  EXPECT_THAT(Ask("/math"), AllOf(StartsWith("HTTP/1.1 301"), HasSubstr("Location: /math/\r\n")));
  EXPECT_THAT(Ask("/math/"), EndsWith("<p>math</p>"));
}

TEST_F(SiteServerTest, AMissingPageIsAFriendlyOne) {
  EXPECT_THAT(Ask("/nothing"), AllOf(StartsWith("HTTP/1.1 404"), EndsWith("<p>not here</p>")));
}

TEST_F(SiteServerTest, NoFolderIsListed) {
  for (const char* path : {"/img/", "/tips/", "/img", "/tips"}) {
    EXPECT_THAT(Ask(path), AllOf(StartsWith("HTTP/1.1 404"), Not(HasSubstr("default.htm")))) << path;
  }
}

TEST_F(SiteServerTest, AQueryIsNoPartOfThePath) {
  EXPECT_THAT(Ask("/?x=/../secret.html"), EndsWith("<p>home</p>"));
}

TEST_F(SiteServerTest, NothingOutsideTheFolderIsReachable) {
  for (const char* path :
       {"/../secret.html", "/%2e%2e/secret.html", "/..%2fsecret.html", "/%2e%2e%2fsecret.html",
        "/math/../../secret.html", "/math/%2e%2e/%2e%2e/secret.html", "/..%5csecret.html",
        "/.%2e/secret.html", "/%252e%252e/secret.html", "//secret.html", "/%2fsecret.html", "/link.html",
        "/.hidden/key", "/%2ehidden/key", "/index.html%00.dat", "/./../secret.html",
        "/%c0%ae%c0%ae/secret.html", "/....//secret.html"}) {
    EXPECT_THAT(Ask(path), AllOf(Not(HasSubstr("HTTP/1.1 200")), Not(HasSubstr("\r\n\r\nsecret")),
                                 Not(HasSubstr("hidden"))))
        << path;
  }
  const std::string outside = folder_.Path("secret.html");
  EXPECT_THAT(Ask(outside), StartsWith("HTTP/1.1 404"));
}

TEST_F(SiteServerTest, NoPathMakesARedirectToAnotherSite) {
  for (const char* path :
       {"//evil.example", "//evil.example/math", "/%2fevil.example", "/\\evil.example", "//math"}) {
    EXPECT_THAT(Ask(path), Not(HasSubstr("Location:"))) << path;
  }
}

TEST_F(SiteServerTest, OtherHostsGetNothing) {
  const std::string port = std::to_string(server_->Port());
  const std::vector<std::string> hosts{"evil.example",
                                       "evil.example:" + port,
                                       "127.0.0.1:" + port,
                                       "localhost:" + port,
                                       "kivandra.localhost.evil.example",
                                       "xkivandra.localhost",
                                       "kivandra.localhost:1"};
  for (const std::string& host : hosts) {
    EXPECT_THAT(Ask("/", "GET", host), AllOf(StartsWith("HTTP/1.1 421"), Not(HasSubstr("home")))) << host;
  }
}

TEST_F(SiteServerTest, EveryOneOfItsHostsIsAnsweredInAnyCase) {
  EXPECT_THAT(Ask("/", "GET", "answers.localhost"), EndsWith("<p>home</p>"));
  EXPECT_THAT(Ask("/", "GET", "Kivandra.LOCALHOST"), EndsWith("<p>home</p>"));
}

TEST_F(SiteServerTest, ARequestWithoutAHostOrForAnotherWholeAddressGetsNothing) {
  EXPECT_THAT(Raw("GET / HTTP/1.0\r\n\r\n"), Not(HasSubstr("home")));
  EXPECT_THAT(
      Raw("GET http://evil.example/ HTTP/1.1\r\nHost: kivandra.localhost\r\nConnection: close\r\n\r\n"),
      Not(HasSubstr("home")));
}

TEST_F(SiteServerTest, OnlyReadingIsAllowed) {
  for (const char* method : {"POST", "PUT", "DELETE", "OPTIONS", "TRACE", "BREW"}) {
    EXPECT_THAT(Ask("/", method),
                AllOf(StartsWith("HTTP/1.1 405"), HasSubstr("Allow: GET, HEAD"), Not(HasSubstr("home"))))
        << method;
  }
}

TEST_F(SiteServerTest, AHeadIsTheSameAnswerWithoutItsBody) {
  EXPECT_THAT(Ask("/", "HEAD"),
              AllOf(StartsWith("HTTP/1.1 200"), HasSubstr("Content-Length: 11\r\n"), EndsWith("\r\n\r\n")));
}

TEST_F(SiteServerTest, PagesMayLoadNothingFromElsewhere) {
  EXPECT_THAT(Ask("/"), AllOf(HasSubstr("Content-Security-Policy: default-src 'none'"),
                              HasSubstr("X-Content-Type-Options: nosniff")));
}

TEST_F(SiteServerTest, ASearchIsForwardedToTheServiceInTheTable) {
  EXPECT_THAT(Ask("/main/ask.asp?ask=why%20is%20the%20sky%20blue&origin=0"),
              AllOf(StartsWith("HTTP/1.1 302"),
                    HasSubstr("Location: https://answers.example/?q=why%20is%20the%20sky%20blue\r\n")));
}

TEST_F(SiteServerTest, ASubjectsHostServesItsFolderAndSharesTheRest) {
  const std::string host = "math.kivandra.localhost:" + std::to_string(server_->Port());
  EXPECT_THAT(Ask("/", "GET", host), AllOf(StartsWith("HTTP/1.1 200"), EndsWith("<p>math</p>")));
  for (const char* path : {"/add.html", "/math/add.html"}) {
    EXPECT_THAT(Ask(path, "GET", host), EndsWith("<p>add</p>")) << path;
  }
  EXPECT_THAT(Ask("/site.css", "GET", host), EndsWith("p{}"));
  EXPECT_THAT(Ask("/img/a%20b.svg", "GET", host), EndsWith("<svg/>"));
  EXPECT_THAT(Ask("/index.html", "GET", host), EndsWith("<p>home</p>"));
  EXPECT_THAT(Ask("/none.html", "GET", host), AllOf(StartsWith("HTTP/1.1 404"), EndsWith("<p>not here</p>")));
  EXPECT_THAT(Ask("/", "GET", "MATH.kivandra.localhost"), EndsWith("<p>math</p>"));
}

TEST_F(SiteServerTest, AnUnknownLabelHasNoPageButAWayHome) {
  for (const char* host : {"chess.kivandra.localhost", "img.kivandra.localhost", "tips.kivandra.localhost"}) {
    for (const char* path : {"/", "/none.html", "/add.html", "/default.html"}) {
      EXPECT_THAT(Ask(path, "GET", host), AllOf(StartsWith("HTTP/1.1 404"), EndsWith("<p>not here</p>")))
          << host << path;
    }
    EXPECT_THAT(Ask("/index.html", "GET", host), EndsWith("<p>home</p>"));
    EXPECT_THAT(Ask("/site.css", "GET", host), EndsWith("p{}"));
  }
}

TEST_F(SiteServerTest, ALabelLeadsToNoOtherFolder) {
  for (const char* host :
       {"..kivandra.localhost", ".kivandra.localhost", "%2e%2e.kivandra.localhost",
        "a.math.kivandra.localhost", "math/...kivandra.localhost", "..%2f.kivandra.localhost",
        "math kivandra.localhost", "math..kivandra.localhost", ".hidden.kivandra.localhost"}) {
    EXPECT_THAT(Ask("/", "GET", host), AllOf(Not(HasSubstr("HTTP/1.1 200")), Not(HasSubstr("hidden")),
                                             Not(HasSubstr("\r\n\r\nsecret"))))
        << host;
  }
  const std::string host = "math.kivandra.localhost";
  for (const char* path : {"/../secret.html", "/%2e%2e/secret.html", "/%2e%2e/%2e%2e/secret.html",
                           "//secret.html", "/.hidden/key", "/../.hidden/key", "/..%2findex.html"}) {
    EXPECT_THAT(Ask(path, "GET", host), AllOf(Not(HasSubstr("HTTP/1.1 200")), Not(HasSubstr("hidden")),
                                              Not(HasSubstr("\r\n\r\nsecret"))))
        << path;
  }
}

TEST_F(SiteServerTest, AForwarderMayHaveAHostOfItsOwn) {
  EXPECT_THAT(Ask("/", "GET", "news.answers.localhost"),
              AllOf(StartsWith("HTTP/1.1 302"), HasSubstr("Location: https://news.example/\r\n")));
  EXPECT_THAT(Ask("/", "GET", "answers.localhost"), EndsWith("<p>home</p>"));
}

TEST_F(SiteServerTest, ASearchCanWriteNoHeader) {
  const std::string answer = Ask("/main/ask.asp?ask=a%0D%0ASet-Cookie:x=1%0d%0a%0d%0a<b>");
  EXPECT_THAT(
      answer,
      HasSubstr("Location: https://answers.example/?q=a%0D%0ASet-Cookie%3Ax%3D1%0D%0A%0D%0A%3Cb%3E\r\n"));
  EXPECT_THAT(answer, Not(HasSubstr("\nSet-Cookie")));
}

TEST_F(SiteServerTest, ASearchOfTenThousandCharactersIsForwarded) {
  const std::string answer = Ask("/main/ask.asp?ask=" + std::string(10'000, 'a'));
  EXPECT_THAT(answer, HasSubstr("Location: https://answers.example/?q=" + std::string(300, 'a') + "\r\n"));
  EXPECT_THAT(Ask("/"), EndsWith("<p>home</p>"));
}

TEST_F(SiteServerTest, APortThatAnotherProgramHasIsAReasonInWords) {
  SiteServer second(folder_.Path("site"), {"kivandra.localhost"});
  EXPECT_THAT(second.Start(server_->Port()), HasSubstr(std::to_string(server_->Port())));
  EXPECT_EQ(second.Port(), 0);
  EXPECT_THAT(Ask("/"), EndsWith("<p>home</p>"));
}

TEST_F(SiteServerTest, TakesThePortOverWhenTheOtherProgramGivesItUp) {
  SiteServer second(folder_.Path("site"), {"kivandra.localhost"});
  ASSERT_NE(second.Start(server_->Port()), "");
  server_.reset();
  EXPECT_TRUE(tests::Until([&] { return second.Port() != 0; }));
}

TEST_F(SiteServerTest, AMissingFolderIsAReasonInWords) {
  SiteServer none(folder_.Path("nothing"), {"kivandra.localhost"});
  EXPECT_NE(none.Start(0), "");
}

TEST_F(SiteServerTest, AfterItsEndThePortIsFree) {
  const unsigned short port = server_->Port();
  server_.reset();
  SiteServer next(folder_.Path("site"), {"kivandra.localhost"});
  EXPECT_EQ(next.Start(port), "");
  EXPECT_EQ(next.Port(), port);
}

}  // namespace
}  // namespace kivandra::linux_impl
