// hostkit: the callbacks a module is given. Several of them carry no context, so they act on the
// records of the host that is current on this thread.
#pragma once

#include <optional>

#include "hostkit/control_pane.h"
#include "hostkit/handles.h"
#include "hostkit/masks.h"
#include "hostkit/parameters.h"
#include "hostkit/suites.h"
#include "plugin/sdk/in_out_data.h"
#include "plugin/sdk/suites.h"

namespace hostkit {

// What callbacks change, one per session.
struct HostRecords {
  HandleTable handles;
  ParameterSet parameters;
  MaskTable masks;
  SuiteLedger suites;
  ControlPane pane;
  std::optional<PF_CustomUIInfo> customUI;  // of the last register_ui

  PF_Err addParamError = PF_Err_NONE;    // returned by add_param ...
  PF_ParamIndex addParamErrorIndex = 0;  // ... for this index
  PF_Err registerUIError = PF_Err_NONE;

  PF_ProgPtr effectRef = nullptr;  // of the running command
  int wrongEffectRefs = 0;         // callbacks that handed back another one
};

// Makes `records` current on this thread for as long as it lives; scopes nest.
class CurrentHost {
 public:
  explicit CurrentHost(HostRecords& records);
  ~CurrentHost();
  CurrentHost(const CurrentHost&) = delete;
  CurrentHost& operator=(const CurrentHost&) = delete;

 private:
  HostRecords* previous_;
};

// The records current on this thread, null outside a command. Counts a reference that is not the
// running command's.
HostRecords* currentHost(PF_ProgPtr effectRef);
HostRecords* currentHost();  // for callbacks that hand back no reference

PF_InteractCallbacks interactCallbacks();
PF_UtilCallbacks utilCallbacks();
SPBasicSuite basicSuite();

}  // namespace hostkit
