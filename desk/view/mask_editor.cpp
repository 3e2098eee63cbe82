#include "desk/view/mask_editor.h"

#include <QGraphicsScene>
#include <QGraphicsView>
#include <QMenu>
#include <algorithm>

#include "desk/view/drag_step.h"
#include "desk/view/mask_pen.h"

namespace desk {
namespace {

constexpr std::size_t kFewestVertices = 2;

}  // namespace

MaskEditor::MaskEditor(Preview& preview, SnapGuides& guides, QGraphicsRectItem* frame)
    : preview_(preview),
      guides_(guides),
      frame_(frame),
      outline_(new Outline(this)),
      arms_(new Outline(this)) {
  setFlag(ItemHasNoContents);
  outline_->setGrabbable();
  outline_->setToolTip("Mask. A double click makes a vertex.");
  SceneDocument& document = preview_.document();
  makeDragsSteps(outline_, document, guides_);
  connect(outline_, &Outline::dragged, this, [this](QPointF way) {
    if (!shape_) return;
    scene::MaskShape moved = *shape_;
    moveAll(moved, way);
    set(moved);
  });
  connect(outline_, &Outline::doubleClicked, this, &MaskEditor::addVertexAt);
  connect(outline_, &Outline::menuWanted, this, [this](QPoint at, QPointF place) {
    QMenu menu;
    menu.addAction("&Add vertex here", this, [this, place] { addVertexAt(place); });
    fillMenu(menu);
    menu.exec(at);
  });
  connect(&document, &SceneDocument::changed, this, &MaskEditor::follow);
  connect(&document, &SceneDocument::replaced, this, &MaskEditor::stopDrawing);
  connect(&preview_, &Preview::frameChanged, this, &MaskEditor::follow);
  connect(&preview_, &Preview::layerChanged, this, [this] {
    stopDrawing();
    follow();
  });
  follow();
}

// --- What it shows.

void MaskEditor::follow() {
  const bool had = hasMask();
  const auto mask = preview_.document().mask(preview_.layer());
  shape_.reset();
  if (mask) shape_ = scene::shapeAt(*mask, preview_.frame());
  outline_->setPath(shape_ ? pathOf(*shape_) : QPainterPath());
  placeHandles();
  if (had != hasMask()) emit maskChanged();
}

void MaskEditor::placeHandles() {
  const std::size_t count = shape_ ? shape_->vertices.size() : 0;
  while (handles_.size() < count) handles_.push_back(makeHandles(handles_.size()));
  QPainterPath arms;
  for (std::size_t i = 0; i < handles_.size(); ++i) {
    const auto& [vertex, tangents] = handles_[i];
    vertex->setVisible(i < count);
    const bool isBent = i < count && i == active_ && !isCorner(shape_->vertices[i]);
    for (Handle* tangent : tangents) tangent->setVisible(isBent);
    if (i >= count) continue;
    const scene::MaskShape::Vertex& shown = shape_->vertices[i];
    vertex->setPos(toPoint(shown.point));
    tangents[0]->setPos(toPoint(shown.in));
    tangents[1]->setPos(toPoint(shown.out));
    if (!isBent) continue;
    arms.moveTo(toPoint(shown.in));
    arms.lineTo(toPoint(shown.point));
    arms.lineTo(toPoint(shown.out));
  }
  arms_->setPath(arms);
}

MaskEditor::VertexHandles MaskEditor::makeHandles(std::size_t vertex) {
  const QString name = QString("Vertex %1").arg(vertex + 1);
  VertexHandles made{new Handle(Handle::Look::Vertex, name, this),
                     {new Handle(Handle::Look::Tangent, name + ", bend before", this),
                      new Handle(Handle::Look::Tangent, name + ", bend after", this)}};
  SceneDocument& document = preview_.document();
  makeDragsSteps(made.vertex, document, guides_);
  connect(made.vertex, &Handle::dragged, this,
          [=, this](const HandleDrag& drag) { dragVertex(vertex, drag); });
  connect(made.vertex, &Handle::focused, this, [=, this] { activate(vertex); });
  connect(made.vertex, &Handle::activated, this, [=, this] { toggleCorner(vertex); });
  connect(made.vertex, &Handle::addWanted, this, [=, this] { addVertexAfter(vertex); });
  connect(made.vertex, &Handle::removeWanted, this, [=, this] { removeVertex(vertex); });
  connect(made.vertex, &Handle::menuWanted, this, [=, this](QPoint at) {
    if (!hasVertex(vertex)) return;
    QMenu menu;
    menu.addAction(isCorner(shape_->vertices[vertex]) ? "&Bend" : "&Corner", this,
                   [=, this] { toggleCorner(vertex); });
    menu.addAction("&Add vertex after it", this, [=, this] { addVertexAfter(vertex); });
    menu.addAction("&Delete vertex", this, [=, this] { removeVertex(vertex); });
    fillMenu(menu);
    menu.exec(at);
  });
  for (const Side side : {Side::In, Side::Out}) {
    Handle* tangent = made.tangents[static_cast<std::size_t>(side)];
    makeDragsSteps(tangent, document, guides_);
    connect(tangent, &Handle::dragged, this,
            [=, this](const HandleDrag& drag) { dragTangent(vertex, side, drag); });
    connect(tangent, &Handle::removeWanted, this, [=, this] { straightenSide(vertex, side); });
  }
  return made;
}

std::vector<Handle*> MaskEditor::handles() const {
  std::vector<Handle*> all;
  for (const auto& [vertex, tangents] : handles_) {
    all.insert(all.end(), {vertex, tangents[0], tangents[1]});
  }
  return all;
}

void MaskEditor::activate(std::size_t vertex) {
  active_ = vertex;
  placeHandles();
}

void MaskEditor::fillMenu(QMenu& menu) {
  menu.addSeparator();
  menu.addAction("&Invert", this, &MaskEditor::invert);
  menu.addAction("&Remove mask", this, &MaskEditor::remove);
}

// --- Edits. A mask may have changed since what leads to them began: by undo during a drag, or on
// the disk while a menu is open.

bool MaskEditor::hasVertex(std::size_t vertex) const {
  return shape_ && vertex < shape_->vertices.size();
}

void MaskEditor::set(const scene::MaskShape& shape) {
  preview_.document().setMaskShape(preview_.layer(), shape, preview_.frame());
}

template <class Edit>
void MaskEditor::editAllKeys(const QString& label, const Edit& edit) {
  std::optional<scene::Mask> mask = preview_.document().mask(preview_.layer());
  if (!mask) return;
  for (scene::Mask::Key& key : mask->keys) key.value = edit(std::move(key.value));
  preview_.document().setMask(preview_.layer(), mask, label);
}

void MaskEditor::dragVertex(std::size_t vertex, const HandleDrag& drag) {
  if (!hasVertex(vertex)) return;
  scene::MaskShape shape = *shape_;
  if (drag.bends) {
    pull(shape, vertex, drag.to);
    return set(shape);
  }
  QPointF to = drag.to;
  if (drag.snaps) {
    std::vector<QPointF> others;
    for (std::size_t i = 0; i < shape.vertices.size(); ++i) {
      if (i != vertex) others.push_back(toPoint(shape.vertices[i].point));
    }
    to = guides_.snapped(to, std::move(others));
  }
  moveVertex(shape, vertex, to);
  set(shape);
}

void MaskEditor::dragTangent(std::size_t vertex, Side side, const HandleDrag& drag) {
  if (!hasVertex(vertex)) return;
  scene::MaskShape shape = *shape_;
  bend(shape, vertex, side, drag.to, drag.bends);
  set(shape);
}

void MaskEditor::straightenSide(std::size_t vertex, Side side) {
  if (!hasVertex(vertex)) return;
  handles_[vertex].vertex->setFocus();  // where both sides are straight, it alone is left
  scene::MaskShape shape = *shape_;
  straighten(shape, vertex, side);
  set(shape);
}

void MaskEditor::toggleCorner(std::size_t vertex) {
  if (!hasVertex(vertex)) return;
  scene::MaskShape shape = *shape_;
  (isCorner(shape.vertices[vertex]) ? makeSmooth : makeCorner)(shape, vertex);
  set(shape);
}

/// `edit` makes a shape with one more, which is number `added` and gets the focus.
template <class Edit>
void MaskEditor::addVertex(std::size_t added, const Edit& edit) {
  editAllKeys("Add Vertex", edit);
  if (hasVertex(added)) handles_[added].vertex->setFocus();  // unless the edit was refused
}

void MaskEditor::addVertexAt(QPointF place) {
  if (!shape_) return;
  const OutlinePlace at = nearestPlace(*shape_, place);
  addVertex(at.vertex + 1, [&](const scene::MaskShape& shape) { return withVertex(shape, at); });
}

void MaskEditor::addVertexAfter(std::size_t vertex) {
  if (!hasVertex(vertex)) return;
  addVertex(vertex + 1,
            [&](const scene::MaskShape& shape) { return withVertexAfter(shape, vertex); });
}

void MaskEditor::removeVertex(std::size_t vertex) {
  if (!hasVertex(vertex)) return;
  if (shape_->vertices.size() <= kFewestVertices) return remove();
  editAllKeys("Delete Vertex",
              [&](scene::MaskShape shape) { return withoutVertex(std::move(shape), vertex); });
  if (shape_ && !hasVertex(vertex)) handles_[shape_->vertices.size() - 1].vertex->setFocus();
}

void MaskEditor::makeCircle() {
  const QRectF frame = frame_->rect();
  set(circle(frame.center(), std::min(frame.width(), frame.height()) / 3));
}

void MaskEditor::makeRectangle() {
  const QRectF frame = frame_->rect();
  set(rectangle(frame.adjusted(frame.width() / 4, frame.height() / 4, -frame.width() / 4,
                               -frame.height() / 4)));
}

void MaskEditor::draw() {
  stopDrawing();
  pen_ = new MaskPen(scene()->views().first()->sceneRect());
  scene()->addItem(pen_);
  pen_->setFocus();
  connect(pen_, &MaskPen::moved, this, &MaskEditor::penMoved);
  connect(pen_, &MaskPen::canceled, this, &MaskEditor::stopDrawing);
  connect(pen_, &MaskPen::drawn, this, [this](const scene::MaskShape& shape) {
    stopDrawing();
    set(shape);
  });
}

void MaskEditor::stopDrawing() {
  if (pen_ == nullptr) return;
  pen_->hide();
  pen_->deleteLater();  // it may be what calls
  pen_ = nullptr;
}

void MaskEditor::invert() {
  const auto mask = preview_.document().mask(preview_.layer());
  if (mask) preview_.document().setMaskInverted(preview_.layer(), !mask->inverted);
}

void MaskEditor::remove() {
  preview_.document().setMaskShape(preview_.layer(), {}, preview_.frame());
}

}  // namespace desk
