// What stars depend on, by which a saved state is known to be of the same scene.
#pragma once

#include <deque>
#include <string>
#include <vector>

#include "cli/scene/layer_effect.h"
#include "cli/scene/scene_plan.h"
#include "cli/support/digest.h"

namespace cli {

// "size" is "1920x1080"; what would be too much to tell is a digest after a "#".
struct StarFact {
  std::string name;
  std::string value;
};
using StarFacts = std::vector<StarFact>;

// What follows after "the", such as "size was 64x36 and is 128x72", of the first that differs;
// empty where all are the same.
std::string differenceOf(const StarFacts& before, const StarFacts& now);

// Nothing later than a frame counts for the stars before it: an edit of what follows leaves their
// facts as they are. The input counts only where stars have read it.
class StarPast {
 public:
  // Keeps references to both.
  StarPast(const ScenePlan& plan, const std::deque<LayerEffect>& layers);

  // Of the stars as they are before that frame, the pre-roll included. Frames ascend from call to
  // call.
  StarFacts factsBefore(int frame);

 private:
  void addFrame(int frame);

  const ScenePlan& plan_;
  const std::deque<LayerEffect>& layers_;
  std::vector<Digest> values_;  // of each layer
  int counted_ = 0;             // frames
  bool readsInput_ = false;
};

}  // namespace cli
