// hostkit: one effect instance on one layer, from set-up to set-down, as a host runs it.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "hostkit/callbacks.h"
#include "hostkit/error.h"
#include "hostkit/module.h"
#include "hostkit/world.h"
#include "plugin/message/program_message.h"
#include "plugin/sdk/codes.h"

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
  // The output's share of that. The module is given points and masks reduced by it.
  PF_RationalScale downsampleX{1, 1};
  PF_RationalScale downsampleY{1, 1};
};

// The output that frames are rendered into.
struct OutputShape {
  A_long width = 0;  // pixels
  A_long height = 0;
  Depth depth = Depth::Bits8;
};

// What the module reported about itself.
struct ModuleReport {
  A_u_long version = 0;
  PF_OutFlags outFlags = 0;
  PF_OutFlags outFlags2 = 0;
  A_long numParams = 0;  // with the input layer
};

// What a module answered to an event of one of its controls.
struct EventReport {
  PF_EventOutFlags eventFlags = 0;
  PF_OutFlags outFlags = 0;
  std::vector<PF_ParamIndex> changed;               // parameters it marked as changed
  std::vector<std::optional<PF_Rect>> invalidated;  // empty: the whole pane
};

// A control's title lies in a line of this height above it, pixels.
inline constexpr A_long kTitleHeight = 24;

// The module must outlive the session. For one thread at a time. Sessions of one module are opened
// and closed one after the other, and rendered so, too, unless each has a state of its own.
class Session {
 public:
  explicit Session(const Module& module) : Session(module.entry()) {}
  explicit Session(EntryPoint entry);  // of a module that is linked in
  ~Session();                          // closes what is still open; an error is lost
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

  // Sends the parameter-UI update. For use between renders, which send it when it is due.
  void updateParamsUI();

  // Messages that this effect's module understands. Each throws Error when it does not, or when it
  // refuses; nothing is changed then.

  // The step that render() would take into such an output, without its pixels and so in a fraction
  // of the time: the next frame is the same as after it.
  void advance(World& input, const OutputShape& output, const RenderRequest& request);
  // All that the next frames depend on, and becoming an instance that was saved. The bytes are for
  // the same version of the effect.
  std::vector<std::uint8_t> saveState();
  void restoreState(std::span<const std::uint8_t> bytes);
  // How to paint, which changes no pixel: threads in all, this one among them; an
  // instruction set of PaintingMessage that the processor has, "" being the widest.
  static constexpr int kMostThreads = brisel::kMostMessageThreads;
  void usePainting(int threads, const std::string& instructionSet = "");
  // Stops sharing random numbers and drawing state with other sessions, and starts afresh. Such
  // sessions may be rendered on several threads at once.
  void useOwnState();
  // An image of the output's depth that the next frame's stars are mixed with in place of the
  // input; null takes it back. It must stay until that frame is rendered; later frames have the
  // input again.
  void setBackdrop(const World* backdrop);
  // Flattening ends what the last three ask for.

  // The size of the layer for events before the first render, pixels.
  void setLayerSize(A_long width, A_long height);

  // Events of a custom control, which lies at `control` in its pane; points are pixels of the pane,
  // too. Values that the module changed and marked as changed are taken over.
  EventReport draw(PF_ParamIndex index, const PF_Rect& control, Painter* painter);
  EventReport hover(PF_ParamIndex index, const PF_Rect& control, PF_Point point);
  EventReport click(PF_ParamIndex index, const PF_Rect& control, PF_Point point);

  std::string about();  // the text of the about command

  const ModuleReport& report() const { return report_; }
  ParameterSet& parameters() { return records_.parameters; }
  const ParameterSet& parameters() const { return records_.parameters; }
  HostRecords& records() { return records_; }

  // Below the level of a session: single commands, in any order.

  // Fills the input data for a frame, and keeps the worlds for the next render command.
  void prepareFrame(World& input, World& output, const RenderRequest& request);
  // Sends one command with what a host passes along with it, carries the sequence handle over and
  // notes what the module reports.
  PF_Err call(PF_Cmd cmd, void* extra = nullptr);
  // The same with other parameter pointers and another output world, null allowed.
  PF_Err callWith(PF_Cmd cmd, PF_ParamDef** params, PF_LayerDef* output, void* extra);

  // An event of an effect-controls pane without what depends on its type, and sending one. A null
  // painter leaves a draw event without a drawing reference.
  PF_EventExtra event(PF_EventType type, PF_ParamIndex index, const PF_Rect& control);
  EventReport send(PF_EventExtra& event, Painter* painter = nullptr);

  PF_InData& inData() { return in_; }
  const PF_OutData& outData() const { return out_; }  // as the last command left it

 private:
  void prepareFrame(World& input, const OutputShape& output, const RenderRequest& request);
  void ask(brisel::ProgramMessage& message);
  void noteSuccess(PF_Cmd cmd);
  void callOrThrow(PF_Cmd cmd, void* extra = nullptr);
  static std::string messageOf(const PF_OutData& out);
  static void throwIfFailed(PF_Cmd cmd, PF_Err err, const std::string& message);

  EntryPoint entry_;
  HostRecords records_;
  PF_UtilCallbacks utils_;
  SPBasicSuite basic_;
  PF_InData in_{};
  PF_OutData out_{};
  PF_LayerDef* output_ = nullptr;
  ModuleReport report_;
  PF_Context context_{};
  PF_Context* contextAt_ = &context_;
  std::uintptr_t effectRefs_ = 0;
  bool globalOpen_ = false;
  bool sequenceOpen_ = false;
};

}  // namespace hostkit
