// What the timeline does with keys: each of it is one step of the document.
#include <algorithm>
#include <cmath>

#include "desk/timeline/key_view.h"

namespace desk {

void KeyView::setKeysOfMask(const Row& row, const std::vector<ParamKey>& keys,
                            const QString& label) {
  SceneDocument& document = preview_.document();
  std::optional<scene::Mask> mask = document.mask(preview_.layer());
  if (!mask) return;
  mask->keys.clear();
  for (const ParamKey& key : keys) {
    mask->keys.emplace_back(key, row.shapes[static_cast<std::size_t>(key.value[0])]);
  }
  document.setMask(preview_.layer(), mask, label);
}

/// `edit` makes the keys of each row that has some selected, of the row and their times, for one
/// step of the document.
template <class Edit>
void KeyView::editSelected(const std::vector<Row>& rows,
                           const std::map<brisel::ParamIndex, KeyTimes>& selected,
                           const QString& label, const Edit& edit) {
  SceneDocument& document = preview_.document();
  std::vector<std::pair<brisel::ParamIndex, std::vector<ParamKey>>> edited;
  document.beginGesture();
  for (const Row& row : rows) {
    const auto found = selected.find(row.parameter);
    if (found == selected.end()) continue;
    std::vector<ParamKey> keys = edit(row, found->second);
    if (row.parameter != brisel::kPath) {
      edited.emplace_back(row.parameter, std::move(keys));
    } else {
      setKeysOfMask(row, keys, label);
    }
  }
  document.setKeys(preview_.layer(), edited, label);
  document.endGesture();
}

// Edits make the rows anew, so they are given copies.
void KeyView::removeSelected() {
  SceneDocument& document = preview_.document();
  const QString label = "Remove Keys";
  std::map<brisel::ParamIndex, double> lastOnes;  // which leave their values as constants
  document.beginGesture();
  editSelected(std::vector(rows_), std::map(selected_), label,
               [&](const Row& row, const KeyTimes& times) {
                 std::vector<ParamKey> left = keysWithout(row.keys, times);
                 if (!left.empty()) return left;
                 if (row.parameter != brisel::kPath) lastOnes[row.parameter] = row.keys.back().time;
                 return std::vector{row.keys.back()};
               });
  for (const auto& [parameter, time] : lastOnes) {
    document.removeKey(preview_.layer(), parameter, time);
  }
  document.endGesture();
}

void KeyView::easeSelected(const scene::Ease& ease) {
  editSelected(
      std::vector(rows_), std::map(selected_), "Ease Keys",
      [&](const Row& row, const KeyTimes& times) { return keysEased(row.keys, times, ease); });
}

void KeyView::moveSelected(int frames) {
  rowsBefore_ = rows_;
  selectedBefore_ = selected_;
  dragKeys(frames, false);
}

void KeyView::dragKeys(int frames, bool copies) {
  std::map<brisel::ParamIndex, KeyTimes> moved;
  const int last = preview_.document().state()->plan.frames - 1;
  // All rows go as far as the one that can go least.
  for (const auto& [parameter, times] : selectedBefore_) {
    frames = std::max(frames, -static_cast<int>(std::floor(*times.begin())));
    frames = std::min(frames, std::max(0, last - static_cast<int>(std::ceil(*times.rbegin()))));
  }
  editSelected(rowsBefore_, selectedBefore_, copies ? "Copy Keys" : "Move Keys",
               [&](const Row& row, const KeyTimes& times) {
                 MovedKeys result = movedKeys(row.keys, times, frames, copies);
                 moved[row.parameter] = std::move(result.chosen);
                 return std::move(result.keys);
               });
  select(std::move(moved));
}

void KeyView::copySelected() {
  copied_.clear();
  for (const Row& row : rows_) {
    const auto found = selected_.find(row.parameter);
    if (found == selected_.end() || row.parameter == brisel::kPath) continue;
    for (const ParamKey& key : row.keys) {
      if (found->second.contains(key.time)) copied_[row.parameter].push_back(key);
    }
  }
}

void KeyView::paste() {
  if (copied_.empty()) return;
  double first = copied_.begin()->second.front().time;
  for (const auto& [parameter, keys] : copied_) first = std::min(first, keys.front().time);
  SceneDocument& document = preview_.document();
  const int layer = preview_.layer();
  std::map<brisel::ParamIndex, KeyTimes> pasted;
  std::vector<std::pair<brisel::ParamIndex, std::vector<ParamKey>>> edited;
  for (auto [parameter, keys] : copied_) {
    for (ParamKey& key : keys) {
      key.time += preview_.frame() - first;
      pasted[parameter].insert(key.time);
    }
    edited.emplace_back(parameter, keysWith(document.keys(layer, parameter), keys));
  }
  document.setKeys(layer, edited, "Paste Keys");
  select(std::move(pasted));
}

void KeyView::addKey() {
  if (rows_.empty()) return;
  const Row row = rows_[static_cast<std::size_t>(currentRow_)];
  SceneDocument& document = preview_.document();
  const int layer = preview_.layer();
  if (row.parameter != brisel::kPath) {
    return document.addKey(layer, row.parameter, preview_.frame());
  }
  document.setMaskShape(layer, scene::shapeAt(*document.mask(layer), preview_.frame()),
                        preview_.frame());
}

void KeyView::toPreviousKey() {
  const std::vector<double> times = allTimes();
  const auto found = std::ranges::lower_bound(times, preview_.frame());
  if (found != times.begin()) preview_.setFrame(static_cast<int>(std::floor(*std::prev(found))));
}

void KeyView::toNextKey() {
  const std::vector<double> times = allTimes();
  const auto found = std::ranges::upper_bound(times, preview_.frame());
  if (found != times.end()) preview_.setFrame(static_cast<int>(std::ceil(*found)));
}

}  // namespace desk
