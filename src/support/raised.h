// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace kivandra {

/// Raises a flag for as long as it lives, however the scope ends.
class Raised {
 public:
  explicit Raised(bool& flag) : flag_(flag) { flag_ = true; }
  ~Raised() { flag_ = false; }
  Raised(const Raised&) = delete;
  Raised& operator=(const Raised&) = delete;

 private:
  bool& flag_;
};

}  // namespace kivandra
