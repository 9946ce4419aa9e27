// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include "platform/file_calls.h"

namespace kivandra::linux_impl {

class LinuxFileCalls : public FileCalls {
 public:
  void Kill(const std::string& path) override;
  [[nodiscard]] std::string Dir(const std::string& path) const override;
  void Name(const std::string& path, const std::string& newPath) override;
  [[nodiscard]] std::string ReadFile(const std::string& path) const override;
  void WriteFile(const std::string& path, const std::string& bytes) override;
  [[nodiscard]] FolderListing ListFolder(const std::string& path) const override;
  void MakeFolder(const std::string& path) override;
  void DeleteFolder(const std::string& path) override;
};

}  // namespace kivandra::linux_impl
