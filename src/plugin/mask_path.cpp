#include "plugin/mask_path.h"

#include <new>
#include <utility>

#include "plugin/sdk/codes.h"

namespace brisel {
namespace {

PointF toPoint(double x, double y) {
  return {static_cast<float>(x), static_cast<float>(y)};
}

}  // namespace

MaskPath::MaskPath(const PF_InData& in, std::int32_t pathMaskId)
    : in_(in), pathId_(static_cast<PF_PathID>(pathMaskId)) {
  if (pathId_ == 0) return;
  query_.emplace(in, kPFPathQuerySuite, kPFPathQuerySuiteVersion1);
  data_.emplace(in, kPFPathDataSuite, kPFPathDataSuiteVersion1);
  if (query_->get() == nullptr || data_->get() == nullptr) return;
  try {
    prepareMaskOutline();
  } catch (const std::bad_alloc&) {
    outline_ = {};  // too long to hold: no mask path
    isComplete_ = false;
  }
}

MaskPath::~MaskPath() {
  releaseMaskOutline();
}

void MaskPath::prepareMaskOutline() {
  const PF_PathQuerySuite1& query = *query_->get();
  const PF_PathDataSuite1& data = *data_->get();
  if (query.PF_CheckoutPath(in_.effect_ref, pathId_, in_.current_time, in_.time_step,
                            in_.time_scale, &path_) != PF_Err_NONE) {
    path_ = nullptr;
  }
  if (path_ == nullptr) return;

  PF_Boolean open = 0;
  PF_Boolean inverted = 0;
  A_long segments = 0;
  if (data.PF_PathIsOpen(in_.effect_ref, path_, &open) != PF_Err_NONE ||
      data.PF_PathNumSegments(in_.effect_ref, path_, &segments) != PF_Err_NONE ||
      data.PF_PathIsInverted(in_.effect_ref, pathId_, &inverted) != PF_Err_NONE) {
    return;
  }
  auto vertices = readVertices(std::int64_t{segments} + (open != 0 ? 1 : 0));
  if (vertices) outline_ = buildMaskOutline(std::move(*vertices), open != 0, inverted != 0);
}

std::optional<std::vector<MaskVertex>> MaskPath::readVertices(std::int64_t count) const {
  std::vector<MaskVertex> vertices;
  for (std::int64_t i = 0; i < count; ++i) {
    PF_PathVertex v{};
    if (data_->get()->PF_PathVertexInfo(in_.effect_ref, path_, static_cast<A_long>(i), &v) !=
        PF_Err_NONE)
      return {};
    vertices.push_back(
        {toPoint(v.x, v.y), toPoint(v.tan_in_x, v.tan_in_y), toPoint(v.tan_out_x, v.tan_out_y)});
  }
  return vertices;
}

void MaskPath::releaseMaskOutline() {
  if (path_ == nullptr) return;
  query_->get()->PF_CheckinPath(in_.effect_ref, pathId_, 0, path_);
}

}  // namespace brisel
