#include "plain_contour.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <iterator>
#include <stdexcept>
#include <tuple>

namespace reference {
namespace {

constexpr int kJunction = 16;
constexpr int kDirections[] = {1, 2, 4, 8};

struct Place {
  int row, column;
  bool operator==(const Place&) const = default;
};

Place stepAlong(Place p, int direction) {
  switch (direction) {
    case 1:
      return {p.row, p.column + 1};
    case 2:
      return {p.row + 1, p.column};
    case 4:
      return {p.row, p.column - 1};
    default:
      return {p.row - 1, p.column};
  }
}

Place rightCell(Place p, int direction) {
  switch (direction) {
    case 1:
      return {p.row, p.column};
    case 2:
      return {p.row, p.column - 1};
    case 4:
      return {p.row - 1, p.column - 1};
    default:
      return {p.row - 1, p.column};
  }
}

int opposite(int direction) {
  const int shifted = direction << 2;
  return shifted > 8 ? shifted >> 4 : shifted;
}

class Tracer {
 public:
  Tracer(const Mask& mask, VertexSet& vertices)
      : mask_(mask),
        vertices_(vertices),
        codes_(static_cast<std::size_t>(mask.width + 1) *
               static_cast<std::size_t>(mask.height + 1)) {}

  std::vector<Line> findLines() {
    for (int r = 0; r <= mask_.height; ++r) {
      for (int k = 0; k <= mask_.width; ++k) code({r, k}) = static_cast<std::uint8_t>(encode(r, k));
    }
    std::vector<Line> lines;
    for (int r = 0; r <= mask_.height; ++r) {
      for (int k = 0; k <= mask_.width; ++k) {
        const int start = code({r, k});
        if (start != 0 && start != kJunction) lines.push_back(traceLine({r, k}, start));
      }
    }
    return lines;
  }

 private:
  std::uint8_t& code(Place p) {
    return codes_[static_cast<std::size_t>(p.row) * static_cast<std::size_t>(mask_.width + 1) +
                  static_cast<std::size_t>(p.column)];
  }

  int label(int row, int column) const {
    const bool inside = row >= 0 && row < mask_.height && column >= 0 && column < mask_.width;
    return inside ? mask_.at(row, column) : kOutsideLabel;
  }

  int encode(int r, int k) const {
    const int nw = label(r - 1, k - 1), ne = label(r - 1, k);
    const int sw = label(r, k - 1), se = label(r, k);
    int result = 0;
    if (sw != se) result += 2;
    if (sw != nw) result += 4;
    if (nw != ne) result += 8;
    if (ne != se) result += 1;
    if (result == 7 || result == 11 || result == 13 || result == 14) result += kJunction;
    if (result == 15 && sw != ne && nw != se) result += kJunction;
    return result;
  }

  int rightLabel(Place p, int direction) const {
    const Place cell = rightCell(p, direction);
    return label(cell.row, cell.column);
  }

  int leftLabel(Place p, int direction) const {
    return rightLabel(p, direction == 1 ? 8 : direction >> 1);
  }

  Line traceLine(Place start, int startCode) {
    Line line;
    bool ok = traceDirection(true, kOutsideLabel, start, line);
    if ((startCode & kJunction) == 0 && !line.closed) {
      ok = ok && traceDirection(false, line.leftLabel, start, line);
    }
    if (!ok) {
      throw std::runtime_error("Error! CMeshBuilder::FindBorderLines: Cannot trace line.");
    }
    if (!line.closed) {
      line.points.front()->flags |= kFixed;
      line.points.back()->flags |= kFixed;
    }
    return line;
  }

