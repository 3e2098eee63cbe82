#include "hostkit/masks.h"

#include <utility>

#include "plugin/sdk/codes.h"

namespace hostkit {

namespace {

constexpr PF_Err kOrderedFailure = PF_Err_OUT_OF_MEMORY;

}  // namespace

PF_PathID MaskTable::add(ShapeAt shapeAt, bool inverted) {
  masks_.push_back({std::move(shapeAt), inverted});
  return static_cast<PF_PathID>(masks_.size());
}

void MaskTable::setDownsample(PF_RationalScale x, PF_RationalScale y) {
  scaleX_ = double(x.num) / x.den;
  scaleY_ = double(y.num) / y.den;
}

PF_Err MaskTable::numPaths(A_long* count) {
  if (failsNow()) return kOrderedFailure;
  if (count == nullptr) return PF_Err_BAD_CALLBACK_PARAM;
  *count = static_cast<A_long>(masks_.size());
  return PF_Err_NONE;
}

PF_Err MaskTable::pathInfo(A_long index, PF_PathID* id) {
  if (failsNow()) return kOrderedFailure;
  if (id == nullptr) return PF_Err_BAD_CALLBACK_PARAM;
  if (index < 0 || index >= static_cast<A_long>(masks_.size())) return PF_Err_INVALID_INDEX;
  *id = static_cast<PF_PathID>(index) + 1;
  return PF_Err_NONE;
}

PF_Err MaskTable::checkoutPath(PF_PathID id, const MaskTime& time, PF_PathOutlinePtr* path) {
  if (failsNow()) return kOrderedFailure;
  if (path == nullptr) return PF_Err_BAD_CALLBACK_PARAM;
  *path = nullptr;
  const Mask* mask = findMask(id);
  if (mask == nullptr) return PF_Err_NONE;  // a mask that the user has deleted
  // A number as a pointer: the module cannot read through it, and no number is used twice.
  *path = reinterpret_cast<PF_PathOutlinePtr>(++lastOutline_);
  MaskShape shape = mask->shapeAt(time);
  for (PF_PathVertex& vertex : shape.vertices) {
    for (double* x : {&vertex.x, &vertex.tan_in_x, &vertex.tan_out_x}) *x *= scaleX_;
    for (double* y : {&vertex.y, &vertex.tan_in_y, &vertex.tan_out_y}) *y *= scaleY_;
  }
  outlines_.emplace(*path, Outline{id, std::move(shape)});
  return PF_Err_NONE;
}

PF_Err MaskTable::checkinPath(PF_PathID id, PF_Boolean changed, PF_PathOutlinePtr path) {
  const bool fails = failsNow();
  const auto found = outlines_.find(path);
  if (found == outlines_.end()) {
    ++wrongCheckins_;
    return PF_Err_BAD_CALLBACK_PARAM;
  }
  if (found->second.id != id || changed != 0) ++wrongCheckins_;
  outlines_.erase(found);
  return fails ? kOrderedFailure : PF_Err_NONE;
}

PF_Err MaskTable::pathIsOpen(PF_PathOutlinePtr path, PF_Boolean* open) {
  if (failsNow()) return kOrderedFailure;
  const MaskShape* shape = findShape(path);
  if (shape == nullptr || open == nullptr) return PF_Err_BAD_CALLBACK_PARAM;
  *open = shape->closed ? 0 : 1;
  return PF_Err_NONE;
}

PF_Err MaskTable::pathNumSegments(PF_PathOutlinePtr path, A_long* count) {
  if (failsNow()) return kOrderedFailure;
  const MaskShape* shape = findShape(path);
  if (shape == nullptr || count == nullptr) return PF_Err_BAD_CALLBACK_PARAM;
  *count = static_cast<A_long>(shape->vertices.size());
  if (!shape->closed && *count > 0) --*count;
  return PF_Err_NONE;
}

PF_Err MaskTable::pathVertexInfo(PF_PathOutlinePtr path, A_long index, PF_PathVertex* vertex) {
  if (failsNow()) return kOrderedFailure;
  const MaskShape* shape = findShape(path);
  if (shape == nullptr || vertex == nullptr) return PF_Err_BAD_CALLBACK_PARAM;
  if (index < 0 || index >= static_cast<A_long>(shape->vertices.size())) {
    return PF_Err_INVALID_INDEX;
  }
  *vertex = shape->vertices[static_cast<std::size_t>(index)];
  return PF_Err_NONE;
}

PF_Err MaskTable::pathIsInverted(PF_PathID id, PF_Boolean* inverted) {
  if (failsNow()) return kOrderedFailure;
  const Mask* mask = findMask(id);
  if (mask == nullptr || inverted == nullptr) return PF_Err_BAD_CALLBACK_PARAM;
  *inverted = mask->inverted ? 1 : 0;
  return PF_Err_NONE;
}

bool MaskTable::balanced() const {
  return outlines_.empty() && wrongCheckins_ == 0 && staleOutlines_ == 0 && unknownOutlines_ == 0;
}

bool MaskTable::failsNow() {
  ++calls_;
  return failedCall_ > 0 && --failedCall_ == 0;
}

const MaskTable::Mask* MaskTable::findMask(PF_PathID id) const {
  return id >= 1 && id <= masks_.size() ? &masks_[id - 1] : nullptr;
}

const MaskShape* MaskTable::findShape(PF_PathOutlinePtr path) {
  const auto found = outlines_.find(path);
  if (found != outlines_.end()) return &found->second.shape;
  const auto number = reinterpret_cast<std::uintptr_t>(path);
  ++(number >= 1 && number <= lastOutline_ ? staleOutlines_ : unknownOutlines_);
  return nullptr;
}

}  // namespace hostkit
