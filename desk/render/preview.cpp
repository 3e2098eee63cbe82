#include "desk/render/preview.h"

#include <algorithm>

namespace desk {

Preview::Preview(SceneDocument& document, QObject* parent) : QObject(parent), document_(document) {
  connect(&document_, &SceneDocument::changed, this, &Preview::follow);
  connect(&renderer_, &FrameRenderer::rendered, this, &Preview::show);
  ask();
}

void Preview::setFrame(int frame) {
  frame = std::clamp(frame, 0, document_.state()->plan.frames - 1);
  if (frame == frame_) return;
  frame_ = frame;
  ask();
  emit frameChanged(frame_);
}

void Preview::setLayer(int layer) {
  layer = std::clamp(layer, 0, document_.layerCount() - 1);
  if (layer == layer_) return;
  layer_ = layer;
  emit layerChanged(layer_);
}

void Preview::setReduction(int reduction) {
  if (reduction == reduction_) return;
  reduction_ = reduction;
  ask();
  emit viewChanged();
}

void Preview::setBackdrop(Backdrop backdrop) {
  if (backdrop == backdrop_) return;
  backdrop_ = backdrop;
  ask();
  emit viewChanged();
}

void Preview::compare(const SharedState& state) {
  if (state == compared_) return;
  compared_ = state;
  ask();
  emit viewChanged();
}

void Preview::follow() {
  setLayer(layer_);
  setFrame(frame_);
  ask();
}

void Preview::ask() {
  asked_ = renderer_.request({.state = compared_ ? compared_ : document_.state(),
                              .frame = frame_,
                              .reduction = reduction_,
                              .backdrop = backdrop_});
}

void Preview::show(const Picture& picture) {
  picture_ = picture;
  emit pictureChanged();
}

}  // namespace desk
