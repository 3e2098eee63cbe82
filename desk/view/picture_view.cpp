#include "desk/view/picture_view.h"

#include <QContextMenuEvent>
#include <QGraphicsRectItem>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollBar>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <iterator>
#include <vector>

#include "desk/view/mask_pen.h"

namespace desk {
namespace {

constexpr double kLeastZoom = 0.02;
constexpr double kMostZoom = 32;
constexpr double kZoomStep = 1.25;
constexpr int kSquare = 8;   // of the checkerboard, pixels of the screen
constexpr int kMargin = 12;  // around a frame that is fitted
// Neutral, so that colors are judged well in any theme, and dark, as stars are bright.
const QColor kSurroundings(38, 38, 38);
const QColor kDarkSquare(56, 56, 56);
const QColor kLightSquare(76, 76, 76);

QPixmap checkerboard() {
  QPixmap tile(2 * kSquare, 2 * kSquare);
  tile.fill(kDarkSquare);
  QPainter painter(&tile);
  painter.fillRect(0, 0, kSquare, kSquare, kLightSquare);
  painter.fillRect(kSquare, kSquare, kSquare, kSquare, kLightSquare);
  return tile;
}

}  // namespace

PictureView::PictureView(Preview& preview, QWidget* parent)
    : QGraphicsView(parent),
      preview_(preview),
      frame_(new QGraphicsRectItem),
      picture_(new PictureItem(frame_)),
      guides_(new SnapGuides(frame_)),
      points_(new PointHandles(preview, *guides_, nullptr)),
      mask_(new MaskEditor(preview, *guides_, frame_)) {
  setScene(new QGraphicsScene(this));
  scene()->setItemIndexMethod(QGraphicsScene::NoIndex);  // few items, which move
  for (QGraphicsItem* item : std::initializer_list<QGraphicsItem*>{frame_, points_, mask_}) {
    scene()->addItem(item);
  }
  frame_->setPen(Qt::NoPen);
  frame_->setFlag(QGraphicsItem::ItemClipsChildrenToShape);
  frame_->setZValue(-1);
  // Panned with the mouse, the frame may be put anywhere, so there is nothing for bars to tell.
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setDragMode(ScrollHandDrag);
  setTransformationAnchor(NoAnchor);
  setResizeAnchor(AnchorViewCenter);
  setFrameShape(NoFrame);
  viewport()->setMouseTracking(true);
  setMinimumSize(160, 90);
  setAccessibleName("Picture");
  viewport()->setAccessibleName("Picture");  // which takes the focus for it

  connect(mask_, &MaskEditor::penMoved, this, [this](QPointF place) {
    ensureVisible(QRectF(place, QSizeF(1, 1)));
    setAccessibleDescription(
        QString("Pen at %1, %2").arg(place.x(), 0, 'f', 0).arg(place.y(), 0, 'f', 0));
  });
  connect(scene(), &QGraphicsScene::focusItemChanged, this, &PictureView::tellFocus);
  connect(&preview_.document(), &SceneDocument::changed, this, &PictureView::tellFocus);
  connect(&preview_, &Preview::pictureChanged, this, &PictureView::showPicture);
  connect(&preview_, &Preview::viewChanged, this, [this] {
    takeFrameSize();
    viewport()->update();
  });
  connect(&preview_.document(), &SceneDocument::changed, this, &PictureView::takeFrameSize);
  connect(&preview_.document(), &SceneDocument::replaced, this, &PictureView::fit);
  takeFrameSize();
}

// The scene goes last and tells of the focus that its items lose.
PictureView::~PictureView() {
  disconnect(scene(), nullptr, this, nullptr);
}

double PictureView::zoom() const {
  return transform().m11() * devicePixelRatioF();
}

QRectF PictureView::frameRect() const {
  return frame_->rect();
}

void PictureView::zoomIn() {
  setZoom(zoom() * kZoomStep);
}

void PictureView::zoomOut() {
  setZoom(zoom() / kZoomStep);
}

void PictureView::setZoom(double zoom) {
  const QPoint pointer = viewport()->mapFromGlobal(QCursor::pos());
  zoomAround(viewport()->underMouse() ? pointer : viewport()->rect().center(), zoom);
}

/// What is at that place of the view stays there.
void PictureView::zoomAround(QPoint place, double zoom) {
  fitted_ = false;
  const QPointF kept = mapToScene(place);
  scaleTo(zoom);
  pan(place - mapFromScene(kept));
}

void PictureView::pan(QPoint way) {
  horizontalScrollBar()->setValue(horizontalScrollBar()->value() - way.x());
  verticalScrollBar()->setValue(verticalScrollBar()->value() - way.y());
}

void PictureView::fit() {
  fitted_ = true;
  const QSizeF room = viewport()->size() - QSize(2 * kMargin, 2 * kMargin);
  const QRectF frame = frameRect();
  scaleTo(std::min(room.width() / frame.width(), room.height() / frame.height()) *
          devicePixelRatioF());
  centerOn(frame.center());
}

void PictureView::scaleTo(double zoom) {
  zoom = std::clamp(zoom, kLeastZoom, kMostZoom);
  const double scale = zoom / devicePixelRatioF();
  setTransform(QTransform::fromScale(scale, scale));
  emit zoomChanged(this->zoom());
}

void PictureView::showPicture() {
  const Picture& picture = preview_.picture();
  // Where one could not be made, the last one stays, and a message says why.
  if (picture.image.isNull() && picture.state) return;
  picture_->show(picture.image, picture.reduction);
}

void PictureView::takeFrameSize() {
  const SharedState& compared = preview_.comparedState();
  const auto size = (compared ? compared : preview_.document().state())->plan.layer;
  const QRectF frame(0, 0, size.width, size.height);
  if (frame == frameRect()) return;
  frame_->setRect(frame);
  setSceneRect(frame.adjusted(-frame.width(), -frame.height(), frame.width(), frame.height()));
  if (fitted_) fit();
}

void PictureView::showHandles(bool shown) {
  points_->setVisible(shown);
  mask_->setVisible(shown);
}

// The keys that a handle takes are shortcuts of the window otherwise.
bool PictureView::event(QEvent* event) {
  if (event->type() == QEvent::ShortcutOverride) {
    const auto& key = *static_cast<QKeyEvent*>(event);
    const auto* handle = dynamic_cast<Handle*>(scene()->focusItem());
    const bool isPen = dynamic_cast<MaskPen*>(scene()->focusItem()) != nullptr;
    if ((handle != nullptr && handle->takes(key)) || (isPen && MaskPen::takes(key))) {
      event->accept();
      return true;
    }
  } else if (event->type() == QEvent::KeyPress) {
    // The scene, which would have it first, keeps it from then on that an item with the focus goes.
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key == Qt::Key_Tab && focusNextPrevChild(true)) return true;
    if (key == Qt::Key_Backtab && focusNextPrevChild(false)) return true;
  }
  return QGraphicsView::event(event);
}

