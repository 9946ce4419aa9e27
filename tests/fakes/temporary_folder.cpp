// SPDX-License-Identifier: GPL-3.0-or-later
#include "fakes/temporary_folder.h"

#include <unistd.h>

#include <cstdlib>
#include <stdexcept>

namespace kivandra::fakes {

TemporaryFolder::TemporaryFolder() {
  std::string name = (std::filesystem::temp_directory_path() / "kivandra-test-XXXXXX").string();
  if (::mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary folder");
  path_ = name;
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

const std::filesystem::path& TemporaryFolder::Path() const { return path_; }

std::string TemporaryFolder::File(const std::string& name) const { return (path_ / name).string(); }

}  // namespace kivandra::fakes
