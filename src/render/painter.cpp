#include "render/painter.h"

#include <cstddef>
#include <functional>

namespace brisel {

Painter::Painter(const PaintOptions& options)
    : kernels_(options.kernels),
      workers_(options.threads),
      grids_(static_cast<std::size_t>(workers_.threadCount())) {}

void Painter::paint(const PaintTarget& target, const std::function<void(SpriteList&)>& compose) {
  bool isFirst = true;
  const auto paintFullList = [&] {
    paintPortion(target, {.isFirst = isFirst, .isLast = false});
    isFirst = false;
  };
  // By reference: a copy takes memory, and without it nothing would be composed.
  sprites_.begin({target.output.width, target.output.height},
                 rowsPerBand(target.output, threadCount()), std::ref(paintFullList));
  compose(sprites_);
  sprites_.throwFailure();
  paintPortion(target, {.isFirst = isFirst, .isLast = true});
}

void Painter::paintPortion(const PaintTarget& target, Portion portion) {
  workers_.run(sprites_.partCount(), [&](int part, int) { sprites_.buildRaysIn(part); });
  const std::vector<std::int32_t> bands = sprites_.bandsDearestFirst();
  workers_.run(sprites_.bandCount(), [&](int index, int thread) {
    paintBand(target, portion, sprites_, bands[static_cast<std::size_t>(index)], *kernels_,
              grids_[static_cast<std::size_t>(thread)]);
  });
}

}  // namespace brisel
