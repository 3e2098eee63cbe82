// One instance of the filter: what a host set, and the frames that it asks for.
#pragma once

#include <cstddef>
#include <cstdint>
#include <mutex>
#include <optional>
#include <string_view>
#include <vector>

#include "core/geometry.h"
#include "frei0r/choice_record.h"
#include "frei0r/filter_settings.h"
#include "frei0r/frame_clock.h"
#include "look/look.h"
#include "look/star_layers.h"
#include "render/painter.h"

namespace brisel {

/// May be used by any threads at once, and has them wait for each other: some hosts cut a frame
/// into slices and hand them to one instance. It paints on the caller's thread, as hosts already
/// give each processor a frame or a filter of its own.
class Filter {
 public:
  /// Of frames of that size, for a host whose times are in that unit. Takes memory for frames with
  /// the first one only, as hosts make filters just to ask them for their defaults.
  Filter(FrameSize size, TimeUnit unit) : size_(size), clock_(unit) {}

  /// A setting of the parameter's kind. Throws std::bad_alloc.
  void set(std::size_t parameter, FilterSettings::Setting setting);

  /// The reference holds until the parameter is set again.
  const FilterSettings::Setting& get(std::size_t parameter);

  /// Draws the stars of a host's time on a clip. Both frames are of the filter's size, row by row
  /// without gaps, four bytes a pixel: red, green, blue, alpha, color not multiplied by it. They
  /// may be the same. Where that fails, the clip passes unchanged, and standard error gets the
  /// reason, once for as long as it is the same.
  void update(double time, const std::uint32_t* clip, std::uint32_t* output) noexcept;

 private:
  LookSource currentSource() const;
  void findLook();
  void draw(std::int32_t frame, const std::uint32_t* clip, std::uint32_t* output);
  void drawLayer(std::size_t layer, std::int32_t frame, const FrameViews& views);
  Values valuesAt(std::size_t layer, std::int32_t frame) const;
  MutableImageView viewOf(std::uint32_t* pixels) const;
  void complain(std::string_view reason, std::string_view consequence = "") noexcept;

  const FrameSize size_;
  std::mutex mutex_;  // for all below
  FilterSettings settings_;
  FrameClock clock_;
  std::optional<scene::FrameRate> toldRate_;
  std::optional<LookSource> lookSource_;  // of `look_`
  std::optional<Look> look_;
  StarLayers stars_;
  ChoiceRecord choices_;
  std::optional<Painter> painter_;
  std::vector<std::uint32_t> clip_;   // in the effect's order of channels
  std::vector<std::uint32_t> below_;  // what layers are drawn on, where there are several
  std::size_t lastComplaint_ = 0;     // its hash
};

}  // namespace brisel
