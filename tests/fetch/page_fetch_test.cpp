// SPDX-License-Identifier: GPL-3.0-or-later
#include <sys/resource.h>

#include "fetch/fetch_test.h"

namespace kivandra::testing {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

using std::chrono::milliseconds;
using std::chrono::steady_clock;
using namespace std::string_literals;

std::string Gzip(const std::string& bytes) {
  GZlibCompressor* compressor = g_zlib_compressor_new(G_ZLIB_COMPRESSOR_FORMAT_GZIP, 9);
  GInputStream* memory =
      g_memory_input_stream_new_from_data(bytes.data(), static_cast<gssize>(bytes.size()), nullptr);
  GInputStream* packed = g_converter_input_stream_new(memory, G_CONVERTER(compressor));
  std::string result;
  char piece[4096];
  for (gssize count; (count = g_input_stream_read(packed, piece, sizeof piece, nullptr, nullptr)) > 0;) {
    result.append(piece, static_cast<std::size_t>(count));
  }
  g_object_unref(packed);
  g_object_unref(memory);
  g_object_unref(compressor);
  return result;
}

TEST_F(PageFetching, GivesTheSourceOfAPage) {
  RawServer server(Always(HttpAnswer("<p>héllo</p>")));
  EXPECT_EQ(Fetch(server.Url("/")), "<p>héllo</p>");
}

TEST_F(PageFetching, LooksLikeTheEngineToTheServer) {
  RawServer server(Always(HttpAnswer("x")));
  identity.cookies[server.Url("/")] = "a=b; c=d";
  ASSERT_EQ(Fetch(server.Url("/p?q=1")), "x");
  const std::string request = server.Requests().at(0);
  EXPECT_THAT(request, ::testing::StartsWith("GET /p?q=1 HTTP/1.1\r\n"));
  for (const char* header : {"\r\nUser-Agent: Engine/1\r\n", "\r\nAccept: text/html,*/*;q=0.8\r\n",
                             "\r\nAccept-Language: es-MX,es;q=0.90\r\n", "\r\nCookie: a=b; c=d\r\n",
                             "\r\nAccept-Encoding: gzip, deflate\r\n", "\r\nUpgrade-Insecure-Requests: 1\r\n",
                             "\r\nSec-Fetch-Dest: document\r\n", "\r\nSec-Fetch-Mode: navigate\r\n",
                             "\r\nSec-Fetch-Site: none\r\n"}) {
    EXPECT_THAT(request, HasSubstr(header));
  }
  EXPECT_THAT(request, Not(HasSubstr("Referer")));
}

TEST_F(PageFetching, SendsTheReferrerThatTheEngineWillSend) {
  RawServer server(Always(HttpAnswer("x")));
  identity.referrers[server.Url("/p")] = server.Url("/from");
  ASSERT_EQ(Fetch(server.Url("/p")), "x");
  EXPECT_THAT(server.Requests().at(0), HasSubstr("\r\nReferer: " + server.Url("/from") + "\r\n"));
  EXPECT_THAT(server.Requests().at(0), HasSubstr("\r\nSec-Fetch-Site: same-origin\r\n"));
}

TEST_F(PageFetching, FollowsEveryKindOfRedirect) {
  for (const char* status : {"301 Moved", "302 Found", "303 See", "307 Temporary", "308 Permanent"}) {
    SCOPED_TRACE(status);
    RawServer server([&](Connection& connection, const std::string& request) {
      connection.Send(request.starts_with("GET /end")
                          ? HttpAnswer("the end")
                          : HttpAnswer("moved", "text/html", status, "Location: /end\r\n"));
    });
    EXPECT_EQ(Fetch(server.Url("/start")), "the end");
  }
}

TEST_F(PageFetching, AsksForCookiesAtEveryStepAndSendsThemToNoOtherHost) {
  RawServer other(Always(HttpAnswer("other")));
  RawServer server([&](Connection& connection, const std::string&) {
    connection.Send(
        HttpAnswer("", "text/html", "302 Found",
                   "Set-Cookie: planted=1\r\nLocation: " + other.Url("/x", "localhost") + "\r\n"));
  });
  identity.cookies[server.Url("")] = "secret=1";
  EXPECT_EQ(Fetch(server.Url("/")), "other");
  EXPECT_THAT(server.Requests().at(0), HasSubstr("secret=1"));
  EXPECT_THAT(other.Requests().at(0), Not(HasSubstr("Cookie")));
  EXPECT_EQ(identity.asked, (std::vector<std::string>{server.Url("/"), other.Url("/x", "localhost")}));
}

TEST_F(PageFetching, DropsWhatAServerWantsToSet) {
  RawServer server([](Connection& connection, const std::string& request) {
    connection.Send(request.starts_with("GET /2") ? HttpAnswer("two")
                                                  : HttpAnswer("", "text/html", "302 Found",
                                                               "Set-Cookie: planted=1\r\nLocation: /2\r\n"));
  });
  EXPECT_EQ(Fetch(server.Url("/1")), "two");
  EXPECT_THAT(server.Requests().at(1), Not(HasSubstr("planted")));
}

struct Chain {
  const char* name;
  int steps;
  const char* source;
};

class RedirectChains : public PageFetching, public ::testing::WithParamInterface<Chain> {};

TEST_P(RedirectChains, EndAfterTwentySteps) {
  int left = GetParam().steps;
  RawServer server([&](Connection& connection, const std::string&) {
    connection.Send(left-- > 0 ? HttpAnswer("", "text/html", "302 Found", "Location: /again\r\n")
                               : HttpAnswer("end"));
  });
  EXPECT_EQ(Fetch(server.Url("/")), GetParam().source);
}

INSTANTIATE_TEST_SUITE_P(All, RedirectChains,
                         ::testing::Values(Chain{"Five", 5, "end"}, Chain{"Twenty", 20, "end"},
                                           Chain{"TwentyOne", 21, ""}, Chain{"Endless", 1000000, ""}),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(PageFetching, NeverLeavesTheWeb) {
  for (const char* target :
       {"file:///etc/hostname", "data:text/html,x", "ftp://127.0.0.1/", "javascript:1", "mailto:a@b"}) {
    SCOPED_TRACE(target);
    RawServer server(
        Always(HttpAnswer("moved", "text/html", "302 Found", std::string("Location: ") + target + "\r\n")));
    EXPECT_EQ(Fetch(server.Url("/")), "");
    EXPECT_EQ(Fetch(target), "");
  }
}

TEST_F(PageFetching, AnAddressThatIsNoneIsAnEmptyPage) {
  for (const std::string& url : {std::string(), std::string("   "), std::string("http:///"),
                                 std::string("http://"), std::string("about:blank"), std::string("\xff\x01"),
                                 std::string(1, '\0'), "x" + std::string(1 << 20, 'y')}) {
    EXPECT_EQ(Fetch(url), "");
  }
}

TEST_F(PageFetching, ReadsTheBodiesOfErrorPages) {
  for (const char* status : {"401 Unauthorized", "403 Forbidden", "404 Not Found", "500 Broken"}) {
    RawServer server(Always(HttpAnswer("words", "text/html", status)));
    EXPECT_EQ(Fetch(server.Url("/")), "words") << status;
  }
}

TEST_F(PageFetching, AnAnswerWithoutABodyIsAnEmptyPage) {
  for (const char* answer : {"HTTP/1.1 204 No Content\r\n\r\n", "HTTP/1.1 304 Not Modified\r\n\r\n",
                             "HTTP/1.1 200 OK\r\nContent-Length: 0\r\n\r\n"}) {
    RawServer server(Always(answer));
    EXPECT_EQ(Fetch(server.Url("/")), "") << answer;
  }
}

TEST_F(PageFetching, APageThatBreaksOffIsEmpty) {
  RawServer reset([](Connection& connection, const std::string&) {
    connection.Send("HTTP/1.1 200 OK\r\nContent-Type: text/html\r\nContent-Length: 1000\r\n\r\nhalf");
    connection.Reset();
  });
  EXPECT_EQ(Fetch(reset.Url("/")), "");
  RawServer cut(Always("HTTP/1.1 200 OK\r\nContent-Type: text/html\r\nContent-Length: 1000\r\n\r\nhalf"));
  EXPECT_EQ(Fetch(cut.Url("/")), "");
  RawServer chunks(Always("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n8\r\nhalf"));
  EXPECT_EQ(Fetch(chunks.Url("/")), "");
  RawServer nonsense(Always("nonsense\r\n\r\n"));
  EXPECT_EQ(Fetch(nonsense.Url("/")), "");
}

TEST_F(PageFetching, ANobodyAtTheAddressIsAnEmptyPage) {
  std::string url;
  {
    RawServer gone(Always(""));
    url = gone.Url("/");
  }
  EXPECT_EQ(Fetch(url), "");
  EXPECT_EQ(Fetch("http://no.such.host.invalid/"), "");
}

TEST_F(PageFetching, ReadsAPageThatEndsWithItsConnection) {
  RawServer server(Always("HTTP/1.0 200 OK\r\nContent-Type: text/html\r\n\r\nto the end"));
  EXPECT_EQ(Fetch(server.Url("/")), "to the end");
}

TEST_F(PageFetching, UnpacksWhatTheServerPacked) {
  RawServer server(
      Always(HttpAnswer(Gzip("packed words"), "text/html", "200 OK", "Content-Encoding: gzip\r\n")));
  EXPECT_EQ(Fetch(server.Url("/")), "packed words");
  // The engine shows such a page as it came.
  RawServer plain(Always(HttpAnswer("no gzip at all", "text/html", "200 OK", "Content-Encoding: gzip\r\n")));
  EXPECT_EQ(Fetch(plain.Url("/")), "no gzip at all");
}

TEST_F(PageFetching, UnpacksBrotliToo) {
  const std::string packed =
      "\x1B\x27\x00\xF8\x05\x1C\x72\x40\xFC\xBD\x28\xA9\x66\x21\xA6\x1E\x48\x89\xE3\x9A\x7B\x48"s;
  RawServer server(Always(HttpAnswer(packed, "text/html", "200 OK", "Content-Encoding: br\r\n")));
  EXPECT_EQ(Fetch(server.Url("/")), "packed words, packed words, packed words");
  RawServer broken(
      Always(HttpAnswer(packed.substr(0, 12), "text/html", "200 OK", "Content-Encoding: br\r\n")));
  EXPECT_EQ(Fetch(broken.Url("/")), "");
}

TEST_F(PageFetching, APageOfTheLargestSizeIsRead) {
  linux_impl::FetchLimits limits;
  limits.bytes = 100000;
  RawServer fits(Always(HttpAnswer(std::string(100000, 'x'))));
  EXPECT_EQ(Fetch(fits.Url("/"), limits)->size(), 100000U);
  RawServer tooLarge(Always(HttpAnswer(std::string(100001, 'x'))));
  EXPECT_EQ(Fetch(tooLarge.Url("/"), limits), "");
}

TEST_F(PageFetching, ABombStopsAtTheLimitAndCostsLittleMemory) {
  // 300 MiB of zeros, packed twice over: a gzip stream may have several members.
  const std::string member = Gzip(std::string(std::size_t{10} * 1024 * 1024, 'x'));
  std::string bomb;
  for (int i = 0; i < 30; ++i) bomb += member;
  RawServer server(Always(HttpAnswer(bomb, "text/html", "200 OK", "Content-Encoding: gzip\r\n")));
  rusage before{};
  getrusage(RUSAGE_SELF, &before);
  const std::optional<std::string> source = Fetch(server.Url("/"));
  rusage after{};
  getrusage(RUSAGE_SELF, &after);
  // What is behind the first member is not read at all, by the engine neither.
  EXPECT_LE(source->size(), std::size_t{10} * 1024 * 1024);
  EXPECT_LT(after.ru_maxrss - before.ru_maxrss, 200 * 1024);

  RawServer large(Always(HttpAnswer(Gzip(std::string(std::size_t{200} * 1024 * 1024, 'x')), "text/html",
                                    "200 OK", "Content-Encoding: gzip\r\n")));
  EXPECT_EQ(Fetch(large.Url("/")), "");
}

TEST_F(PageFetching, APageThatNeverEndsIsEmptyAndTheLoopStaysFree) {
  linux_impl::FetchLimits limits;
  limits.time = milliseconds(300);
  RawServer drip([](Connection& connection, const std::string&) {
    connection.Send("HTTP/1.1 200 OK\r\nContent-Type: text/html\r\n\r\n");
    while (connection.Send("x")) std::this_thread::sleep_for(milliseconds(20));
  });
  RawServer silent([](Connection& connection, const std::string&) { connection.WaitForEnd(); });
  RawServer endless([](Connection& connection, const std::string&) {
    connection.Send("HTTP/1.1 200 OK\r\nContent-Type: text/html\r\n\r\n");
    while (connection.Send(std::string(65536, 'x'))) {
    }
  });
  for (const RawServer* server : {&drip, &silent, &endless}) {
    const auto begin = steady_clock::now();
    EXPECT_EQ(Fetch(server->Url("/"), limits), "");
    EXPECT_LT(steady_clock::now() - begin, milliseconds(5000));
  }
}

TEST_F(PageFetching, ADroppedFetchNeverAnswers) {
  std::atomic<bool> gone = false;
  RawServer server([&](Connection& connection, const std::string&) {
    connection.Send("HTTP/1.1 200 OK\r\nContent-Type: text/html\r\n\r\nbegin");
    connection.WaitForEnd();
    gone = true;
    g_main_context_wakeup(nullptr);
  });
  linux_impl::SoupPageFetch fetch(identity);
  bool answered = false;
  auto ticket = fetch.FetchPage(server.Url("/"), [&](const std::string&) { answered = true; });
  ASSERT_TRUE(RunUntil([&] { return server.Requests().size() == 1; }));
  ticket.reset();
  EXPECT_TRUE(RunUntil([&] { return gone.load(); })) << "the connection was kept";
  EXPECT_FALSE(answered);
  // One that is dropped before the loop ever ran.
  (void)fetch.FetchPage(server.Url("/"), [&](const std::string&) { answered = true; });
  while (g_main_context_iteration(nullptr, FALSE) != FALSE) {
  }
  EXPECT_FALSE(answered);
}

TEST_F(PageFetching, ATicketMayBeDroppedInsideItsOwnAnswer) {
  RawServer server(Always(HttpAnswer("x")));
  linux_impl::SoupPageFetch fetch(identity);
  std::unique_ptr<FetchTicket> ticket;
  bool answered = false;
  ticket = fetch.FetchPage(server.Url("/"), [&](const std::string&) {
    ticket.reset();
    answered = true;
  });
  EXPECT_TRUE(RunUntil([&] { return answered; }));
}

TEST_F(PageFetching, FortyPagesOfOneHostAreFetchedSideBySide) {
  std::atomic<int> waiting = 0;
  RawServer server([&](Connection& connection, const std::string&) {
    ++waiting;
    while (waiting < 40) std::this_thread::yield();
    connection.Send(HttpAnswer("x"));
  });
  linux_impl::SoupPageFetch fetch(identity);
  int done = 0;
  std::vector<std::unique_ptr<FetchTicket>> tickets;
  for (int i = 0; i < 40; ++i) {
    tickets.push_back(fetch.FetchPage(server.Url("/" + std::to_string(i)), [&](const std::string& source) {
      EXPECT_EQ(source, "x");
      ++done;
    }));
  }
  EXPECT_TRUE(RunUntil([&] { return done == 40; }));
  waiting = 40;
}

TEST_F(PageFetching, AHugePageIsTakenInSmallPiecesSoThatTheLoopStaysFree) {
  constexpr std::size_t kPage = std::size_t{30} * 1024 * 1024;
  constexpr std::size_t kPiece = std::size_t{64} * 1024;
  RawServer server(
      Always(HttpAnswer(Gzip(std::string(kPage, 'x')), "text/html", "200 OK", "Content-Encoding: gzip\r\n")));
  linux_impl::SoupPageFetch fetch(identity);
  bool done = false;
  const auto ticket = fetch.FetchPage(server.Url("/"), [&](const std::string& source) {
    EXPECT_EQ(source.size(), kPage);
    done = true;
  });
  std::size_t turns = 0;
  while (!done) {
    turns += g_main_context_iteration(nullptr, TRUE) != FALSE ? 1 : 0;
  }
  EXPECT_GE(turns, kPage / kPiece);
}

}  // namespace
}  // namespace kivandra::testing
