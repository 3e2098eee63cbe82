#include <cstdint>
#include <iostream>
#include <vector>

#include "effect/instance.h"

int main() {
  constexpr brisel::FrameSize kSize{320, 180};
  std::vector<std::uint8_t> pixels(kSize.width * kSize.height * 4);
  const brisel::FrameViews views{
      .output = {pixels.data(), kSize.width, kSize.height, kSize.width * 4}};
  brisel::Instance instance;
  const brisel::Values values(kSize);
  for (int frame = 0; frame < 5; ++frame) instance.render(values, frame, views);
  int lit = 0;
  for (const std::uint8_t byte : pixels) lit += byte != 0 ? 1 : 0;
  std::cout << instance.starCount() << " stars, " << (lit > 0 ? "light" : "nothing") << "\n";
}
