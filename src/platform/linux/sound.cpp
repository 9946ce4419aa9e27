// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/sound.h"

#include <gst/gst.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numbers>
#include <string_view>
#include <utility>
#include <vector>

namespace kivandra::linux_impl {
namespace {

constexpr int kToneRate = 44100;
constexpr double kTonePitch = 660.0;  // hertz
constexpr double kToneSeconds = 0.18;
constexpr double kToneLoudness = 0.25;  // of full scale
constexpr double kFadeSeconds = 0.005;  // so that it neither begins nor ends with a click

/// A tone that has not ended by then is stuck in the sound system, and the next beep may begin another.
constexpr std::chrono::seconds kToneStuck{2};

std::vector<std::int16_t> ToneSamples() {
  const auto count = static_cast<std::size_t>(kToneSeconds * kToneRate);
  std::vector<std::int16_t> samples(count);
  for (std::size_t i = 0; i < count; ++i) {
    const double time = static_cast<double>(i) / kToneRate;
    const double edge = std::min(time, kToneSeconds - time) / kFadeSeconds;
    const double level = kToneLoudness * std::clamp(edge, 0.0, 1.0);
    samples[i] =
        static_cast<std::int16_t>(level * INT16_MAX * std::sin(2 * std::numbers::pi * kTonePitch * time));
  }
  return samples;
}

}  // namespace

/// One sound on its way to the loudspeaker; silent after its end or an error, cut off when destroyed.
class GstSound::Pipeline {
 public:
  /// Takes the element over; null makes a sound that has already ended.
  explicit Pipeline(GstElement* element) : element_(element) {
    if (element_ == nullptr) {
      return;
    }
    gst_object_ref_sink(element_);
    GstBus* bus = gst_element_get_bus(element_);
    watch_ = gst_bus_add_watch(bus, &Pipeline::Heard, this);
    gst_object_unref(bus);
    if (gst_element_set_state(element_, GST_STATE_PLAYING) == GST_STATE_CHANGE_FAILURE) {
      Close();
    }
  }
  ~Pipeline() { Close(); }
  Pipeline(const Pipeline&) = delete;
  Pipeline& operator=(const Pipeline&) = delete;

  [[nodiscard]] bool Playing() const { return element_ != nullptr; }
  [[nodiscard]] GstElement* Element() const { return element_; }

 private:
  void Close() {
    if (watch_ != 0) {
      g_source_remove(std::exchange(watch_, 0));
    }
    if (element_ != nullptr) {
      gst_element_set_state(element_, GST_STATE_NULL);
      gst_object_unref(std::exchange(element_, nullptr));
    }
  }

  static gboolean Heard(GstBus* /*bus*/, GstMessage* message, gpointer self) {
    const GstMessageType type = GST_MESSAGE_TYPE(message);
    if (type != GST_MESSAGE_EOS && type != GST_MESSAGE_ERROR) {
      return G_SOURCE_CONTINUE;
    }
    auto* pipeline = static_cast<Pipeline*>(self);
    pipeline->watch_ = 0;  // taken away by the answer below
    pipeline->Close();
    return G_SOURCE_REMOVE;
  }

  GstElement* element_;
  guint watch_ = 0;
};

GstSound::GstSound() = default;
GstSound::~GstSound() = default;

bool GstSound::Ready() {
  if (state_ == State::NotAsked) {
    state_ = gst_init_check(nullptr, nullptr, nullptr) != FALSE ? State::Ready : State::Failed;
  }
  return state_ == State::Ready;
}

unsigned GstSound::waveOutGetNumDevs() {
  if (!Ready()) {
    return 0;
  }
  GstDeviceMonitor* monitor = gst_device_monitor_new();
  gst_device_monitor_add_filter(monitor, "Audio/Sink", nullptr);
  GList* devices = gst_device_monitor_get_devices(monitor);
  const unsigned count = g_list_length(devices);
  g_list_free_full(devices, gst_object_unref);
  gst_object_unref(monitor);
  return count;
}

void GstSound::sndPlaySoundA(const std::string& path, unsigned /*flags*/) {
  if (g_file_test(path.c_str(), G_FILE_TEST_IS_REGULAR) == FALSE || !Ready()) {
    return;
  }
  gchar* uri = gst_filename_to_uri(path.c_str(), nullptr);
  GstElement* player = gst_element_factory_make("playbin", nullptr);
  if (player != nullptr && uri != nullptr) {
    g_object_set(player, "uri", uri, nullptr);
    gst_util_set_object_arg(G_OBJECT(player), "flags", "audio+soft-volume");  // never a window for a film
    file_.reset();
    file_ = std::make_unique<Pipeline>(player);
  } else if (player != nullptr) {
    gst_object_unref(player);
  }
  g_free(uri);
}

void GstSound::Beep() {
  const auto time = std::chrono::steady_clock::now();
  const bool sounds = tone_ != nullptr && tone_->Playing();
  if ((sounds && time - toneBegan_ < kToneStuck) || !Ready()) {
    return;
  }
  tone_.reset();
  const std::string line =
      "appsrc name=tone format=time caps=audio/x-raw,format=S16LE,layout=interleaved,channels=1,rate=" +
      std::to_string(kToneRate) + " ! audioconvert ! audioresample ! autoaudiosink";
  GstElement* player = gst_parse_launch_full(line.c_str(), nullptr, GST_PARSE_FLAG_FATAL_ERRORS, nullptr);
  if (player == nullptr) {
    return;
  }
  toneBegan_ = time;
  tone_ = std::make_unique<Pipeline>(player);
  if (!tone_->Playing()) {
    return;
  }
  static const std::vector<std::int16_t> samples = ToneSamples();
  const gsize size = samples.size() * sizeof(std::int16_t);
  GstBuffer* buffer = gst_buffer_new_memdup(samples.data(), size);
  GST_BUFFER_PTS(buffer) = 0;
  GST_BUFFER_DURATION(buffer) = gst_util_uint64_scale(samples.size(), GST_SECOND, kToneRate);
  GstElement* source = gst_bin_get_by_name(GST_BIN(tone_->Element()), "tone");
  GstFlowReturn flow = GST_FLOW_OK;
  g_signal_emit_by_name(source, "push-buffer", buffer, &flow);
  g_signal_emit_by_name(source, "end-of-stream", &flow);
  gst_buffer_unref(buffer);
  gst_object_unref(source);
}

unsigned GstSound::Sounding() const {
  return static_cast<unsigned>(file_ != nullptr && file_->Playing()) +
         static_cast<unsigned>(tone_ != nullptr && tone_->Playing());
}

}  // namespace kivandra::linux_impl
