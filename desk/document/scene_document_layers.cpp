#include "desk/document/scene_document.h"

#include "desk/document/key_list.h"
#include "desk/document/scene_document_parsed.h"
#include "desk/document/value_text.h"

namespace desk {

LayerChoice SceneDocument::ownerOfMask(int layer) const {
  const LayerChoice own = tableOf(layer);
  if (!own || parsed_->text.hasMask(own)) return own;
  return parsed_->text.hasMask(std::nullopt) ? std::nullopt : own;
}

void SceneDocument::setMask(int layer, const std::optional<scene::Mask>& mask,
                            const QString& label) {
  edit(label, [&](const SceneText& text) {
    return text.withMask(ownerOfMask(layer), mask, this->mask(layer));
  });
}

void SceneDocument::setMaskShape(int layer, const std::optional<scene::MaskShape>& shape,
                                 double frame) {
  if (!shape) return setMask(layer, std::nullopt, tr("Remove Mask"));
  scene::Mask mask = this->mask(layer).value_or(scene::Mask{});
  const bool isAlike = !mask.keys.empty() &&
                       mask.keys.front().value.vertices.size() == shape->vertices.size() &&
                       mask.keys.front().value.closed == shape->closed;
  if (mask.keys.size() > 1 && isAlike) {
    setKey(mask.keys, frame, *shape);
  } else {
    mask.keys = {scene::Mask::Key({.time = 0}, *shape)};
  }
  setMask(layer, mask, tr("Change Mask"));
}

void SceneDocument::setMaskInverted(int layer, bool inverted) {
  std::optional<scene::Mask> mask = this->mask(layer);
  if (!mask) return;
  mask->inverted = inverted;
  setMask(layer, mask, tr("Invert Mask"));
}

void SceneDocument::addLayer(const QString& name) {
  edit(tr("Add Layer"),
       [&](const SceneText& text) { return text.withNewLayer(name.toStdString()); });
}

void SceneDocument::removeLayer(int layer) {
  if (layerCount() < 2) return;
  edit(tr("Remove Layer"),
       [&](const SceneText& text) { return text.withoutLayer(static_cast<std::size_t>(layer)); });
}

void SceneDocument::renameLayer(int layer, const QString& name) {
  if (!hasLayerTables()) return;
  edit(tr("Rename Layer"), [&](const SceneText& text) {
    return text.withLayerName(static_cast<std::size_t>(layer), name.toStdString());
  });
}

void SceneDocument::moveLayer(int from, int to) {
  edit(tr("Move Layer"), [&](const SceneText& text) {
    return text.withLayerMoved(static_cast<std::size_t>(from), static_cast<std::size_t>(to));
  });
}

void SceneDocument::setSceneKey(const QString& label, const char* key, const QString& value) {
  edit(label, [&](const SceneText& text) { return text.withSceneKey(key, value.toStdString()); });
}

void SceneDocument::setSize(int width, int height) {
  setSceneKey(tr("Change Size"), "size", QStringLiteral("[%1, %2]").arg(width).arg(height));
}

void SceneDocument::setFrames(int frames) {
  setSceneKey(tr("Change Length"), "frames", QString::number(frames));
}

void SceneDocument::setPreroll(int steps) {
  setSceneKey(tr("Change Pre-roll"), "preroll", QString::number(steps));
}

void SceneDocument::setRate(const QString& framesPerSecond) {
  bool isWhole = false;
  framesPerSecond.toInt(&isWhole);
  setSceneKey(tr("Change Frame Rate"), "fps",
              isWhole ? framesPerSecond
                      : QString::fromStdString(tomlString(framesPerSecond.toStdString())));
}

void SceneDocument::setDepth(int bits) {
  setSceneKey(tr("Change Depth"), "depth", QString::number(bits));
}

}  // namespace desk
