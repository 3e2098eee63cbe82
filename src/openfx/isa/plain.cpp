#include "render/isa/plain.h"
#include "openfx/isa/row_table.h"

namespace brisel::openfx {

const PixelRows kPlainRows[] = {rowTable<Plain, Bytes>("plain"), rowTable<Plain, Shorts>("plain"),
                                rowTable<Plain, Floats>("plain")};

}  // namespace brisel::openfx
