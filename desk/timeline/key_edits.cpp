#include "desk/timeline/key_edits.h"

#include <algorithm>

namespace desk {

std::vector<ParamKey> keysWithout(std::vector<ParamKey> keys, const KeyTimes& chosen) {
  std::erase_if(keys, [&](const ParamKey& key) { return chosen.contains(key.time); });
  return keys;
}

std::vector<ParamKey> keysWith(std::vector<ParamKey> keys, const std::vector<ParamKey>& added) {
  KeyTimes taken;
  for (const ParamKey& key : added) taken.insert(key.time);
  keys = keysWithout(std::move(keys), taken);
  keys.insert(keys.end(), added.begin(), added.end());
  std::ranges::sort(keys, {}, &ParamKey::time);
  return keys;
}

std::vector<ParamKey> keysEased(std::vector<ParamKey> keys, const KeyTimes& chosen,
                                const scene::Ease& ease) {
  for (ParamKey& key : keys) {
    if (chosen.contains(key.time)) key.ease = ease;
  }
  return keys;
}

MovedKeys movedKeys(const std::vector<ParamKey>& keys, const KeyTimes& chosen, int frames,
                    bool copies) {
  std::vector<ParamKey> moved;
  MovedKeys result;
  for (const ParamKey& key : keys) {
    if (!chosen.contains(key.time)) continue;
    moved.push_back(key);
    moved.back().time += frames;
    result.chosen.insert(moved.back().time);
  }
  result.keys = keysWith(copies ? keys : keysWithout(keys, chosen), moved);
  return result;
}

}  // namespace desk
