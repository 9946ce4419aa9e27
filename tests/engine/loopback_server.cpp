// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/loopback_server.h"

#include <algorithm>
#include <cctype>
#include <stdexcept>

namespace kivandra::testing {
namespace {

void NoteHeader(const char* name, const char* value, gpointer headers) {
  std::string lower = name;
  std::transform(lower.begin(), lower.end(), lower.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  (*static_cast<std::map<std::string, std::string>*>(headers))[lower] = value;
}

}  // namespace

LoopbackServer::LoopbackServer(const std::string& certificate)
    : server_(soup_server_new(nullptr, nullptr)), scheme_(certificate.empty() ? "http" : "https") {
  soup_server_add_handler(server_, nullptr, OnRequest, this, nullptr);
  int options = SOUP_SERVER_LISTEN_IPV4_ONLY;
  if (!certificate.empty()) {
    GTlsCertificate* own = g_tls_certificate_new_from_file(certificate.c_str(), nullptr);
    if (own == nullptr) throw std::runtime_error("no certificate in " + certificate);
    soup_server_set_tls_certificate(server_, own);
    g_object_unref(own);
    options |= SOUP_SERVER_LISTEN_HTTPS;
  }
  if (!soup_server_listen_local(server_, 0, static_cast<SoupServerListenOptions>(options), nullptr)) {
    throw std::runtime_error("no loopback port");
  }
  GSList* uris = soup_server_get_uris(server_);
  port_ = static_cast<guint>(g_uri_get_port(static_cast<GUri*>(uris->data)));
  g_slist_free_full(uris, reinterpret_cast<GDestroyNotify>(g_uri_unref));
}

LoopbackServer::~LoopbackServer() {
  soup_server_disconnect(server_);
  g_object_unref(server_);
}

std::string LoopbackServer::Url(const std::string& path, const std::string& host) const {
  return scheme_ + ("://" + host) + ":" + std::to_string(port_) + path;
}

int LoopbackServer::Count(const std::string& path) const {
  return static_cast<int>(std::count_if(requests_.begin(), requests_.end(),
                                        [&](const Request& request) { return request.path == path; }));
}

Request LoopbackServer::Last(const std::string& path) const {
  const auto found = std::find_if(requests_.rbegin(), requests_.rend(),
                                  [&](const Request& request) { return request.path == path; });
  return found != requests_.rend() ? *found : Request{};
}

void LoopbackServer::OnRequest(SoupServer* /*server*/, SoupServerMessage* message, const char* path,
                               GHashTable* /*query*/, gpointer data) {
  auto* self = static_cast<LoopbackServer*>(data);
  Request request;
  request.method = soup_server_message_get_method(message);
  request.path = path;
  GUri* uri = soup_server_message_get_uri(message);
  request.host = g_uri_get_host(uri) != nullptr ? g_uri_get_host(uri) : "";
  soup_message_headers_foreach(soup_server_message_get_request_headers(message), NoteHeader,
                               &request.headers);
  self->requests_.push_back(request);

  if (self->hanging_.count(path) != 0) {
    soup_server_message_pause(message);
    return;
  }
  const auto handler = self->handlers_.find(path);
  const Reply reply =
      handler != self->handlers_.end() ? handler->second(request) : Reply{"not here", "text/plain", 404};
  soup_server_message_set_status(message, reply.status, nullptr);
  SoupMessageHeaders* headers = soup_server_message_get_response_headers(message);
  for (const auto& [name, value] : reply.headers)
    soup_message_headers_append(headers, name.c_str(), value.c_str());
  soup_server_message_set_response(message, reply.type.c_str(), SOUP_MEMORY_COPY, reply.body.data(),
                                   reply.body.size());
}

}  // namespace kivandra::testing
