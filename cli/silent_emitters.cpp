#include "silent_emitters.h"

#include <set>

#include "errors.h"

namespace cli {

std::vector<std::string> silentEmitterWarnings(const std::vector<Track>& tracks) {
  static const std::set<std::string> kSilent = {"Source as raster mask", "Whole field",
                                                "Contour alpha channel"};
  std::set<std::string> chosen;
  for (const Track& track : tracks) {
    if (track.parameter->label != "Standard path") continue;
    for (const Track::Key& key : track.keys) {
      chosen.insert(track.parameter->items[static_cast<std::size_t>(key.value[0]) - 1]);
    }
  }
  std::vector<std::string> warnings;
  for (const std::string& item : chosen) {
    if (kSilent.contains(item)) {
      warnings.push_back("the standard path " + inQuotes(item) + " emits no stars in this version");
    }
  }
  return warnings;
}

}  // namespace cli
