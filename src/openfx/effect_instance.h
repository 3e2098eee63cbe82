// One instance of the effect in a host's project.
#pragma once

#include <atomic>
#include <cstdint>
#include <list>
#include <optional>
#include <semaphore>
#include <string>
#include <vector>

#include "look/look.h"
#include "look/star_layers.h"
#include "openfx/composer.h"
#include "openfx/host_values.h"
#include "openfx/value_record.h"
#include "render/painter.h"

namespace brisel::openfx {

/// Each function answers the action of its name. Frames may be asked for in any order and by any
/// threads, which wait for each other; other actions may come meanwhile, or from within a call to
/// the host. Throw std::bad_alloc and std::runtime_error.
class EffectInstance {
 public:
  EffectInstance(const Host& host, OfxImageEffectHandle handle);

  /// Arguments of an action upon the instance.
  Properties properties(OfxPropertySetHandle set) const { return {host_, set}; }

  OfxStatus render(const Properties& arguments);
  OfxStatus getClipPreferences(const Properties& preferences) const;
  OfxStatus getRegionOfDefinition(const Properties& arguments, const Properties& regions) const;
  OfxStatus getRegionsOfInterest(const Properties& arguments, const Properties& regions) const;
  OfxStatus instanceChanged(const Properties& change);

  /// Frees what can be made again, at the end of a frame that is being rendered.
  void purge();

 private:
  struct Aborted {};  // thrown when the host wants the frame no more

  /// What is known of frames of one size, as hosts show now the whole picture and now a reduced
  /// one.
  struct Scale {
    FrameSize frame, full;
    Look look;
    StarLayers stars{};
    ValueRecord record{};
  };

  class Turn;
  OfxStatus renderInTurn(const Properties& arguments);
  void purgeInTurn();

  bool hasSource() const;
  std::optional<OfxRectD> regionOfSource(OfxTime time) const;
  void findScale(RenderScale renderScale, FrameSize frame);
  Scale& scale() { return scales_.front(); }
  std::int32_t frameAt(OfxTime time) const;
  void noticeChanges(std::int32_t frame);
  void draw(Composer& composer, std::int32_t frame);
  void drawLayer(Composer& composer, std::size_t layer, std::int32_t frame);
  void stopIfAborted() const;
  Values valuesAt(std::size_t layer, std::int32_t frame);
  void forgetStars();
  void complain(const std::string& reason);
  OfxStatus fail(const std::string& reason);
  void applyPreset(const EffectParameter& row) const;
  void updateGraying();

  const Host host_;
  const OfxImageEffectHandle handle_;
  const HostValues values_;
  OfxImageClipHandle source_ = nullptr;  // null in the context without one
  std::vector<std::int8_t> enabled_;     // by index as the host was told; -1: not yet
  std::atomic<bool> isStale_{false};     // the stars are others than those that are known
  std::atomic<bool> isToBePurged_{false};

  std::binary_semaphore turn_{1};         // of renders, for all below
  OfxImageClipHandle output_ = nullptr;   // once it is found
  std::optional<LookSource> lookSource_;  // of the scales
  std::int32_t startFrame_ = 0;
  std::list<Scale> scales_;  // the last one first
  std::optional<Painter> painter_;
  FrameBuffers buffers_;
  std::string complaint_;  // that the host shows
};

}  // namespace brisel::openfx
