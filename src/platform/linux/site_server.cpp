// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/site_server.h"

#include <libsoup/soup.h>

#include <optional>
#include <string_view>
#include <utility>

#include "platform/linux/search_forwarders.h"
#include "platform/linux/site_folder.h"

namespace kivandra::linux_impl {
namespace {

/// Neither the pages nor anything that they name may come from elsewhere.
constexpr const char* kOwnContentOnly =
    "default-src 'none'; img-src 'self'; style-src 'self' 'unsafe-inline'; script-src 'self'; base-uri "
    "'none'; "
    "form-action 'self'";

bool SameHost(std::string_view left, std::string_view right) {
  return left.size() == right.size() && g_ascii_strncasecmp(left.data(), right.data(), left.size()) == 0;
}

/// The one label before `domain` in `host`, in lower case; empty if the two are the same, and nothing if
/// `host` is no such name.
std::optional<std::string> LabelBefore(std::string_view host, std::string_view domain) {
  if (SameHost(host, domain)) {
    return std::string{};
  }
  if (host.size() < domain.size() + 2 || !SameHost(host.substr(host.size() - domain.size()), domain) ||
      host[host.size() - domain.size() - 1] != '.') {
    return std::nullopt;
  }
  std::string label(host.substr(0, host.size() - domain.size() - 1));
  for (char& c : label) {
    c = g_ascii_tolower(c);
    if (g_ascii_isalnum(c) == FALSE && c != '-') {
      return std::nullopt;
    }
  }
  return label;
}

}  // namespace

class SiteServer::Listener {
 public:
  Listener(const std::string& folder, std::vector<std::string> hosts)
      : site_(folder),
        forwarders_(folder + "/forwarders.tsv"),
        hosts_(std::move(hosts)),
        server_(soup_server_new("raw-paths", TRUE, nullptr)) {
    soup_server_add_early_handler(server_, nullptr, &Listener::Begin, nullptr, nullptr);
    soup_server_add_handler(server_, nullptr, &Listener::Handle, this, nullptr);
  }
  ~Listener() {
    StopTrying();
    soup_server_disconnect(server_);
    g_object_unref(server_);
  }
  Listener(const Listener&) = delete;
  Listener& operator=(const Listener&) = delete;

  std::string Start(unsigned short port) {
    StopTrying();
    if (site_.Empty()) {
      return "The folder of the shipped pages is missing or empty.";
    }
    std::string reason = Listen(port);
    if (!reason.empty()) {
      wanted_ = port;
      retry_ = g_timeout_add_seconds(kRetrySeconds, &Listener::TryAgain, this);
    }
    return reason;
  }

  [[nodiscard]] unsigned short Port() const { return port_; }

 private:
  static constexpr guint kRetrySeconds = 2;

  std::string Listen(unsigned short port) {
    GError* error = nullptr;
    // No option: both families, on the same port.
    if (soup_server_listen_local(server_, port, SoupServerListenOptions{}, &error) == FALSE) {
      std::string reason =
          "The shipped pages can't be served on port " + std::to_string(port) + ": " + error->message;
      g_error_free(error);
      return reason;
    }
    GSList* addresses = soup_server_get_uris(server_);
    port_ = static_cast<unsigned short>(g_uri_get_port(static_cast<GUri*>(addresses->data)));
    g_slist_free_full(addresses, [](gpointer uri) { g_uri_unref(static_cast<GUri*>(uri)); });
    return {};
  }

  static gboolean TryAgain(gpointer data) {
    auto* self = static_cast<Listener*>(data);
    if (!self->Listen(self->wanted_).empty()) {
      return G_SOURCE_CONTINUE;
    }
    self->retry_ = 0;
    return G_SOURCE_REMOVE;
  }

  void StopTrying() {
    if (retry_ != 0) {
      g_source_remove(std::exchange(retry_, 0));
    }
  }

