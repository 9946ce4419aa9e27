// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kivandra::linux_impl {

/// The table that leads requests at paths of services that do not answer there to services that do. A line of
/// its file holds four fields parted by tabs: the service (the label in front of the forwarders' domain, or
/// "*" for any label and none), the path, the key of the query whose text is searched for, and the address to
/// which that text is joined. With "-" for the key the address is taken as it stands. Lines that begin with
/// "#" are remarks.
class SearchForwarders {
 public:
  /// A file that is not there is a table without rows; a line that is not of this form is left out.
  explicit SearchForwarders(const std::string& file);

  /// No service takes more; what is longer is cut behind a whole character. It is the limit of the
  /// encyclopedias' search, in bytes of UTF-8.
  static constexpr std::size_t kLongestText = 300;

  /// Where a request for `path` of `service` goes, or nothing if no row is for it. `query` is the part behind
  /// the "?" as it came. The text found there is percent-encoded anew, so it can't change the address that it
  /// is joined to.
  [[nodiscard]] std::optional<std::string> Forward(std::string_view service, std::string_view path,
                                                   std::string_view query) const;

 private:
  struct Row {
    std::string service;
    std::string path;
    std::string key;
    std::string address;
  };
  std::vector<Row> rows_;
};

}  // namespace kivandra::linux_impl
