// hostkit: the suites of a module's user interface: grayed parameters, drawing, redrawing. They act
// on the records of the host that is current on this thread.
#pragma once

#include "hostkit/suites.h"

namespace hostkit {

// Slots of functions that this host does not have are null.
void offerUiSuites(SuiteLedger& suites);

}  // namespace hostkit
