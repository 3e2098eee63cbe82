#include "scene/svg_path.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <string>
#include <system_error>
#include <utility>

#include "scene/text/errors.h"

namespace scene {
namespace {

constexpr std::string_view kCommands = "MLHVCSQTZ";
constexpr char kCommandList[] = "M, L, H, V, C, S, Q, T and Z";
constexpr std::string_view kSpaces = " \t\n\f\r";
constexpr double kSamePlace = 1e-6;  // pixels; sums of relative steps do not return exactly

using Point = MaskPoint;

Point mirrored(Point p, Point center) {
  return {2 * center.x - p.x, 2 * center.y - p.y};
}

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

char upperCase(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

std::string shown(char c) {
  if (c > ' ' && c <= '~') return inQuotes(std::string(1, c));
  char text[16];
  std::snprintf(text, sizeof text, "the byte 0x%02x", static_cast<unsigned char>(c));
  return text;
}

// Splits path data into commands and numbers. Positions count from 0.
class Scanner {
 public:
  explicit Scanner(std::string_view data) : data_(data) {}

  bool atEnd() {
    skipSpaces();
    return position_ == data_.size();
  }
  std::size_t position() const { return position_; }
  char peek() const { return data_[position_]; }
  void advance() { ++position_; }

  // Whether another run of numbers follows without a command of its own.
  bool numberFollows() {
    skipSpaces();
    const std::size_t comma = position_;
    if (!skipComma()) return startsNumber();
    if (!startsNumber()) fail("a comma is followed by no number", comma);
    return true;
  }

  // A number of `command`, which takes `count` at a time.
  double number(char command, int count) {
    skipSpaces();
    skipComma();
    const std::size_t start = position_;
    if (!startsNumber()) {
      fail(inQuotes(std::string(1, command)) + " takes " + std::to_string(count) +
               (count == 1 ? " number" : " numbers") + " at a time, and one is missing",
           start);
    }
    if (peek() == '+') advance();
    double value = 0;
    const auto [end, error] =
        std::from_chars(data_.data() + position_, data_.data() + data_.size(), value);
    if (error != std::errc{}) fail("a number is beyond all measure", start);
    position_ = static_cast<std::size_t>(end - data_.data());
    return value;
  }

  [[noreturn]] static void fail(const std::string& what, std::size_t position) {
    throw PathDataError(what + " (character " + std::to_string(position + 1) + ")");
  }

 private:
  void skipSpaces() {
    position_ = std::min(data_.find_first_not_of(kSpaces, position_), data_.size());
  }

  bool skipComma() {
    if (position_ == data_.size() || peek() != ',') return false;
    advance();
    skipSpaces();
    return true;
  }

  // A sign, a point, and the first digit.
  bool startsNumber() const {
    std::string_view rest = data_.substr(position_);
    if (rest.starts_with('+') || rest.starts_with('-')) rest.remove_prefix(1);
    if (rest.starts_with('.')) rest.remove_prefix(1);
    return !rest.empty() && isDigit(rest.front());
  }

  std::string_view data_;
  std::size_t position_ = 0;
};

class OutlineBuilder {
 public:
  explicit OutlineBuilder(std::string_view data) : scanner_(data) {}

  MaskShape build() {
    shape_.closed = false;
    if (scanner_.atEnd()) throw PathDataError("the path data is empty");
    while (!scanner_.atEnd()) readCommand();
    return std::move(shape_);
  }

 private:
  void readCommand() {
    commandPosition_ = scanner_.position();
    command_ = scanner_.peek();
    const char kind = upperCase(command_);
    if (kind == 'A') {
      fail(std::string("arcs (A) are not supported; the commands are ") + kCommandList);
    }
    if (kCommands.find(kind) == std::string_view::npos) {
      fail(shown(command_) + " is no command; they are " + kCommandList);
    }
    if (shape_.vertices.empty() != (kind == 'M') || shape_.closed) {
      fail(shape_.vertices.empty() ? "path data begins with M, not " + shown(command_)
                                   : "a second outline begins; a mask is a single one");
    }
    scanner_.advance();
    if (kind == 'Z') return close();
    readSegment(kind);
    // Further points of a move are lines.
    const char repeated = kind == 'M' ? 'L' : kind;
    while (scanner_.numberFollows()) readSegment(repeated);
  }

  void readSegment(char kind) {
    switch (kind) {
      case 'M':
      case 'L':
        return addLine(point(2));
      case 'H':
        return addLine({coordinate(1, here_.x), here_.y});
      case 'V':
        return addLine({here_.x, coordinate(1, here_.y)});
      case 'C': {
        const Point first = point(6);
        const Point second = point(6);
        return addCubic(first, second, point(6));
      }
      case 'S': {
        const Point second = point(4);
        return addCubic(mirrored(cubicControl_, here_), second, point(4));
      }
      case 'Q': {
        const Point control = point(4);
        return addQuadratic(control, point(4));
      }
      default:
        return addQuadratic(mirrored(quadraticControl_, here_), point(2));
    }
  }

  // The next number of the command, relative to `base` after a small letter.
  double coordinate(int count, double base) {
    const double number = scanner_.number(command_, count);
    return upperCase(command_) == command_ ? number : base + number;
  }

  Point point(int count) {
    const double x = coordinate(count, here_.x);
    return {x, coordinate(count, here_.y)};
  }

  void addLine(Point to) { addVertex(to, to, to, to); }

  void addCubic(Point first, Point second, Point to) {
    checkReach(first);
    shape_.vertices.back().out = first;
    addVertex(to, second, second, to);
  }

  void addQuadratic(Point control, Point to) {
    checkReach(control);
    const auto towardsControl = [control](Point end) {
      return Point{end.x + 2.0 / 3.0 * (control.x - end.x),
                   end.y + 2.0 / 3.0 * (control.y - end.y)};
    };
    addCubic(towardsControl(here_), towardsControl(to), to);
    cubicControl_ = to;
    quadraticControl_ = control;
  }

  // Goes on to `to`. The control points are what a smooth curve that follows would mirror.
  void addVertex(Point to, Point tangentIn, Point cubicControl, Point quadraticControl) {
    checkReach(tangentIn);
    checkReach(to);
    if (shape_.vertices.size() == kMaxMaskVertices) {
      fail("a mask has " + std::to_string(kMaxMaskVertices) + " vertices at most");
    }
    shape_.vertices.push_back({to, tangentIn, to});
    here_ = to;
    cubicControl_ = cubicControl;
    quadraticControl_ = quadraticControl;
  }

  void close() {
    shape_.closed = true;
    MaskShape::Vertex& first = shape_.vertices.front();
    const MaskShape::Vertex& last = shape_.vertices.back();
    const bool cameBack = std::abs(first.point.x - last.point.x) <= kSamePlace &&
                          std::abs(first.point.y - last.point.y) <= kSamePlace;
    if (shape_.vertices.size() == 1 || !cameBack) return;
    first.in = last.in;
    shape_.vertices.pop_back();
  }

  void checkReach(Point p) const {
    if (std::abs(p.x) <= kMaxMaskCoordinate && std::abs(p.y) <= kMaxMaskCoordinate) return;
    fail(inQuotes(std::string(1, command_)) + " reaches further than a million pixels");
  }

  [[noreturn]] void fail(const std::string& what) const { Scanner::fail(what, commandPosition_); }

  Scanner scanner_;
  MaskShape shape_;
  char command_ = 'M';
  std::size_t commandPosition_ = 0;
  Point here_;
  Point cubicControl_;      // here, unless the last segment was a cubic curve
  Point quadraticControl_;  // here, unless the last segment was a quadratic curve
};

}  // namespace

MaskShape maskShapeFromPathData(std::string_view data) {
  return OutlineBuilder(data).build();
}

}  // namespace scene
