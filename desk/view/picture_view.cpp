#include "desk/view/picture_view.h"

#include <QGraphicsRectItem>
#include <QMouseEvent>
#include <QScrollBar>
#include <QWheelEvent>
#include <algorithm>
#include <array>
#include <cmath>
#include <initializer_list>
#include <vector>

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
  if (picture.image.isNull()) return;  // the last one stays, and a message says why
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
  if (event->type() == QEvent::ShortcutOverride && scene()->focusItem() != nullptr) {
    const auto* key = static_cast<QKeyEvent*>(event);
    constexpr std::array kTaken{Qt::Key_Left,   Qt::Key_Right,     Qt::Key_Up,    Qt::Key_Down,
                                Qt::Key_Delete, Qt::Key_Backspace, Qt::Key_Return};
    const bool isPlain = !(key->modifiers() & (Qt::ControlModifier | Qt::AltModifier));
    if (isPlain && std::ranges::find(kTaken, key->key()) != kTaken.end()) {
      event->accept();
      return true;
    }
  }
  return QGraphicsView::event(event);
}

// Tab goes through the handles, then on to the next widget.
bool PictureView::focusNextPrevChild(bool next) {
  std::vector<QGraphicsItem*> handles;
  for (QGraphicsItem* item : scene()->items(Qt::AscendingOrder)) {
    if (item->isVisible() && dynamic_cast<Handle*>(item) != nullptr) handles.push_back(item);
  }
  if (!next) std::ranges::reverse(handles);
  const auto found = std::ranges::find(handles, scene()->focusItem());
  const auto wanted = found == handles.end() ? handles.begin() : std::next(found);
  if (wanted == handles.end()) {
    scene()->setFocusItem(nullptr);
    return QGraphicsView::focusNextPrevChild(next);
  }
  (*wanted)->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
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
  if (preview_.backdrop() == Backdrop::kBlack) {
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
