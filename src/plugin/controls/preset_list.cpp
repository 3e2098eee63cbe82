#include "plugin/controls/preset_list.h"

#include <utility>

namespace brisel {

PresetList readPresetList(const PresetFolders& folders, const char* section) {
  PresetList list;
  for (PresetFiles& files : ReadPresetIndex(folders, section)) {
    BmpImage thumbnail;
    if (!files.thumbnail.empty()) thumbnail = LoadBmpFile(files.thumbnail.c_str());
    list.items.push_back({std::move(files.parameters), std::move(thumbnail)});
  }
  return list;
}

void setFrame(const ControlRect& frame, PresetList& list) {
  list.frameLeft = frame.left;
  list.frameTop = frame.top;
  list.frameRight = frame.right;
  list.frameBottom = frame.bottom;
}

void layOutRow(PresetList& list) {
  list.leftArrowLeft = list.frameLeft + kInset;
  list.leftArrowRight = list.leftArrowLeft + kArrowWidth;
  list.rightArrowRight = list.frameRight - kInset;
  list.rightArrowLeft = list.rightArrowRight - kArrowWidth;
  list.stripWidth = list.rightArrowLeft - list.leftArrowRight - 2 * kInset;
  list.stripLeft = list.leftArrowRight + kInset;
  list.stripTop = list.frameTop + kInset;
}

void normalizeScroll(PresetList& list) {
  constexpr std::int32_t kAlignedRight = 1;  // stands for the offset until it is known
  if (list.firstVisible < 0) {
    list.firstVisible = 0;
    list.pixelOffset = 0;
  }
  const std::int32_t visible = list.stripWidth / kCellWidth + 1;
  list.endVisible = list.firstVisible + visible;
  if (list.count() < list.endVisible) {
    list.firstVisible = list.count() - visible;
    list.endVisible = list.count();
    if (list.pixelOffset == 0) list.pixelOffset = kAlignedRight;
  } else if (list.endVisible < list.count() && list.pixelOffset != 0) {
    list.pixelOffset = 0;
    ++list.firstVisible;
    ++list.endVisible;
  }
  if (list.pixelOffset != 0) list.pixelOffset = -(kCellWidth - list.stripWidth % kCellWidth);
  if (list.count() < visible) {
    list.pixelOffset = 0;
    list.firstVisible = 0;
    list.hiddenAfter = -1;
  } else {
    list.hiddenAfter = list.count() - list.endVisible;
  }
  if (!list.mouseInside) list.leftArrowHot = list.rightArrowHot = false;
}

}  // namespace brisel
