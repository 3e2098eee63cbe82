#include "render/isa/avx2.h"
#include "openfx/isa/row_table.h"

namespace brisel::openfx {

const PixelRows kAvx2Rows[] = {rowTable<Avx2, Bytes>("avx2"), rowTable<Avx2, Shorts>("avx2"),
                               rowTable<Avx2, Floats>("avx2")};

}  // namespace brisel::openfx
