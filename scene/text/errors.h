// The failures a user can meet. what() is always one sentence, ready to be printed after the name
// of the program: "brisel: ".
#pragma once

#include <stdexcept>
#include <string>

namespace scene {

/// What was asked for is wrong in itself: an option, a value, a combination. The command line exits
/// with code 2.
struct UsageError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// The request was understood but cannot be carried out: a file, a scene, a preset, the module. The
/// command line exits with code 1.
struct WorkError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// The text in double quotes, as names and values appear in messages.
inline std::string inQuotes(const std::string& text) {
  return '"' + text + '"';
}

}  // namespace scene
