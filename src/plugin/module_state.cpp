#include "plugin/module_state.h"

namespace brisel {

ModuleState& moduleState() {
  static ModuleState state;
  return state;
}

RandomGenerator& randomGenerator() {
  thread_local RandomGenerator generator;
  return generator;
}

}  // namespace brisel
