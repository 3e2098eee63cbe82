// hostkit: the two suites through which a module reaches a layer's masks. They act on the masks of
// the host that is current on this thread.
#pragma once

#include "plugin/sdk/suites.h"

namespace hostkit {

// Slots beyond the documented functions are null.
const PF_PathQuerySuite1& pathQuerySuite();
const PF_PathDataSuite1& pathDataSuite();

}  // namespace hostkit