void PictureView::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape && cancelDrag()) return;
  QGraphicsView::keyPressEvent(event);
  // What was moved out of sight is followed.
  if (const auto* handle = dynamic_cast<Handle*>(scene()->focusItem())) ensureVisible(handle);
}

bool PictureView::cancelDrag() {
  QGraphicsItem* dragged = scene()->mouseGrabberItem();
  if (auto* handle = dynamic_cast<Handle*>(dragged)) {
    handle->cancel();
  } else if (auto* outline = dynamic_cast<Outline*>(dragged)) {
    outline->cancel();
  } else {
    return false;
  }
  return true;
}

// That of the handle with the focus, if a key asks for it.
void PictureView::contextMenuEvent(QContextMenuEvent* event) {
  auto* handle = dynamic_cast<Handle*>(scene()->focusItem());
  if (event->reason() != QContextMenuEvent::Keyboard || handle == nullptr) {
    return QGraphicsView::contextMenuEvent(event);
  }
  emit handle->menuWanted(viewport()->mapToGlobal(mapFromScene(handle->scenePos())));
}

// Tab goes through the handles, then on to the next widget.
bool PictureView::focusNextPrevChild(bool next) {
  std::vector<Handle*> handles = points_->handles();
  std::ranges::copy(mask_->handles(), std::back_inserter(handles));
  std::erase_if(handles,
                [&](const Handle* handle) { return !handle->isVisible() || mask_->isDrawing(); });
  if (!next) std::ranges::reverse(handles);
  const auto found = std::ranges::find(handles, scene()->focusItem());
  const auto wanted = found == handles.end() ? handles.begin() : std::next(found);
  if (wanted == handles.end()) {
    if (!mask_->isDrawing()) scene()->setFocusItem(nullptr);
    return QGraphicsView::focusNextPrevChild(next);
  }
  (*wanted)->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
  ensureVisible(*wanted);
  emit hintChanged((*wanted)->name() + ": " + (*wanted)->hint());
  return true;
}

// To screen readers the view is one widget.
void PictureView::tellFocus() {
  const auto* handle = dynamic_cast<Handle*>(scene()->focusItem());
  setAccessibleDescription(handle == nullptr ? QString()
                                             : QString("%1 at %2, %3")
                                                   .arg(handle->name())
                                                   .arg(handle->pos().x(), 0, 'f', 0)
                                                   .arg(handle->pos().y(), 0, 'f', 0));
}

void PictureView::drawBackground(QPainter* painter, const QRectF& rect) {
  painter->fillRect(rect, kSurroundings);
  if (preview_.backdrop() == Backdrop::Black) {
    painter->fillRect(rect & frameRect(), Qt::black);
    return;
  }
  // As large on the screen at any zoom, so in its pixels.
  static const QPixmap kTile = checkerboard();
  const QTransform toScreen = painter->worldTransform();
  const QRect frame = toScreen.mapRect(frameRect()).toRect();
  const QRect shown = frame & toScreen.mapRect(rect).toAlignedRect();
  painter->save();
  painter->resetTransform();
  painter->drawTiledPixmap(shown, kTile, shown.topLeft() - frame.topLeft());
  painter->restore();
}

void PictureView::resizeEvent(QResizeEvent* event) {
  QGraphicsView::resizeEvent(event);
  if (fitted_) fit();
}

void PictureView::wheelEvent(QWheelEvent* event) {
  constexpr double kNotch = 120;  // eighths of a degree, of the usual wheel
  zoomAround(event->position().toPoint(),
             zoom() * std::pow(kZoomStep, event->angleDelta().y() / kNotch));
  event->accept();
}

void PictureView::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::MiddleButton) return QGraphicsView::mousePressEvent(event);
  pannedFrom_ = event->pos();
}

void PictureView::mouseMoveEvent(QMouseEvent* event) {
  emit pointerMoved(mapToScene(event->pos()));
  // Over handles as well, which the left button drags.
  if (!event->buttons().testFlag(Qt::MiddleButton)) return QGraphicsView::mouseMoveEvent(event);
  pan(event->pos() - pannedFrom_);
  pannedFrom_ = event->pos();
}

}  // namespace desk
