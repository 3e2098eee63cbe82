// What can be done with keys on the timeline: lists of keys in, lists of keys out.
#pragma once

#include <set>
#include <vector>

#include "desk/document/scene_text.h"

namespace desk {

/// Keys of one parameter by their times, frames.
using KeyTimes = std::set<double>;

struct MovedKeys {
  std::vector<ParamKey> keys;  // in ascending order
  KeyTimes chosen;             // where those that were moved are now
};

/// The chosen keys, or copies of them, that many frames later. Others in their places give way.
MovedKeys movedKeys(const std::vector<ParamKey>& keys, const KeyTimes& chosen, int frames,
                    bool copies);

std::vector<ParamKey> keysWithout(std::vector<ParamKey> keys, const KeyTimes& chosen);

std::vector<ParamKey> keysEased(std::vector<ParamKey> keys, const KeyTimes& chosen,
                                const scene::Ease& ease);

/// With others added, in whose places keys give way.
std::vector<ParamKey> keysWith(std::vector<ParamKey> keys, const std::vector<ParamKey>& added);

}  // namespace desk