  bool traceDirection(bool forward, int label, Place start, Line& line) {
    int direction = 0;
    for (int b : kDirections) {
      if ((code(start) & b) && (label == kOutsideLabel || rightLabel(start, b) == label)) {
        direction = b;
        break;
      }
    }
    if (direction == 0) return false;
    if (label == kOutsideLabel && forward) {
      label = rightLabel(start, direction);
      line.rightLabel = static_cast<std::uint8_t>(label);
      line.leftLabel = static_cast<std::uint8_t>(leftLabel(start, direction));
    }
    Place place = start;
    int previous = 15;
    for (;;) {
      if (direction != previous) addVertex(line, forward, place);
      const int beforePrevious = previous;
      previous = direction;
      code(place) = static_cast<std::uint8_t>(code(place) & ~direction);
      place = stepAlong(place, direction);
      code(place) = static_cast<std::uint8_t>(code(place) & ~opposite(direction));
      const int here = code(place);
      if ((here & kJunction) || place == start) {
        addVertex(line, forward, place);
        return true;
      }
      if (here == 0) return false;
      if (here == 1 || here == 2 || here == 4 || here == 8) {
        direction = here;
      } else {
        direction = lookAhead(place, label, previous | beforePrevious);
      }
    }
  }

  int lookAhead(Place place, int label, int recent) {
    int best = 1000;
    int chosen = 0;
    for (int b1 : kDirections) {
      if (!(code(place) & b1) || rightLabel(place, b1) != label) continue;
      const Place next = stepAlong(place, b1);
      for (int b2 : kDirections) {
        if (!(code(next) & b2) || rightLabel(next, b2) != label) continue;
        const int score = std::popcount(static_cast<unsigned>(recent ^ (b1 | b2)));
        if (score < best) {
          best = score;
          chosen = b1;
        }
      }
    }
    if (chosen == 0) {
      throw std::runtime_error("Error! CMeshBuilder::TraceDirection: Cannot trace line.");
    }
    return chosen;
  }

  void addVertex(Line& line, bool forward, Place place) {
    const VertexRef vertex =
        vertices_.unify(static_cast<float>(place.column), static_cast<float>(place.row));
    std::list<VertexRef>& points = line.points;
    if (!points.empty()) {
      if (equal(*vertex, forward ? *points.front() : *points.back())) line.closed = true;
      if (equal(*vertex, forward ? *points.back() : *points.front())) return;
    }
    points.insert(forward ? points.end() : points.begin(), vertex);
  }

  const Mask& mask_;
  VertexSet& vertices_;
  std::vector<std::uint8_t> codes_;
};

void collect(const std::vector<Line>& lines, Contour& contour) {
  for (const Line& line : lines) {
    if (line.closed && line.points.size() < 4) continue;
    if (line.rightLabel == kOutsideLabel || line.leftLabel == kOutsideLabel) continue;
    if (line.points.size() < 2) continue;
    const auto base = static_cast<std::uint32_t>(contour.points.size());
    for (const VertexRef& vertex : line.points) contour.points.emplace_back(vertex->x, vertex->y);
    for (std::uint32_t i = 1; i < line.points.size(); ++i) {
      contour.segments.emplace_back(base + i - 1, base + i);
    }
  }
}

}  // namespace

bool equal(const Vertex& a, const Vertex& b) {
  return std::fabs(a.x - b.x) < 0.01f && std::fabs(a.y - b.y) < 0.01f &&
         std::fabs(a.z - b.z) < 0.01f;
}

bool Precedes::operator()(const VertexRef& a, const VertexRef& b) const {
  return std::tie(a->x, a->y, a->z) < std::tie(b->x, b->y, b->z);
}

VertexRef VertexSet::unify(float x, float y) {
  auto vertex = std::make_shared<Vertex>();
  vertex->x = x;
  vertex->y = y;
  const auto after = vertices_.lower_bound(vertex);
  if (after != vertices_.end() && equal(**after, *vertex)) return *after;
  if (after != vertices_.begin() && equal(**std::prev(after), *vertex)) return *std::prev(after);
  return *vertices_.insert(vertex).first;
}

Contour traceContour(const Mask& mask, float tolerance, int maxSegmentLength) {
  Contour contour;
  if (tolerance <= 0) tolerance = 1.0f;
  if (tolerance > 10.0f) tolerance = 10.0f;
  maxSegmentLength = std::clamp(maxSegmentLength, 2, 30);
  try {
    VertexSet vertices;
    std::vector<Line> lines = Tracer(mask, vertices).findLines();
    for (Line& line : lines) simplifyLine(line, vertices, tolerance, maxSegmentLength);
    collect(lines, contour);
  } catch (const std::runtime_error& error) {
    contour.error = error.what();
  }
  return contour;
}

}  // namespace reference
