// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <stdexcept>
#include <string>

namespace kivandra::tests {

/// A folder of its own for one test, gone with it.
class TemporaryFolder {
 public:
  TemporaryFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "kivandra-test-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) {
      throw std::runtime_error("no temporary folder");
    }
    path_ = name;
  }
  ~TemporaryFolder() {
    std::error_code error;
    std::filesystem::remove_all(path_, error);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  [[nodiscard]] std::string Path(const std::string& inside = {}) const {
    return inside.empty() ? path_.string() : (path_ / inside).string();
  }
  /// Writes a file with the folders above it.
  void Write(const std::string& inside, const std::string& content) const {
    const std::filesystem::path file = path_ / inside;
    std::filesystem::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << content;
  }

 private:
  std::filesystem::path path_;
};

/// Sets an environment variable, or takes it away, for one test.
class Environment {
 public:
  Environment(const char* name, const std::optional<std::string>& value) : name_(name) {
    if (const char* before = std::getenv(name)) {
      before_ = before;
    }
    Set(value);
  }
  ~Environment() { Set(before_); }
  Environment(const Environment&) = delete;
  Environment& operator=(const Environment&) = delete;

 private:
  void Set(const std::optional<std::string>& value) const {
    if (value) {
      setenv(name_, value->c_str(), 1);
    } else {
      unsetenv(name_);
    }
  }
  const char* name_;
  std::optional<std::string> before_;
};

}  // namespace kivandra::tests
