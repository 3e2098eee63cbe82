// Which parameters are grayed out because they have no effect under the current choices.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "effect/values.h"

namespace brisel {

/// What a host shows of one parameter.
struct ControlState {
  ParamIndex index;
  bool enabled;
  bool collapses;  // whether it is also shown collapsed when disabled and open when enabled
};

/// The states to show, in this order, when the parameter `changed` is updated; nothing when no rule
/// depends on that parameter. The states of all parameters are those of every index from 2 on, in
/// turn; several indices give the same ones.
std::optional<std::vector<ControlState>> grayingOf(const Values& values, std::int32_t changed);

}  // namespace brisel
