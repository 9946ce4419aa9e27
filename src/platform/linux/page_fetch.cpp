// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/page_fetch.h"

#include <libsoup/soup.h>

#include <utility>

#include "platform/linux/http_headers.h"
#include "platform/linux/page_decoder.h"

namespace kivandra::linux_impl {
namespace {

/// How much is read before the event loop has its turn.
constexpr gsize kPieceBytes = 64 * 1024;

template <typename T>
struct Unref {
  void operator()(T* object) const { g_object_unref(object); }
};
template <typename T>
using Object = std::unique_ptr<T, Unref<T>>;

}  // namespace

/// The connections, shared by all fetches; the last of them keeps it.
class SoupPageFetch::Connections {
 public:
  Connections()
      : session_(SOUP_SESSION(
            g_object_new(SOUP_TYPE_SESSION, "max-conns", 128, "max-conns-per-host", 64, nullptr))) {}
  [[nodiscard]] SoupSession* Get() const { return session_.get(); }

 private:
  // Neither cookie jar nor content sniffer: a session has none unless they are added.
  Object<SoupSession> session_;
};

/// One fetch. Every call on its way to GLib holds it; it lives until the last of them has come back.
class SoupPageFetch::Fetch : public std::enable_shared_from_this<Fetch> {
 public:
  Fetch(EngineIdentity& identity, const FetchLimits& limits, std::shared_ptr<Connections> connections,
        std::string url, Done done)
      : identity_(identity),
        limits_(limits),
        connections_(std::move(connections)),
        cancel_(g_cancellable_new()),
        url_(std::move(url)),
        referrer_(identity.Referrer(url_)),
        done_(std::move(done)) {}

  void Start() {
    alarm_ = g_timeout_add_full(
        G_PRIORITY_DEFAULT, static_cast<guint>(limits_.time.count()),
        [](gpointer data) -> gboolean {
          const auto self = *static_cast<std::shared_ptr<Fetch>*>(data);
          self->alarm_ = 0;
          self->Finish({});
          return G_SOURCE_REMOVE;
        },
        Hold(), &Fetch::LetGo);
    Soon([](Fetch& self) { self.AskCookies(); });
  }

  /// Ends the fetch without an answer.
  void Drop() {
    done_ = nullptr;
    End();
  }

 private:
  using Step = void (*)(Fetch&);

  gpointer Hold() { return new std::shared_ptr<Fetch>(shared_from_this()); }
  static void LetGo(gpointer held) { delete static_cast<std::shared_ptr<Fetch>*>(held); }
  static std::shared_ptr<Fetch> Take(gpointer held) {
    const std::unique_ptr<std::shared_ptr<Fetch>> taken(static_cast<std::shared_ptr<Fetch>*>(held));
    return *taken;
  }

  /// Runs a step from the event loop, unless the fetch has ended by then.
  void Soon(Step step) {
    struct Turn {
      std::shared_ptr<Fetch> fetch;
      Step step;
    };
    g_idle_add_full(
        G_PRIORITY_DEFAULT_IDLE,
        [](gpointer data) -> gboolean {
          const Turn turn = *static_cast<Turn*>(data);
          if (!turn.fetch->ended_) turn.step(*turn.fetch);
          return G_SOURCE_REMOVE;
        },
        new Turn{shared_from_this(), step}, [](gpointer data) { delete static_cast<Turn*>(data); });
  }

  void AskCookies() {
    uri_.reset(FetchableUri(url_));
    if (!uri_) return Finish({});
    identity_.CookieHeader(url_, [self = shared_from_this()](const std::string& cookies) {
      if (!self->ended_) self->Send(cookies);
    });
  }

  void Send(const std::string& cookies) {
    message_.reset(soup_message_new_from_uri(SOUP_METHOD_GET, uri_.get()));
    soup_message_add_flags(message_.get(), SOUP_MESSAGE_NO_REDIRECT);
    SendAsEngine(message_.get(), identity_, cookies, referrer_);
    soup_session_send_async(
        connections_->Get(), message_.get(), G_PRIORITY_DEFAULT, cancel_.get(),
        [](GObject* source, GAsyncResult* result, gpointer data) {
          const auto self = Take(data);
          self->stream_.reset(soup_session_send_finish(SOUP_SESSION(source), result, nullptr));
          if (!self->ended_) self->Answered();
        },
        Hold());
  }

