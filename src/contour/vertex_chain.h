// The vertices of one line in a chain, and which of them carry its shape: long corners, and the
// tips of one-pixel bumps and notches.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "contour/vertex_set.h"

namespace brisel {

/// A linked sequence: a position stays valid whatever is put in or taken out next to it.
/// Clearing keeps the storage, so that one chain serves line after line.
class CVertexChain {
 public:
  using Position = std::uint32_t;
  static constexpr Position kEnd = ~Position{0};

  void Clear() {
    links_.clear();
    first_ = last_ = kEnd;
    size_ = 0;
  }

  std::size_t Size() const { return size_; }
  Position First() const { return first_; }
  Position Last() const { return last_; }

  /// The neighbor of a position, or kEnd. The neighbor of kEnd is kEnd.
  Position Next(Position p) const { return p == kEnd ? kEnd : links_[p].next; }
  Position Previous(Position p) const { return p == kEnd ? kEnd : links_[p].previous; }

  const CMeshVertex& operator[](Position p) const { return links_[p].vertex; }

  void PushBack(const CMeshVertex& vertex) { Insert(vertex, last_, kEnd); }
  void PushFront(const CMeshVertex& vertex) { Insert(vertex, kEnd, first_); }
  void InsertAfter(Position p, const CMeshVertex& vertex) { Insert(vertex, p, links_[p].next); }

  void PopFront() { Erase(first_); }
  void PopBack() { Erase(last_); }

 private:
  struct Link {
    CMeshVertex vertex;
    Position previous;
    Position next;
  };

  void Insert(const CMeshVertex& vertex, Position before, Position after) {
    const auto added = static_cast<Position>(links_.size());
    links_.push_back({vertex, before, after});
    (before == kEnd ? first_ : links_[before].next) = added;
    (after == kEnd ? last_ : links_[after].previous) = added;
    ++size_;
  }

  void Erase(Position p) {
    const Link& link = links_[p];
    (link.previous == kEnd ? first_ : links_[link.previous].next) = link.next;
    (link.next == kEnd ? last_ : links_[link.next].previous) = link.previous;
    --size_;
  }

  std::vector<Link> links_;
  Position first_ = kEnd;
  Position last_ = kEnd;
  std::size_t size_ = 0;
};

/// Clears the flags of `line`'s vertices, except at the ends of an open line, and marks the
/// vertices that carry its shape kVertexFixed, with new ones put in where none fits. A closed line
/// gets at least one. A line of fewer than 3 vertices is left alone.
void MarkFixedVertices(CVertexChain& line, bool closed, CVertexSet& vertices);

}  // namespace brisel
