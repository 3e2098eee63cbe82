// What the tracer raises when a mask cannot be traced.
#pragma once

#include <stdexcept>

namespace brisel {

class ContourError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace brisel
