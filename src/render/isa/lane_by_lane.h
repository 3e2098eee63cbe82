// Words of single lanes from and to memory, where an instruction set has no loads and stores of
// some.
#pragma once

#include <cstdint>
#include <cstring>

namespace brisel {

/// Bit i of `lanes` stands for lane i, whose word lies at origin + 4 i; only words of these lanes
/// are touched, and the others stay as they are in `words`.
template <class Words>
Words loadLaneByLane(int lanes, const void* origin, Words words) {
  constexpr int kLanes = sizeof(Words) / 4;
  const auto* bytes = static_cast<const std::uint8_t*>(origin);
  std::uint32_t each[kLanes];
  std::memcpy(each, &words, sizeof words);
  for (int i = 0; i < kLanes; ++i) {
    if ((lanes >> i & 1) != 0) std::memcpy(each + i, bytes + 4 * i, 4);
  }
  std::memcpy(&words, each, sizeof words);
  return words;
}

template <class Words>
void storeLaneByLane(int lanes, void* origin, Words words) {
  constexpr int kLanes = sizeof(Words) / 4;
  auto* bytes = static_cast<std::uint8_t*>(origin);
  std::uint32_t each[kLanes];
  std::memcpy(each, &words, sizeof words);
  for (int i = 0; i < kLanes; ++i) {
    if ((lanes >> i & 1) != 0) std::memcpy(bytes + 4 * i, each + i, 4);
  }
}

}  // namespace brisel
