#include "plugin/greying.h"

#include "effect/greying.h"
#include "plugin/sdk/codes.h"
#include "plugin/sdk/suite_handle.h"

namespace brisel {
namespace {

void setBit(std::int32_t& flags, std::int32_t bit, bool on) {
  flags = on ? flags | bit : flags & ~bit;
}

}  // namespace

void updateParameterUI(const PF_InData& in, PF_ParamDef* const* params, const Values& values,
                       std::int32_t changedIndex) {
  const auto states = greyingOf(values, changedIndex);
  if (!states) return;
  const SuiteHandle<PF_ParamUtilsSuite2> suite(in, kPFParamUtilsSuite, kPFParamUtilsSuiteVersion2);
  if (suite.get() == nullptr) return;
  for (const ControlState& state : *states) {
    PF_ParamDef copy = *params[state.index];
    setBit(copy.ui_flags, PF_PUI_DISABLED, !state.enabled);
    if (state.collapses) setBit(copy.flags, PF_ParamFlag_COLLAPSE_TWIRLY, !state.enabled);
    suite->PF_UpdateParamUI(in.effect_ref, state.index, &copy);
  }
}

void updateAllParameterUI(const PF_InData& in, PF_ParamDef* const* params, const Values& values) {
  for (std::int32_t index = 2; index < kParamCount; ++index) {
    updateParameterUI(in, params, values, index);
  }
}

}  // namespace brisel
