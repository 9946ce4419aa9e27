// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace kivandra::linux_impl {

/// What a site answers to a path.
struct SiteAnswer {
  unsigned status = 404;
  std::string location;     ///< where to go instead, for status 301
  std::string contentType;  ///< of the body
  std::string body;
};

/// A folder of static pages. Its files are listed once, and only what stands in that list is ever read: a
/// path that leads out of the folder is simply no entry of the list. Hidden files and links are not listed.
class SiteFolder {
 public:
  /// A folder that is not there or can't be read is a site without pages.
  explicit SiteFolder(const std::string& folder);

  /// The answer to the path of a request, as it came (percent-encoded, with the leading slash): a file byte
  /// for byte, `index.html` for a folder, a redirect for a folder without its closing slash, and for all else
  /// 404 with the site's page `404.html`.
  [[nodiscard]] SiteAnswer Answer(std::string_view path) const { return Answer({}, path); }
  /// The answer of the part of the site that has a host of its own: `label` is the first label of that host
  /// and the name of a folder. Its root is that folder's page, missing if there is no such folder. What the
  /// whole site has comes next (so that links, the way home, style and pictures are the same everywhere),
  /// then what the folder has.
  [[nodiscard]] SiteAnswer Answer(std::string_view label, std::string_view path) const;
  [[nodiscard]] bool Empty() const { return files_.empty(); }

 private:
  [[nodiscard]] std::optional<SiteAnswer> Read(const std::string& path) const;
  [[nodiscard]] SiteAnswer Missing() const;

  std::map<std::string, std::string, std::less<>> files_;  ///< path in the site to path on the disk
};

/// The type of a page by the ending of its name; the old endings of served pages are HTML, version files
/// plain text.
[[nodiscard]] std::string_view ContentTypeOf(std::string_view path);

}  // namespace kivandra::linux_impl
