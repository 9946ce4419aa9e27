// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

namespace kivandra {

// Flags of sndPlaySoundA; the numbers are those of mmsystem.h.
inline constexpr unsigned SND_ASYNC = 1;
inline constexpr unsigned SND_NODEFAULT = 2;

class Sound {
 public:
  virtual ~Sound() = default;

  /// Number of devices that can play.
  [[nodiscard]] virtual unsigned waveOutGetNumDevs() = 0;
  /// Begins to play a wave file and returns at once; a missing file stays silent.
  virtual void sndPlaySoundA(const std::string& path, unsigned flags) = 0;
  /// The system's beep.
  virtual void Beep() = 0;
};

}  // namespace kivandra
