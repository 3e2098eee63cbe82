// What can be done with a mask's outline: shapes in, shapes out. Places are pixels of the frame.
#pragma once

#include <QPainterPath>
#include <QPointF>
#include <cstddef>

#include "scene/mask.h"

namespace desk {

QPointF toPoint(scene::MaskPoint point);
scene::MaskPoint toMaskPoint(QPointF point);  // to a tenth of a pixel

QPainterPath pathOf(const scene::MaskShape& shape);

scene::MaskShape circle(QPointF middle, double radius);
scene::MaskShape rectangle(const QRectF& rectangle);

/// A place on the outline: `share` of the way, as the curve's parameter counts, from that vertex to
/// the next.
struct OutlinePlace {
  std::size_t vertex = 0;
  double share = 0;
};
OutlinePlace nearestPlace(const scene::MaskShape& shape, QPointF point);

/// With one more vertex there, which leaves the outline as it is; the vertex is number
/// `place.vertex` + 1.
scene::MaskShape withVertex(scene::MaskShape shape, OutlinePlace place);
/// In the middle of the way to the next; past the end of an outline that is not closed, onward.
scene::MaskShape withVertexAfter(scene::MaskShape shape, std::size_t vertex);
scene::MaskShape withoutVertex(scene::MaskShape shape, std::size_t vertex);

/// With its control points.
void moveVertex(scene::MaskShape& shape, std::size_t vertex, QPointF to);
void moveAll(scene::MaskShape& shape, QPointF way);

/// Its control points where the outline bends evenly through it, or both on the vertex.
void makeSmooth(scene::MaskShape& shape, std::size_t vertex);
void makeCorner(scene::MaskShape& shape, std::size_t vertex);
bool isCorner(const scene::MaskShape::Vertex& vertex);

/// Moves a control point. That on the other side turns along, as long as it was, where both were in
/// line and `breaks` is not set.
enum class Side { In, Out };
void bend(scene::MaskShape& shape, std::size_t vertex, Side side, QPointF to, bool breaks);
/// Puts one on the vertex, so that it bends nothing.
void straighten(scene::MaskShape& shape, std::size_t vertex, Side side);
/// Pulls both out of the vertex, evenly.
void pull(scene::MaskShape& shape, std::size_t vertex, QPointF out);

}  // namespace desk
