// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/program_sound.h"

#include "core/program_files.h"
#include "core/settings.h"

namespace kivandra {

void PlayProgramSound(RegistryCalls& registry, Sound& sound, const SystemInfo& system,
                      std::string_view name) {
  if (SoundEnabled(registry) && sound.waveOutGetNumDevs() > 0) {
    sound.sndPlaySoundA(ProgramFile(system, name), SND_ASYNC | SND_NODEFAULT);
  }
}

}  // namespace kivandra
