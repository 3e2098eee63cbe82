// hostkit: the callbacks a module is given. Several of them carry no context, so they act on the
// records of the host that is current on this thread.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "hostkit/handles.h"
#include "hostkit/parameters.h"
#include "sdk/in_out_data.h"
#include "sdk/suites.h"

namespace hostkit {

struct SuiteRequest {
  std::string name;
  std::int32_t version;
};

// The suites the module asked for. This host offers none; it keeps account of the requests.
struct SuiteLedger {
  std::vector<SuiteRequest> refused;
  int unbalancedReleases = 0;  // of suites that are not held
};

// What callbacks change, one per session.
struct HostRecords {
  HandleTable handles;
  ParameterSet parameters;
  SuiteLedger suites;
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

PF_InteractCallbacks interactCallbacks();
PF_UtilCallbacks utilCallbacks();
SPBasicSuite basicSuite();

}  // namespace hostkit
