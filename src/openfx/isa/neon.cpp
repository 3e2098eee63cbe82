#include "render/isa/neon.h"
#include "openfx/isa/row_table.h"

namespace brisel::openfx {

const PixelRows kNeonRows[] = {rowTable<Neon, Bytes>("neon"), rowTable<Neon, Shorts>("neon"),
                               rowTable<Neon, Floats>("neon")};

}  // namespace brisel::openfx
