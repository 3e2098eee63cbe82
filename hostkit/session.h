// hostkit: one effect instance on one layer, from set-up to set-down, as a host runs it.
#pragma once

#include <cstdint>
#include <string>

#include "hostkit/callbacks.h"
#include "hostkit/error.h"
#include "hostkit/module.h"
#include "hostkit/world.h"
#include "sdk/codes.h"

namespace hostkit {

std::string commandName(PF_Cmd cmd);  // "render", "sequence set-up", ... or "command 99"

// One frame. The frame rate is rateNum / rateDen frames per second.
struct RenderRequest {
  A_long frame = 0;
  A_u_long rateNum = 25;
  A_long rateDen = 1;
  PF_Quality quality = PF_Quality_HI;
  // The layer at full resolution, pixels. 0: the output's size.
  A_long layerWidth = 0;
  A_long layerHeight = 0;
  PF_RationalScale downsampleX{1, 1};
  PF_RationalScale downsampleY{1, 1};
};

// What the module reported of itself.
struct ModuleReport {
  A_u_long version = 0;
  PF_OutFlags outFlags = 0;
  PF_OutFlags outFlags2 = 0;
  A_long numParams = 0;  // with the input layer
};

// The module must outlive the session. Not for use from two threads.
class Session {
 public:
  explicit Session(const Module& module);
  ~Session();  // closes what is still open; an error is lost
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  // Global, parameter and sequence set-up. Throws Error, as every function here but call().
  void open();
  // Sequence and global set-down, as far as they are due.
  void close();

  // Parameter-UI update when values changed, frame set-up, render, frame set-down. The output's
  // depth is the depth of the render; `input` is the layer the effect is applied to.
  void render(World& input, World& output, const RenderRequest& request);

  // What a host does when it saves a project, and when it then goes on or loads it again.
  void flatten();
  void resetup();

  std::string about();  // the text of the about command

  const ModuleReport& report() const { return report_; }
  ParameterSet& parameters() { return records_.parameters; }
  const ParameterSet& parameters() const { return records_.parameters; }
  HostRecords& records() { return records_; }

  // Below the level of a session: single commands, in any order.

  // Fills the input data for a frame and keeps the worlds for the next render command.
  void prepareFrame(World& input, World& output, const RenderRequest& request);
  // Sends one command with what a host passes along with it, carries the sequence handle over and
  // notes what the module reports.
  PF_Err call(PF_Cmd cmd, void* extra = nullptr);
  // The same with other parameter pointers and another output world, null allowed.
  PF_Err callWith(PF_Cmd cmd, PF_ParamDef** params, PF_LayerDef* output, void* extra);

  PF_InData& inData() { return in_; }
  const PF_OutData& outData() const { return out_; }  // as the last command left it

 private:
  void noteSuccess(PF_Cmd cmd);
  void callOrThrow(PF_Cmd cmd);
  static void throwIfFailed(PF_Cmd cmd, PF_Err err, const std::string& message);

  EntryPoint entry_;
  HostRecords records_;
  PF_UtilCallbacks utils_;
  SPBasicSuite basic_;
  PF_InData in_{};
  PF_OutData out_{};
  PF_LayerDef* output_ = nullptr;
  ModuleReport report_;
  std::uintptr_t effectRefs_ = 0;
  bool globalOpen_ = false;
  bool sequenceOpen_ = false;
};

}  // namespace hostkit
