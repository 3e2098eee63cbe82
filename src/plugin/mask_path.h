// Fetches the chosen mask's outline from the host, and gives it back.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "engine/mask_outline.h"
#include "plugin/sdk/suite_handle.h"

namespace brisel {

/// The mask of one render: holds the host's suites and path from construction to destruction.
/// When the host refuses any of it, there is no outline.
class MaskPath {
 public:
  /// `pathMaskId` 0 is no mask.
  MaskPath(const PF_InData& in, std::int32_t pathMaskId);
  ~MaskPath();
  MaskPath(const MaskPath&) = delete;
  MaskPath& operator=(const MaskPath&) = delete;

  /// False when the outline is left out for want of memory.
  bool isComplete() const { return isComplete_; }

  /// The outline at the render's time; null without one.
  const MaskOutline* outline() const { return outline_.vertices.empty() ? nullptr : &outline_; }

 private:
  void prepareMaskOutline();
  std::optional<std::vector<MaskVertex>> readVertices(std::int64_t count) const;
  void releaseMaskOutline();

  const PF_InData& in_;
  PF_PathID pathId_;
  std::optional<SuiteHandle<PF_PathQuerySuite1>> query_;
  std::optional<SuiteHandle<PF_PathDataSuite1>> data_;
  PF_PathOutlinePtr path_ = nullptr;
  MaskOutline outline_;
  bool isComplete_ = true;
};

}  // namespace brisel
