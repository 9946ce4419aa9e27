// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/navigation.h"

namespace kivandra::gtk {

/// One held question; whoever holds the std::shared_ptr decides. Letting go of it refuses.
class HeldNavigation final : public Navigation {
 public:
  using Answer = std::function<void(bool allowed)>;

  /// Who leads there. A page may do less than the program.
  enum class Leader { Program, Page };

  /// `answer` is called exactly once.
  HeldNavigation(std::string url, Answer answer, Leader leader = Leader::Program);
  ~HeldNavigation() override;

  [[nodiscard]] const std::string& Url() const override { return url_; }
  void Allow() override;
  void AllowFile() override;
  void Refuse() override { Settle(false); }
  [[nodiscard]] bool Pending() const override { return static_cast<bool>(answer_); }
  void OnDropped(std::function<void()> handler) override { onDropped_ = std::move(handler); }

  /// The engine gives the question up: refuses it, then tells the judge.
  void Drop();

 private:
  void Settle(bool allowed);

  std::string url_;
  Answer answer_;  // empty once the question is answered
  Leader leader_;
  std::function<void()> onDropped_;
};

}  // namespace kivandra::gtk
