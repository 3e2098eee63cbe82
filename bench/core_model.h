// What a frame's painting would take on more cores than this machine has: each band's time is
// measured on one of them, and the bands are then handed out by calculation as a pool of threads
// hands them out. It knows nothing of memory bandwidth and caches that cores share.
#pragma once

#include <vector>

#include "render/band.h"
#include "scene.h"

namespace bench {

/// A frame of which one thread has done every part by itself. Seconds.
struct MeasuredFrame {
  double serial = 0.0;                      // what the caller's thread alone can do
  std::vector<std::vector<double>> rounds;  // of work that threads share, its parts in order

  double partsInAll() const;
};

/// Takes the scene a frame on, into `output`, with bands as for so many threads. `sprites` is
/// scratch memory, which frames reuse as those of a painter do.
MeasuredFrame measureFrame(Stages& scene, const brisel::MutableImageView& output, int threads,
                           brisel::SpriteList& sprites);

/// What becomes of the seconds of a frame on more cores.
struct Prediction {
  double serial = 0.0;   // as measured
  double wake = 0.0;     // more, because all cores but one join in each round late
  double uneven = 0.0;   // more, because some have nothing left to do before others
  double painted = 0.0;  // an even share of all parts
  double seconds() const { return serial + wake + uneven + painted; }

  Prediction& operator+=(const Prediction& other);
};

/// `wake` is how late cores join in, in seconds.
Prediction predict(const MeasuredFrame& frame, int cores, double wake);

}  // namespace bench
