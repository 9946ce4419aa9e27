// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <memory>
#include <string>

#include "platform/sound.h"

namespace kivandra::linux_impl {

/// Sounds through GStreamer, which is started at the first call that needs it. A machine on which GStreamer
/// does not start has no device and stays silent. Played sounds end from the event loop.
class GstSound : public Sound {
 public:
  GstSound();
  ~GstSound() override;
  GstSound(const GstSound&) = delete;
  GstSound& operator=(const GstSound&) = delete;

  /// Asks the sound system each time, since devices come and go.
  [[nodiscard]] unsigned waveOutGetNumDevs() override;
  /// A sound that still plays is cut off by the next one.
  void sndPlaySoundA(const std::string& path, unsigned flags) override;
  /// A short soft tone. A call while it sounds adds nothing: beeps in a row are one tone, and none of them
  /// waits.
  void Beep() override;

  /// How many sounds are being played: 0, 1, or 2 for a file and the beep.
  [[nodiscard]] unsigned Sounding() const;

 private:
  class Pipeline;
  [[nodiscard]] bool Ready();

  enum class State { NotAsked, Ready, Failed } state_ = State::NotAsked;
  std::unique_ptr<Pipeline> file_;
  std::unique_ptr<Pipeline> tone_;
  std::chrono::steady_clock::time_point toneBegan_;
};

}  // namespace kivandra::linux_impl
