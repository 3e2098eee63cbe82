// The failures a user can meet. what() is always one sentence, ready to be printed after "brisel:
// ".
#pragma once

#include <stdexcept>
#include <string>

namespace cli {

// The command line itself is wrong: an option, a value, a combination. Exit code 2.
struct UsageError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

// The command was understood but cannot be carried out: a file, a scene, the module. Exit code 1.
struct WorkError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

// The text in double quotes, as names and values appear in messages.
inline std::string inQuotes(const std::string& text) {
  return '"' + text + '"';
}

}  // namespace cli
