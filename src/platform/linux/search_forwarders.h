// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kivandra::linux_impl {

/// The table that leads searches at paths of services that do not answer there to services that do. A line of
/// its file holds the path, the key of the query whose text is searched for, and the address to which that
/// text is joined, parted by tabs; lines that begin with "#" are remarks.
class SearchForwarders {
 public:
  /// A file that is not there is a table without rows; a line that is not of this form is left out.
  explicit SearchForwarders(const std::string& file);

  /// Where a request for `path` goes, or nothing if no row has this path. `query` is the part behind the "?"
  /// as it came. The text found there is percent-encoded anew, so it can't change the address that it is
  /// joined to.
  [[nodiscard]] std::optional<std::string> Forward(std::string_view path, std::string_view query) const;

 private:
  struct Row {
    std::string path;
    std::string key;
    std::string address;
  };
  std::vector<Row> rows_;
};

}  // namespace kivandra::linux_impl
