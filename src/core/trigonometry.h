// Sine, cosine and arc tangent. The libraries of two systems differ in the last bits of theirs and
// reduce large angles differently, so the effect brings its own: the same bytes everywhere.
#pragma once

namespace brisel {

/// Each is computed in double precision, to far less than its last bit, and rounded once.
float sine(float radians);
float cosine(float radians);
float arcTangent(float slope);
float arcTangent2(float y, float x);

}  // namespace brisel
