// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/inet.h"

#include <libsoup/soup.h>

#include <memory>
#include <utility>

#include "platform/linux/http_headers.h"
#include "platform/platform_error.h"

namespace kivandra::linux_impl {
namespace {

/// How much is read before the event loop has its turn.
constexpr gsize kPieceBytes = 64 * 1024;
constexpr const char* kNotWanted = "The file is not wanted any more.";

template <typename T>
struct Unref {
  void operator()(T* object) const { g_object_unref(object); }
};
template <typename T>
using Object = std::unique_ptr<T, Unref<T>>;

struct UnrefUri {
  void operator()(GUri* uri) const { g_uri_unref(uri); }
};

/// A session of its own for each fetch: no connection outlives it.
Object<SoupSession> NewSession() {
  Object<SoupSession> session(soup_session_new());
  // A body is wanted as the server stores it.
  soup_session_remove_feature_by_type(session.get(), SOUP_TYPE_CONTENT_DECODER);
  return session;
}

}  // namespace

/// One fetch. Every call on its way to GLib holds it; it lives until the last of them has come back, which
/// may be after OpenURL has returned.
class SoupInet::Fetch : public std::enable_shared_from_this<Fetch> {
 public:
  explicit Fetch(const InetLimits& limits) : limits_(limits) {}

  void Start(GUri* uri) {
    allAlarm_ = Alarm(limits_.time, [](gpointer data) -> gboolean {
      Fetch& self = **static_cast<std::shared_ptr<Fetch>*>(data);
      self.allAlarm_ = 0;
      self.End("The file takes too long.");
      return G_SOURCE_REMOVE;
    });
    AwaitByte();
    message_.reset(soup_message_new_from_uri(SOUP_METHOD_GET, uri));
    soup_session_send_async(
        session_.get(), message_.get(), G_PRIORITY_DEFAULT, cancel_.get(),
        [](GObject* source, GAsyncResult* result, gpointer data) {
          const auto self = Take(data);
          GError* error = nullptr;
          self->stream_.reset(soup_session_send_finish(SOUP_SESSION(source), result, &error));
          self->Answered(Words(error));
        },
        Hold());
  }
  /// Ends it, if it has not ended yet; without words it has all of its body.
  void End(const std::string& problem) {
    if (std::exchange(ended_, true)) return;
    problem_ = problem;
    Silence(silenceAlarm_);
    Silence(allAlarm_);
    g_cancellable_cancel(cancel_.get());
  }
  [[nodiscard]] bool Ended() const { return ended_; }
  /// Throws PlatformError if it has ended badly.
  [[nodiscard]] std::string TakeBody() {
    if (!problem_.empty()) throw PlatformError(kInvalidCall, problem_);
    return std::move(body_);
  }

 private:
  gpointer Hold() { return new std::shared_ptr<Fetch>(shared_from_this()); }
  static void LetGo(gpointer held) { delete static_cast<std::shared_ptr<Fetch>*>(held); }
  static std::shared_ptr<Fetch> Take(gpointer held) {
    const std::unique_ptr<std::shared_ptr<Fetch>> taken(static_cast<std::shared_ptr<Fetch>*>(held));
    return *taken;
  }
  /// The error in words, and frees it; empty if there is none.
  static std::string Words(GError* error) {
    if (error == nullptr) return {};
    const std::string words = error->message;
    g_error_free(error);
    return words;
  }

  guint Alarm(std::chrono::milliseconds delay, GSourceFunc ring) {
    return g_timeout_add_full(G_PRIORITY_DEFAULT, static_cast<guint>(delay.count()), ring, Hold(),
                              &Fetch::LetGo);
  }
  static void Silence(guint& alarm) {
    if (const guint set = std::exchange(alarm, 0U); set != 0) g_source_remove(set);
  }
  void AwaitByte() {
    Silence(silenceAlarm_);
    silenceAlarm_ = Alarm(limits_.silence, [](gpointer data) -> gboolean {
      Fetch& self = **static_cast<std::shared_ptr<Fetch>*>(data);
      self.silenceAlarm_ = 0;
      self.End("The server does not answer.");
      return G_SOURCE_REMOVE;
    });
  }

  void Answered(const std::string& problem) {
    if (ended_) return;
    if (!stream_) return End(problem);
    if (const guint status = soup_message_get_status(message_.get()); status != SOUP_STATUS_OK) {
      return End("The server answers " + std::to_string(status) + ".");
    }
    Read();
  }

  void Read() {
    AwaitByte();
    g_input_stream_read_bytes_async(
        stream_.get(), kPieceBytes, G_PRIORITY_DEFAULT, cancel_.get(),
        [](GObject* source, GAsyncResult* result, gpointer data) {
          const auto self = Take(data);
          GError* error = nullptr;
          GBytes* piece = g_input_stream_read_bytes_finish(G_INPUT_STREAM(source), result, &error);
          self->Received(piece, Words(error));
          if (piece != nullptr) g_bytes_unref(piece);
        },
        Hold());
  }

  void Received(GBytes* piece, const std::string& problem) {
    if (ended_) return;
    if (piece == nullptr) return End(problem);  // broken off
    gsize size = 0;
    const auto* data = static_cast<const char*>(g_bytes_get_data(piece, &size));
    if (size > limits_.bytes - body_.size()) return End("The file is too large.");
    if (size == 0) return End({});
    body_.append(data, size);
    Read();
  }

  const InetLimits limits_;
  Object<SoupSession> session_ = NewSession();
  Object<GCancellable> cancel_{g_cancellable_new()};
  Object<SoupMessage> message_;
  Object<GInputStream> stream_;
  std::string body_;
  std::string problem_;
  guint silenceAlarm_ = 0;
  guint allAlarm_ = 0;
  bool ended_ = false;
};

std::string SoupInet::OpenURL(const std::string& url, const InetLimits& limits,
                              const std::function<bool()>& wanted) {
  const std::unique_ptr<GUri, UnrefUri> uri(FetchableUri(url));
  if (!uri) throw PlatformError(kInvalidCall, "There is no such address: " + url);
  const auto fetch = std::make_shared<Fetch>(limits);
  fetch->Start(uri.get());
  while (!fetch->Ended()) {
    g_main_context_iteration(nullptr, TRUE);
    // Whatever the event was, it may have taken away what the file is for.
    if (wanted && !wanted()) {
      fetch->End(kNotWanted);
      throw PlatformError(kInvalidCall, kNotWanted);  // even if the last byte has just come
    }
  }
  return fetch->TakeBody();
}

}  // namespace kivandra::linux_impl
