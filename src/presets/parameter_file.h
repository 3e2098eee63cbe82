// Parameter files: what a preset sets, as a list of labels with their numbers. What these mean to
// a parameter is for the effect to say.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace brisel {

/// The first line of a parameter file begins with this.
inline constexpr std::string_view kParameterFileHeader = "Tessaro parameters";

/// What a file says of one parameter. A file may name a parameter more than once.
struct FileParameter {
  std::string label;
  std::array<float, 4> numbers{};  // those beyond the parameter's count are 0
};

struct ParameterFile {
  enum class State {
    Missing,    // there is no such file, or it cannot be read
    OtherKind,  // it has another header, or nothing after it
    Read
  };
  State state = State::Missing;
  std::string description;  // the comment below the header, in one line
  std::vector<FileParameter> parameters;
};

/// How many numbers, at most 4, belong to the parameter of that label; 0 when there is no such
/// parameter, and its line is skipped.
using NumberCount = std::function<int(std::string_view label)>;

/// What the bytes of a file say; its state is never Missing. Numbers are found across line ends; a
/// missing one repeats the one before it, or is 0.
ParameterFile parseParameterFile(std::span<const std::uint8_t> bytes,
                                 const NumberCount& numberCount);

/// The same of the file at `path` (zero-terminated).
ParameterFile ReadParameterFile(const char* path, const NumberCount& numberCount);

}  // namespace brisel
