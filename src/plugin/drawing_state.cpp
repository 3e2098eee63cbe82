#include "plugin/drawing_state.h"

#include <atomic>

#include "plugin/module_state.h"

namespace brisel {

DrawingLease::DrawingLease(OwnDrawing* own)
    : random_(own != nullptr ? own->random : randomGenerator()) {
  if (own != nullptr) {
    state_ = &own->state;
  } else if (!moduleState().drawingInUse.test_and_set(std::memory_order_acquire)) {
    holdsModules_ = true;
    state_ = &moduleState().drawing;
  } else {
    state_ = &passing_.emplace();
  }
}

DrawingLease::~DrawingLease() {
  if (holdsModules_) moduleState().drawingInUse.clear(std::memory_order_release);
}

}  // namespace brisel
