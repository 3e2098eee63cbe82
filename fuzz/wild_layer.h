// One layer of a host that does what no host should: an instance of the effect, driven by an
// input's bytes and held, after each command, to what a module promises.
#pragma once

#include <vector>

#include "bytes.h"
#include "hostkit/session.h"
#include "plugin/sdk/entry_point.h"

namespace fuzz {

/// What may still be painted for this input: stars, each counted as often as it has rays.
struct Work {
  std::int64_t left = 20'000;
  std::int64_t mostRays = 0;  // that any star so far was born with
};

class WildLayer {
 public:
  WildLayer(Bytes& bytes, Work& work);
  ~WildLayer();  // takes the instance down, and finds nothing left behind
  WildLayer(const WildLayer&) = delete;
  WildLayer& operator=(const WildLayer&) = delete;

  /// One command, or one thing that the user or the host changes in between.
  void step();

 private:
  PF_Err call(PF_Cmd cmd, void* extra = nullptr);
  PF_Err callWith(PF_Cmd cmd, PF_ParamDef** params, PF_LayerDef* output, void* extra);
  void check(PF_Cmd cmd, PF_Err err);

  void command();
  void commandOfPoorHost();
  void setParameter();
  void breakHost();
  void mendHost();
  void addMask();
  void render();
  void sendEvent();
  void sendMessage();
  void advance();
  void saveAndRestore();
  void setBackdrop();
  void handOverForeignData();

  bool canAfford();
  hostkit::World picture();
  void spoil(PF_EffectWorld& world);
  A_long coordinate();
  PF_Rect rectangle();

  Bytes& bytes_;
  Work& work_;
  hostkit::Session session_;
  std::vector<hostkit::World> backdrops_;  // which the module may still read
  std::vector<std::uint8_t> saved_;
};

}  // namespace fuzz
