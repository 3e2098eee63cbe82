// The mask of a layer on the picture, and what is done to it there.
#pragma once

#include <QGraphicsObject>
#include <array>
#include <optional>
#include <vector>

#include "desk/render/preview.h"
#include "desk/view/handle.h"
#include "desk/view/mask_shapes.h"
#include "desk/view/outline.h"
#include "desk/view/snap_guides.h"

class QMenu;

namespace desk {

class MaskPen;

/// Vertices are dragged, and with Ctrl and Shift held bent; the outline is dragged as a whole. A
/// double click on the outline makes a vertex, one on a vertex a corner of it or a bend, as Insert
/// and Return do; Delete removes it. Of a mask with keys the one at the frame shown is changed, and
/// vertices come and go in all of them.
class MaskEditor : public QGraphicsObject {
  Q_OBJECT

 public:
  MaskEditor(Preview& preview, SnapGuides& guides, QGraphicsRectItem* frame);

  bool hasMask() const { return shape_.has_value(); }
  bool isDrawing() const { return pen_ != nullptr; }
  /// In the order in which Tab reaches them: each vertex, then what bends it.
  std::vector<Handle*> handles() const;
  QRectF boundingRect() const override { return {}; }
  void paint(QPainter*, const QStyleOptionGraphicsItem*, QWidget*) override {}

 public slots:
  /// In place of the mask that there is, in the middle of the frame.
  void makeCircle();
  void makeRectangle();
  /// Begins to draw one with the pen.
  void draw();
  void invert();
  void remove();

 signals:
  void maskChanged();  // whether there is one
  void penMoved(QPointF place);

 private:
  struct VertexHandles {
    Handle* vertex;
    std::array<Handle*, 2> tangents;  // by Side
  };

  void follow();
  void placeHandles();
  VertexHandles makeHandles(std::size_t vertex);
  void activate(std::size_t vertex);
  bool hasVertex(std::size_t vertex) const;
  void set(const scene::MaskShape& shape);
  template <class Edit>
  void editAllKeys(const QString& label, const Edit& edit);
  template <class Edit>
  void addVertex(std::size_t added, const Edit& edit);
  void dragVertex(std::size_t vertex, const HandleDrag& drag);
  void dragTangent(std::size_t vertex, Side side, const HandleDrag& drag);
  void straightenSide(std::size_t vertex, Side side);
  void toggleCorner(std::size_t vertex);
  void removeVertex(std::size_t vertex);
  void addVertexAt(QPointF place);
  void addVertexAfter(std::size_t vertex);
  void fillMenu(QMenu& menu);
  void stopDrawing();

  Preview& preview_;
  SnapGuides& guides_;
  QGraphicsRectItem* frame_;
  Outline* outline_;
  Outline* arms_;  // from the active vertex to its control points
  MaskPen* pen_ = nullptr;
  std::optional<scene::MaskShape> shape_;  // at the frame shown
  std::vector<VertexHandles> handles_;     // at least as many as there are vertices
  std::size_t active_ = 0;
};

}  // namespace desk
