#include "render/isa/sse2.h"
#include "openfx/isa/row_table.h"

namespace brisel::openfx {

const PixelRows kSse2Rows[] = {rowTable<Sse2, Bytes>("sse2"), rowTable<Sse2, Shorts>("sse2"),
                               rowTable<Sse2, Floats>("sse2")};

}  // namespace brisel::openfx
