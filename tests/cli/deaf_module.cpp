// The effect module as it was before programs could send it messages.
#include <dlfcn.h>

#include "plugin/sdk/codes.h"
#include "plugin/sdk/entry_point.h"

extern "C" __attribute__((visibility("default"))) PF_Err EntryPointFunc(
    PF_Cmd command, PF_InData* in, PF_OutData* out, PF_ParamDef* params[], PF_LayerDef* output,
    void* extra) {
  static void* const module = dlopen(MODULE_PATH, RTLD_NOW | RTLD_LOCAL);
  static const auto entry = reinterpret_cast<PF_EntryPointFunc*>(dlsym(module, "EntryPointFunc"));
  if (command == PF_Cmd_COMPLETELY_GENERAL) return PF_Err_NONE;
  return entry(command, in, out, params, output, extra);
}
