#include "cli/media/exr_writer.h"

#include <ImfArray.h>
#include <ImfChannelList.h>
#include <ImfFrameBuffer.h>
#include <ImfIO.h>
#include <ImfInputFile.h>
#include <ImfOutputFile.h>
#include <ImfStandardAttributes.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

namespace cli {
namespace {

// A file in memory, for which the library wants to go back and complete its table of contents.
class MemoryFile : public Imf::OStream {
 public:
  explicit MemoryFile(std::vector<std::uint8_t>& bytes) : OStream("frame"), bytes_(bytes) {}

  void write(const char data[], int count) override {
    const std::size_t size = static_cast<std::size_t>(count);
    bytes_.resize(std::max(bytes_.size(), position_ + size));
    std::memcpy(bytes_.data() + position_, data, size);
    position_ += size;
  }
  std::uint64_t tellp() override { return position_; }
  void seekp(std::uint64_t position) override { position_ = position; }

 private:
  std::vector<std::uint8_t>& bytes_;
  std::size_t position_ = 0;
};

// Linear light of every value a channel can have.
template <typename Channel>
const std::vector<float>& linearLight() {
  static const std::vector<float> table = [] {
    constexpr int kFull = std::numeric_limits<Channel>::max();
    std::vector<float> values;
    for (int i = 0; i <= kFull; ++i) {
      const double v = static_cast<double>(i) / kFull;
      values.push_back(
          static_cast<float>(v <= 0.04045 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4)));
    }
    return values;
  }();
  return table;
}

// Four halves a pixel: red, green, blue, alpha.
template <typename Channel>
std::vector<Imath::half> halvesOf(const Frame& frame) {
  constexpr float kFull = std::numeric_limits<Channel>::max();
  const std::vector<float>& linear = linearLight<Channel>();
  std::vector<Imath::half> halves(frame.bytes.size() / sizeof(Channel));
  for (std::size_t i = 0; i < halves.size(); i += 4) {
    Channel rgba[4];
    std::memcpy(rgba, frame.bytes.data() + i * sizeof(Channel), sizeof rgba);
    const float alpha = static_cast<float>(rgba[3]) / kFull;
    for (std::size_t c = 0; c < 3; ++c) halves[i + c] = linear[rgba[c]] * alpha;
    halves[i + 3] = alpha;
  }
  return halves;
}

}  // namespace

void encodeExr(const Frame& frame, std::vector<std::uint8_t>& bytes) {
  std::vector<Imath::half> halves =
      frame.depth == Depth::Bits8 ? halvesOf<std::uint8_t>(frame) : halvesOf<std::uint16_t>(frame);
  Imf::Header header(frame.size.width, frame.size.height);
  header.compression() = Imf::ZIP_COMPRESSION;
  Imf::addChromaticities(header, Imf::Chromaticities());  // BT.709's, as readers assume
  Imf::FrameBuffer buffer;
  const std::size_t pixelBytes = 4 * sizeof(Imath::half);
  const char* const names[] = {"R", "G", "B", "A"};
  for (std::size_t c = 0; c < 4; ++c) {
    header.channels().insert(names[c], Imf::Channel(Imf::HALF));
    buffer.insert(names[c],
                  Imf::Slice(Imf::HALF, reinterpret_cast<char*>(halves.data() + c), pixelBytes,
                             pixelBytes * static_cast<std::size_t>(frame.size.width)));
  }
  bytes.clear();
  MemoryFile memory(bytes);
  Imf::OutputFile file(memory, header, 0);  // frames side by side keep the processor busy
  file.setFrameBuffer(buffer);
  file.writePixels(frame.size.height);
}

bool isCompleteExr(const std::filesystem::path& path) {
  try {
    Imf::InputFile file(path.c_str(), 0);
    const char* block = nullptr;
    int size = 0;
    file.rawPixelData(file.header().dataWindow().max.y, block, size);  // throws where there is none
    return file.isComplete();
  } catch (const std::exception&) {
    return false;
  }
}

}  // namespace cli
