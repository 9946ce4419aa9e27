// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/site_folder.h"

#include <array>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <system_error>
#include <utility>

#include "platform/linux/percent_encoding.h"

namespace kivandra::linux_impl {
namespace {

constexpr std::string_view kHtml = "text/html; charset=utf-8";
constexpr std::string_view kFolderPage = "index.html";
constexpr std::string_view kMissingPage = "/404.html";

/// The folder of a label, nothing for the site itself.
std::string Below(std::string_view label) { return label.empty() ? "" : "/" + std::string(label); }

bool Hidden(const std::filesystem::path& path) { return path.filename().string().starts_with('.'); }

}  // namespace

std::string_view ContentTypeOf(std::string_view path) {
  static constexpr std::array<std::pair<std::string_view, std::string_view>, 14> kTypes{{
      {".html", kHtml},
      {".htm", kHtml},
      {".asp", kHtml},
      {".dat", "text/plain; charset=utf-8"},
      {".txt", "text/plain; charset=utf-8"},
      {".css", "text/css; charset=utf-8"},
      {".js", "text/javascript; charset=utf-8"},
      {".svg", "image/svg+xml"},
      {".png", "image/png"},
      {".gif", "image/gif"},
      {".jpg", "image/jpeg"},
      {".ico", "image/x-icon"},
      {".woff2", "font/woff2"},
      {".wav", "audio/x-wav"},
  }};
  for (const auto& [ending, type] : kTypes) {
    if (path.ends_with(ending)) {
      return type;
    }
  }
  return "application/octet-stream";
}

SiteFolder::SiteFolder(const std::string& folder) {
  std::error_code error;
  std::filesystem::recursive_directory_iterator entry(folder, error);
  for (const std::filesystem::recursive_directory_iterator end; !error && entry != end;
       entry.increment(error)) {
    std::error_code unreadable;
    const std::filesystem::file_status status = entry->symlink_status(unreadable);
    if (Hidden(entry->path())) {
      entry.disable_recursion_pending();
    } else if (std::filesystem::is_regular_file(status)) {
      files_.emplace("/" + entry->path().lexically_relative(folder).generic_string(), entry->path().string());
    }
  }
}

std::optional<SiteAnswer> SiteFolder::Read(const std::string& path) const {
  const auto file = files_.find(path);
  if (file == files_.end()) {
    return std::nullopt;
  }
  std::ifstream stream(file->second, std::ios::binary);
  if (!stream) {
    return std::nullopt;
  }
  return SiteAnswer{
      200, {}, std::string(ContentTypeOf(path)), std::string{std::istreambuf_iterator<char>(stream), {}}};
}

SiteAnswer SiteFolder::Missing() const {
  SiteAnswer missing =
      Read(std::string(kMissingPage))
          .value_or(SiteAnswer{404, {}, std::string(kHtml), "<p>This page is not here.</p>\n"});
  missing.status = 404;
  return missing;
}

SiteAnswer SiteFolder::Answer(std::string_view label, std::string_view path) const {
  const std::string asked = PercentDecode(path);
  // The root is told apart before its page's name is joined, so that this name still leads home.
  const std::string wanted = asked.ends_with('/') ? asked + std::string(kFolderPage) : asked;
  const std::string file = asked == "/" || !files_.contains(wanted) ? Below(label) + wanted : wanted;
  if (std::optional<SiteAnswer> page = Read(file)) {
    return *std::move(page);
  }
  if (files_.contains(asked + "/" + std::string(kFolderPage))) {
    // The path goes back as it came, so that no decoded character gets into a header.
    return {301, std::string(path) + "/", std::string(kHtml), {}};
  }
  return Missing();
}

}  // namespace kivandra::linux_impl
