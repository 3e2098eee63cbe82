#include "cli/scene/animation.h"

#include <algorithm>
#include <cmath>

#include "cli/support/errors.h"
#include "cli/support/nearest_name.h"

namespace cli {
namespace {

[[noreturn]] void reject(const Setting& setting, const std::string& place,
                         const std::string& what) {
  const std::string message = place + ": " + what;
  if (setting.origin == Origin::kOption) throw UsageError(message);
  throw WorkError(message);
}

std::vector<std::string> settableLabels(const hostkit::ParameterSet& parameters) {
  std::vector<std::string> labels;
  for (const hostkit::Parameter& parameter : parameters.list()) {
    if (takesValue(parameter.type())) labels.push_back(parameter.label);
  }
  return labels;
}

Track bind(const Setting& setting, const hostkit::ParameterSet& parameters, FrameSize frame) {
  const hostkit::Parameter* parameter = parameters.find(setting.label);
  if (!parameter) {
    reject(setting, setting.place,
           "the effect has no parameter " + inQuotes(setting.label) + "; the nearest is " +
               inQuotes(nearestName(setting.label, settableLabels(parameters))));
  }
  Track track{parameter, setting.origin, {}};
  for (const Setting::Key& key : setting.keys) {
    if (!isInterpolated(parameter->type()) && !key.ease.isStraight() && !key.ease.hold) {
      reject(setting, key.place,
             inQuotes(setting.label) + " holds from keyframe to keyframe and takes no ease");
    }
    try {
      track.keys.push_back({key, paramValue(key.value, *parameter, frame)});
    } catch (const ValueError& error) {
      reject(setting, key.place, inQuotes(setting.label) + " " + error.what());
    }
  }
  return track;
}

}  // namespace

std::vector<Track> bindSettings(const std::vector<Setting>& settings,
                                const hostkit::ParameterSet& parameters, FrameSize frame) {
  std::vector<Track> tracks;
  for (const Setting& setting : settings) {
    Track track = bind(setting, parameters, frame);
    std::erase_if(tracks, [&](const Track& t) { return t.parameter == track.parameter; });
    tracks.push_back(std::move(track));
  }
  return tracks;
}

ParamValue valueAt(const Track& track, double frame) {
  const KeySpan<Track::Key> span = keysAround(track.keys, frame);
  if (!isInterpolated(track.parameter->type())) return span.from.value;
  ParamValue blended;
  for (std::size_t i = 0; i < blended.size(); ++i) {
    blended[i] = std::lerp(span.from.value[i], span.to.value[i], span.share);
  }
  return blended;
}

}  // namespace cli
