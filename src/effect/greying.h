// Which parameters are greyed out because they have no effect under the current choices.
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
  bool collapses;  // a disabled one is shown collapsed, an enabled one open; else that stays as it
                   // is, as of a group that a person opened
};

/// The states that follow from `values` when the parameter `changed` is updated, in the order in
/// which to show them. Nothing where no rule hangs on that parameter; hosts are asked for every
/// index from 2 on to bring all controls up to date, though several indices give the same states.
std::optional<std::vector<ControlState>> greyingOf(const Values& values, std::int32_t changed);

}  // namespace brisel
