// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/sound.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>

#include "linux/temporary_folder.h"
#include "linux/until.h"

namespace kivandra::linux_impl {
namespace {

constexpr unsigned kFlags = SND_ASYNC | SND_NODEFAULT;

std::chrono::milliseconds TimeOf(const std::function<void()>& work) {
  const auto began = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - began);
}

std::string ShippedSound(const char* name) { return std::string(KV_SOURCE_DIR) + "/assets/sounds/" + name; }

TEST(Sound, ThirtyBeepsInARowAreOneToneAndKeepNobodyWaiting) {
  GstSound sound;
  sound.Beep();  // starts the sound library
  EXPECT_TRUE(tests::Until([&] { return sound.Sounding() == 0; }));
  const auto time = TimeOf([&] {
    for (int i = 0; i < 30; ++i) {
      sound.Beep();
      EXPECT_LE(sound.Sounding(), 1U);
    }
  });
  EXPECT_EQ(sound.Sounding(), 1U);
  EXPECT_LT(time.count(), 150) << "the whole row is shorter than one tone";
  EXPECT_TRUE(tests::Until([&] { return sound.Sounding() == 0; }));
}

TEST(Sound, AShippedSoundPlaysAsideToItsEnd) {
  GstSound sound;
  static_cast<void>(sound.waveOutGetNumDevs());  // starts the sound library
  ASSERT_TRUE(std::filesystem::exists(ShippedSound("accessgranted.wav")));
  const auto time = TimeOf([&] { sound.sndPlaySoundA(ShippedSound("accessgranted.wav"), kFlags); });
  EXPECT_EQ(sound.Sounding(), 1U);
  EXPECT_LT(time.count(), 400) << "it returns before the sound has ended";
  EXPECT_TRUE(tests::Until([&] { return sound.Sounding() == 0; }));
}

TEST(Sound, AMissingFileStaysSilent) {
  GstSound sound;
  sound.sndPlaySoundA(ShippedSound("not-there.wav"), kFlags);
  EXPECT_EQ(sound.Sounding(), 0U);
}

TEST(Sound, AFileThatIsNoSoundEndsBySilence) {
  const tests::TemporaryFolder folder;
  folder.Write("noise.wav", "this is no sound");
  GstSound sound;
  sound.sndPlaySoundA(folder.Path("noise.wav"), kFlags);
  EXPECT_TRUE(tests::Until([&] { return sound.Sounding() == 0; }));
}

TEST(Sound, TheNextSoundCutsTheFormerOff) {
  GstSound sound;
  sound.sndPlaySoundA(ShippedSound("shutdowninprocess.wav"), kFlags);
  sound.sndPlaySoundA(ShippedSound("complete.wav"), kFlags);
  EXPECT_EQ(sound.Sounding(), 1U);
}

TEST(Sound, ABeepGoesBesideASound) {
  GstSound sound;
  sound.sndPlaySoundA(ShippedSound("welcome.wav"), kFlags);
  sound.Beep();
  EXPECT_EQ(sound.Sounding(), 2U);
}

}  // namespace
}  // namespace kivandra::linux_impl
