#include "render/isa/avx512.h"
#include "openfx/isa/row_table.h"

namespace brisel::openfx {

const PixelRows kAvx512Rows[] = {rowTable<Avx512, Bytes>("avx512"),
                                 rowTable<Avx512, Shorts>("avx512"),
                                 rowTable<Avx512, Floats>("avx512")};

}  // namespace brisel::openfx
