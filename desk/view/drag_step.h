// Drags on the picture as steps of the document.
#pragma once

#include "desk/document/scene_document.h"
#include "desk/view/snap_guides.h"

namespace desk {

/// All that an item is dragged by from its press to its release is one step, or none where it is
/// canceled.
template <class Item>
void makeDragsSteps(Item* item, SceneDocument& document, SnapGuides& guides) {
  QObject::connect(item, &Item::grabbed, &document, &SceneDocument::beginGesture);
  QObject::connect(item, &Item::released, &document, &SceneDocument::endGesture);
  QObject::connect(item, &Item::canceled, &document, &SceneDocument::cancelGesture);
  for (const auto ends : {&Item::released, &Item::canceled}) {
    QObject::connect(item, ends, item, [&guides] { guides.clear(); });
  }
}

}  // namespace desk
