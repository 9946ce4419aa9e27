// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <string>

namespace kivandra::fakes {

/// An empty folder that goes with everything in it.
class TemporaryFolder {
 public:
  TemporaryFolder();
  ~TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  [[nodiscard]] const std::filesystem::path& Path() const;
  [[nodiscard]] std::string File(const std::string& name) const;

 private:
  std::filesystem::path path_;
};

}  // namespace kivandra::fakes
