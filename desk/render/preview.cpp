#include "desk/render/preview.h"

#include <algorithm>

namespace desk {

Preview::Preview(SceneDocument& document, QObject* parent) : QObject(parent), document_(document) {
  connect(&document_, &SceneDocument::changed, this, &Preview::follow);
  connect(&document_, &SceneDocument::replaced, this, &Preview::startAnew);
  connect(&renderer_, &FrameRenderer::rendered, this, &Preview::show);
  ask();
}

void Preview::setFrame(int frame) {
  frame = std::clamp(frame, 0, document_.state()->plan.frames - 1);
  if (frame == frame_ && frame == askedFrame_) return;
  const bool isOther = frame != frame_;
  frame_ = frame;
  askedFrame_ = frame;
  ask();
  if (isOther) emit frameChanged(frame_);
}

void Preview::playTo(int frame) {
  frame = std::clamp(frame, 0, document_.state()->plan.frames - 1);
  if (frame == askedFrame_) return;
  askedFrame_ = frame;
  ask();
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
  const int last = document_.state()->plan.frames - 1;
  if (std::max(frame_, askedFrame_) > last) setFrame(last);
  ask();
}

void Preview::ask() {
  asked_ = renderer_.request({.state = compared_ ? compared_ : document_.state(),
                              .frame = askedFrame_,
                              .reduction = reduction_,
                              .backdrop = backdrop_});
  emit asked();
}

void Preview::show(const Picture& picture) {
  if (picture.request < firstOfScene_) return;
  picture_ = picture;
  if (picture.frame == askedFrame_ && frame_ != askedFrame_) {
    frame_ = askedFrame_;
    emit frameChanged(frame_);
  }
  emit pictureChanged();
}

/// The picture is of another scene, as may be one that is still being made.
void Preview::startAnew() {
  setLayer(0);
  setFrame(0);
  firstOfScene_ = asked_;
  picture_ = {};
  emit pictureChanged();
}

}  // namespace desk