  void Answered() {
    if (!stream_) return Finish({});
    const std::string target = RedirectTarget(message_.get());
    if (target.empty()) return Read();
    if (++redirects_ > limits_.redirects) return Finish({});
    stream_.reset();
    url_ = target;
    AskCookies();
  }

  void Read() {
    g_input_stream_read_bytes_async(
        stream_.get(), kPieceBytes, G_PRIORITY_DEFAULT, cancel_.get(),
        [](GObject* source, GAsyncResult* result, gpointer data) {
          const auto self = Take(data);
          GBytes* piece = g_input_stream_read_bytes_finish(G_INPUT_STREAM(source), result, nullptr);
          if (!self->ended_) self->Received(piece);
          if (piece != nullptr) g_bytes_unref(piece);
        },
        Hold());
  }

  void Received(GBytes* piece) {
    if (piece == nullptr) return Finish({});  // broken off: half a page can't be judged
    gsize size = 0;
    const auto* data = static_cast<const char*>(g_bytes_get_data(piece, &size));
    if (size > limits_.bytes - bytes_.size()) return Finish({});
    if (size == 0) return Decode();
    bytes_.append(data, size);
    Read();
  }

  void Decode() {
    stream_.reset();
    const char* type =
        soup_message_headers_get_one(soup_message_get_response_headers(message_.get()), "Content-Type");
    decoder_ = std::make_unique<PageDecoder>(std::move(bytes_), type != nullptr ? type : "");
    DecodeStep();
  }

  void DecodeStep() {
    if (decoder_->Step()) {
      Soon([](Fetch& self) { self.DecodeStep(); });
    } else {
      Finish(decoder_->TakeText());
    }
  }

  void Finish(std::string source) {
    if (ended_) return;
    const Done done = std::exchange(done_, nullptr);
    End();
    if (done) done(std::move(source));
  }

  void End() {
    if (std::exchange(ended_, true)) return;
    if (const guint alarm = std::exchange(alarm_, 0U); alarm != 0) g_source_remove(alarm);
    g_cancellable_cancel(cancel_.get());
    decoder_.reset();
  }

  struct UnrefUri {
    void operator()(GUri* uri) const { g_uri_unref(uri); }
  };

  EngineIdentity& identity_;
  const FetchLimits limits_;
  std::shared_ptr<Connections> connections_;
  Object<GCancellable> cancel_;
  std::string url_;  // of the step that is on its way
  std::string referrer_;
  Done done_;
  std::unique_ptr<GUri, UnrefUri> uri_;
  Object<SoupMessage> message_;
  Object<GInputStream> stream_;
  std::string bytes_;
  std::unique_ptr<PageDecoder> decoder_;
  int redirects_ = 0;
  guint alarm_ = 0;
  bool ended_ = false;
};

class SoupPageFetch::Ticket final : public FetchTicket {
 public:
  explicit Ticket(std::shared_ptr<Fetch> fetch) : fetch_(std::move(fetch)) {}
  ~Ticket() override { fetch_->Drop(); }
  Ticket(const Ticket&) = delete;
  Ticket& operator=(const Ticket&) = delete;

 private:
  std::shared_ptr<Fetch> fetch_;
};

SoupPageFetch::SoupPageFetch(EngineIdentity& identity, FetchLimits limits)
    : identity_(identity), limits_(limits), connections_(std::make_shared<Connections>()) {}

SoupPageFetch::~SoupPageFetch() = default;

std::unique_ptr<FetchTicket> SoupPageFetch::FetchPage(const std::string& url, Done done) {
  auto fetch = std::make_shared<Fetch>(identity_, limits_, connections_, url, std::move(done));
  fetch->Start();
  return std::make_unique<Ticket>(std::move(fetch));
}

}  // namespace kivandra::linux_impl
