// hostkit: what goes wrong on the host's side of the interface.
#pragma once

#include <stdexcept>

namespace hostkit {

// what() is one sentence for the user, without a full stop.
class Error : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace hostkit