  /// A request's body means nothing here and must not fill the memory.
  static void Begin(SoupServer* /*server*/, SoupServerMessage* message, const char* /*path*/,
                    GHashTable* /*query*/, gpointer /*data*/) {
    soup_message_body_set_accumulate(soup_server_message_get_request_body(message), FALSE);
  }

  static void Handle(SoupServer* /*server*/, SoupServerMessage* message, const char* path,
                     GHashTable* /*query*/, gpointer self) {
    static_cast<const Listener*>(self)->Answer(message, path);
  }

  /// The label before one of our hosts in a name that may end with our port, or nothing.
  [[nodiscard]] std::optional<std::string> LabelOf(std::string_view name) const {
    const std::string port = ":" + std::to_string(port_);
    if (name.ends_with(port)) {
      name.remove_suffix(port.size());
    }
    for (const std::string& host : hosts_) {
      if (const auto label = LabelBefore(name, host)) {
        return label;
      }
    }
    return std::nullopt;
  }

  /// The label that the request names in its Host header and, if it has a whole address, there too; nothing
  /// if it is not for one of our hosts.
  [[nodiscard]] std::optional<std::string> LabelOf(SoupServerMessage* message) const {
    const char* header =
        soup_message_headers_get_one(soup_server_message_get_request_headers(message), "Host");
    const char* address = g_uri_get_host(soup_server_message_get_uri(message));
    if (header == nullptr || address == nullptr) {
      return std::nullopt;
    }
    const auto label = LabelOf(std::string_view(header));
    return label == LabelOf(std::string_view(address)) ? label : std::nullopt;
  }

  void Answer(SoupServerMessage* message, const char* path) const {
    SoupMessageHeaders* headers = soup_server_message_get_response_headers(message);
    const auto label = LabelOf(message);
    if (!label) {
      Refuse(message, SOUP_STATUS_MISDIRECTED_REQUEST);
      return;
    }
    const std::string_view method = soup_server_message_get_method(message);
    if (method != "GET" && method != "HEAD") {
      soup_message_headers_replace(headers, "Allow", "GET, HEAD");
      Refuse(message, SOUP_STATUS_METHOD_NOT_ALLOWED);
      return;
    }
    const char* query = g_uri_get_query(soup_server_message_get_uri(message));
    if (const auto address = forwarders_.Forward(*label, path, query == nullptr ? "" : query)) {
      soup_message_headers_replace(headers, "Cache-Control", "no-store");
      soup_server_message_set_redirect(message, SOUP_STATUS_FOUND, address->c_str());
      return;
    }
    const SiteAnswer answer = site_.Answer(*label, path);
    soup_message_headers_replace(headers, "Cache-Control", "no-cache");
    soup_message_headers_replace(headers, "X-Content-Type-Options", "nosniff");
    soup_message_headers_replace(headers, "Content-Security-Policy", kOwnContentOnly);
    if (!answer.location.empty()) {
      soup_message_headers_replace(headers, "Location", answer.location.c_str());
    }
    soup_server_message_set_status(message, answer.status, nullptr);
    soup_server_message_set_response(message, answer.contentType.c_str(), SOUP_MEMORY_COPY,
                                     answer.body.data(), answer.body.size());
  }

  static void Refuse(SoupServerMessage* message, guint status) {
    soup_server_message_set_status(message, status, nullptr);
    soup_server_message_set_response(message, nullptr, SOUP_MEMORY_STATIC, nullptr, 0);
  }

  SiteFolder site_;
  SearchForwarders forwarders_;
  std::vector<std::string> hosts_;
  SoupServer* server_;
  unsigned short port_ = 0;
  unsigned short wanted_ = 0;
  guint retry_ = 0;  // 0: it listens, or has not been started
};

SiteServer::SiteServer(const std::string& folder, std::vector<std::string> hosts)
    : listener_(std::make_unique<Listener>(folder, std::move(hosts))) {}

SiteServer::~SiteServer() = default;

std::string SiteServer::Start(unsigned short port) { return listener_->Start(port); }

unsigned short SiteServer::Port() const { return listener_->Port(); }

}  // namespace kivandra::linux_impl
