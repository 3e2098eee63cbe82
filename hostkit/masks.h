// hostkit: the masks of a layer, and a record of the outlines that a module fetches.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <vector>

#include "plugin/sdk/suites.h"

namespace hostkit {

// A mask at one moment. Coordinates are pixels of the layer at full size; tangents are points, not
// offsets.
struct MaskShape {
  std::vector<PF_PathVertex> vertices;
  bool closed = true;
};

// `time` and `step` in units of 1 / `scale` seconds.
struct MaskTime {
  A_long time;
  A_long step;
  A_u_long scale;
};

class MaskTable {
 public:
  using ShapeAt = std::function<MaskShape(const MaskTime&)>;

  // Adds a mask and returns its id; the first one is 1.
  PF_PathID add(ShapeAt shapeAt, bool inverted = false);

  // Outlines are given out reduced by these, as for a frame of reduced size.
  void setDownsample(PF_RationalScale x, PF_RationalScale y);

  // The n-th call from now (1 is the next) answers an error and does nothing, except that a
  // check-in counts; 0 cancels this.
  void failCall(int nth) { failedCall_ = nth; }

  // Behind the path suites; each is the function of its name and answers as that does.
  PF_Err numPaths(A_long* count);
  PF_Err pathInfo(A_long index, PF_PathID* id);
  PF_Err checkoutPath(PF_PathID id, const MaskTime& time, PF_PathOutlinePtr* path);
  PF_Err checkinPath(PF_PathID id, PF_Boolean changed, PF_PathOutlinePtr path);
  PF_Err pathIsOpen(PF_PathOutlinePtr path, PF_Boolean* open);
  PF_Err pathNumSegments(PF_PathOutlinePtr path, A_long* count);
  PF_Err pathVertexInfo(PF_PathOutlinePtr path, A_long index, PF_PathVertex* vertex);
  PF_Err pathIsInverted(PF_PathID id, PF_Boolean* inverted);

  int calls() const { return calls_; }  // of any of the above
  // Of an outline that is not out, under another mask's id, or said to be changed.
  int wrongCheckins() const { return wrongCheckins_; }
  int staleOutlines() const { return staleOutlines_; }  // uses of one that was handed back
  bool balanced() const;                                // nothing out and no misuse

 private:
  struct Mask {
    ShapeAt shapeAt;
    bool inverted;
  };
  struct Outline {
    PF_PathID id;
    MaskShape shape;
  };

  bool failsNow();  // counts a call
  const Mask* findMask(PF_PathID id) const;
  const MaskShape* findShape(PF_PathOutlinePtr path);  // counts a misuse when it is not out

  std::vector<Mask> masks_;                        // id 1 first
  std::map<PF_PathOutlinePtr, Outline> outlines_;  // those that are out
  std::uintptr_t lastOutline_ = 0;
  double scaleX_ = 1;
  double scaleY_ = 1;
  int failedCall_ = 0;
  int calls_ = 0;
  int wrongCheckins_ = 0;
  int staleOutlines_ = 0;
  int unknownOutlines_ = 0;  // uses of one that is not from here
};

}  // namespace hostkit
