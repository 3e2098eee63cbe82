// Finds the vertices that carry a line's shape: long corners, and the tips of one-pixel bumps and
// notches.
#pragma once

#include "contour/vertex_chain.h"
#include "contour/vertex_set.h"

namespace brisel {

/// Clears what `line` has gathered of flags, except at the ends of an open line, and marks the
/// vertices that carry its shape kVertexFixed, with new ones put in where none fits. A closed line
/// gets at least one. A line of fewer than 3 vertices is left alone.
void MarkFixedVertices(CVertexChain& line, bool closed, CVertexSet& vertices);

}  // namespace brisel
