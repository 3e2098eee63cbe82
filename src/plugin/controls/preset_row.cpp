#include "plugin/controls/preset_row.h"

#include <algorithm>

#include "plugin/controls/preset_list.h"
#include "plugin/controls/resource_image.h"
#include "plugin/controls/thumbnail_strip.h"

namespace brisel {
namespace {

constexpr BoxColors kBackground{{1.0f, 0.5f, 0.0f, 1.0f}, {1.0f, 0.0f, 0.0f, 1.0f}};

constexpr int kArrowPictureWidth = 16;
constexpr int kArrowPictureHeight = 50;

struct ArrowLook {
  BoxColors colors;
  int leftPicture;
  int rightPicture;
  float opacity;
};

constexpr ArrowLook kDisabledArrow{
    {{1.0f, 0.7529412f, 0.1254902f, 1.0f}, {1.0f, 1.0f, 0.5f, 0.5f}}, 563, 553, 0.5f};
constexpr ArrowLook kNormalArrow{
    {{1.0f, 1.0f, 0.25f, 1.0f}, {1.0f, 1.0f, 0.5f, 1.0f}}, 550, 561, 1.0f};
constexpr ArrowLook kPressedArrow{
    {{0.0f, 0.8235294f, 1.0f, 1.0f}, {0.25f, 0.1f, 0.5f, 1.0f}}, 551, 560, 1.0f};

const ArrowLook& arrowLook(bool disabled, bool hot) {
  if (disabled) return kDisabledArrow;
  return hot ? kPressedArrow : kNormalArrow;
}

void drawArrow(Canvas& canvas, const PresetList& list, std::int32_t left, const ArrowLook& look,
               int picture) {
  const auto x = static_cast<float>(left);
  const auto y = static_cast<float>(list.frameTop + kInset);
  const auto height = static_cast<float>(list.frameBottom - list.frameTop - 2 * kInset);
  canvas.drawBox({x, y, kArrowWidth, height}, look.colors);
  // Centered on the box as drawn, which is a pixel narrower and lower than asked for.
  const auto pictureX = static_cast<int>(x + (kArrowWidth - 1.0f - kArrowPictureWidth) / 2.0f);
  const auto pictureY = static_cast<int>(y + (height - 1.0f - kArrowPictureHeight) / 2.0f);
  drawResource(canvas, {picture, kArrowPictureWidth, kArrowPictureHeight}, pictureX, pictureY,
               look.opacity);
}

void drawRow(Canvas& canvas, const PresetList& list) {
  const ArrowLook& leftLook =
      arrowLook(list.firstVisible < 1 && list.pixelOffset == 0, list.leftArrowHot);
  drawArrow(canvas, list, list.leftArrowLeft, leftLook, leftLook.leftPicture);
  const ArrowLook& rightLook =
      arrowLook(list.hiddenAfter < 0 || list.pixelOffset != 0, list.rightArrowHot);
  drawArrow(canvas, list, list.rightArrowLeft, rightLook, rightLook.rightPicture);

  const ThumbnailStrip strip = composeStrip(list);
  if (strip.pixels == nullptr) return;
  canvas.drawPicture({{strip.pixels.get(), strip.bytes}, list.stripWidth, kStripHeight},
                     list.stripLeft, list.stripTop, 1.0f);
}

bool overStrip(const PresetList& list, std::int32_t x) {
  return x >= list.stripLeft && x <= list.stripLeft + list.stripWidth;
}

/// Counted from the first visible cell.
std::int32_t cellAt(const PresetList& list, std::int32_t x) {
  return (x - list.stripLeft - list.pixelOffset) / kCellWidth;
}

bool withinFrame(const PresetList& list, const ControlPoint& point, std::int32_t top) {
  return point.y >= top && point.y <= list.frameBottom && point.x >= list.frameLeft &&
         point.x <= list.frameRight;
}

void moveFrame(PresetList& list, const ControlRect& frame) {
  list.frameRight += frame.left - list.frameLeft;
  list.frameBottom += frame.top - list.frameTop;
  list.frameLeft = frame.left;
  list.frameTop = frame.top;
}

/// Whether an arrow spanning left .. right was clicked.
bool hitsArrow(std::int32_t x, std::int32_t left, std::int32_t right) {
  return x >= left && x <= right;
}

/// The entry under a click on the strip, null when there is none. A click on an entry that is cut
/// off at one end brings it into view.
const PresetCell* hitEntry(PresetList& list, std::int32_t x) {
  const std::int32_t cell = cellAt(list, x);
  const std::int32_t entry = cell + list.firstVisible;
  if (entry < 0 || entry >= list.count()) return nullptr;
  if (entry == list.firstVisible && list.pixelOffset < 0 && list.firstVisible > 0) {
    list.pixelOffset = 0;
  }
  if (list.pixelOffset == 0 && cell >= list.stripWidth / kCellWidth) ++list.firstVisible;
  return &list.items[static_cast<std::size_t>(entry)];
}

}  // namespace

PF_Err drawPresetRow(ControlEvent& event, PresetList& list) {
  const ControlRect frame = updateRect(event);
  setFrame(frame, list);
  PF_Err error = PF_Err_NONE;
  bool drawn = false;
  {
    Canvas canvas(event, error);
    drawn = canvas.drawable();
    if (drawn) {
      layOutRow(list);
      normalizeScroll(list);
      canvas.drawBox({static_cast<float>(frame.left), static_cast<float>(frame.top),
                      static_cast<float>(frame.right - frame.left),
                      static_cast<float>(frame.bottom - frame.top)},
                     kBackground);
      drawRow(canvas, list);
    }
  }
  if (drawn && error == PF_Err_NONE) markHandled(event);
  return error;
}

PF_Err hoverPresetRow(ControlEvent& event, PresetList& list) {
  const PF_EffectWindowInfo& window = event.extra.effect_win;
  if (window.param_title_frame.top == window.current_frame.top) return PF_Err_NONE;
  moveFrame(list, currentFrame(event));
  list.leftArrowHot = list.rightArrowHot = false;
  const ControlPoint point = hoverPoint(event);
  list.mouseInside = withinFrame(list, point, list.frameTop + kInset);
  list.hotCell = PresetList::kNoCell;
  if (list.mouseInside && overStrip(list, point.x)) {
    list.hotCell = static_cast<std::uint8_t>(
        std::min<std::int32_t>(cellAt(list, point.x), PresetList::kNoCell));
  }
  return requestRedraw(event);
}

PF_Err clickPresetRow(ControlEvent& event, PresetList& list, FrameSize& frameSize) {
  const ControlPoint point = clickPoint(event);
  list.mouseInside = withinFrame(list, point, list.frameTop);
  if (list.mouseInside) {
    list.leftArrowHot = hitsArrow(point.x, list.leftArrowLeft, list.leftArrowRight);
    if (list.leftArrowHot) --list.firstVisible;
    list.rightArrowHot = hitsArrow(point.x, list.rightArrowLeft, list.rightArrowRight);
    if (list.rightArrowHot) ++list.firstVisible;
    if (overStrip(list, point.x)) {
      if (const PresetCell* preset = hitEntry(list, point.x)) {
        ApplyParameterFile(preset->path.c_str(), event.paramCount, event.in, event.out,
                           event.params, frameSize);
        markHandled(event);
      }
    }
  }
  return requestRedraw(event);
}

}  // namespace brisel
