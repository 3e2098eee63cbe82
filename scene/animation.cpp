#include "scene/animation.h"

#include <cmath>

#include "scene/text/nearest_name.h"

namespace scene {
namespace {

std::vector<std::string> settableLabels() {
  std::vector<std::string> labels;
  for (const brisel::ParameterSpec& parameter : brisel::declaredParameters()) {
    if (takesValue(parameter.kind)) labels.emplace_back(parameter.label);
  }
  return labels;
}

[[noreturn]] void reject(const Setting& setting, const std::string& place,
                         const std::string& what) {
  reject(setting.origin, place + ": " + what);
}

Track bind(const Setting& setting, brisel::FrameSize frame, FrameRate rate) {
  const brisel::ParamIndex index = brisel::findParameter(setting.label);
  if (index == brisel::kInputLayer) {
    reject(setting, setting.place,
           "the effect has no parameter " + inQuotes(setting.label) +
               orNearest(setting.label, settableLabels()));
  }
  const brisel::ParameterSpec& parameter = brisel::parameterSpec(index);
  Track track{index, setting.origin, {}};
  for (const Setting::Key& key : setting.keys) {
    if (!isInterpolated(parameter.kind) && !key.ease.isStraight() && !key.ease.hold) {
      reject(setting, key.place,
             inQuotes(setting.label) + " holds from keyframe to keyframe and takes no ease");
    }
    try {
      track.keys.push_back({key, paramValue(key.value, parameter, frame)});
    } catch (const ValueError& error) {
      reject(setting, key.place, inQuotes(setting.label) + " " + error.what());
    }
  }
  countInFrames(track.keys, rate, setting.label);
  return track;
}

}  // namespace

std::vector<Track> bindSettings(const std::vector<Setting>& settings, brisel::FrameSize frame,
                                FrameRate rate) {
  std::vector<Track> tracks;
  for (const Setting& setting : settings) {
    Track track = bind(setting, frame, rate);
    std::erase_if(tracks, [&](const Track& t) { return t.parameter == track.parameter; });
    tracks.push_back(std::move(track));
  }
  return tracks;
}

ParamValue valueAt(const Track& track, double frame) {
  const KeySpan<Track::Key> span = keysAround(track.keys, frame);
  if (!isInterpolated(brisel::parameterSpec(track.parameter).kind)) return span.from.value;
  ParamValue blended;
  for (std::size_t i = 0; i < blended.size(); ++i) {
    blended[i] = std::lerp(span.from.value[i], span.to.value[i], span.share);
  }
  return blended;
}

}  // namespace scene
