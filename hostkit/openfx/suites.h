// hostkit: the tables of functions that plug-ins fetch.
#pragma once

#include "openfx/api/openfx.h"

namespace hostkit {

extern const OfxPropertySuite1 kPropertySuite;
extern const OfxParameterSuite1 kParameterSuite;

/// The table of that suite, or null.
const void* openFxSuite(const char* name, int version);

}  // namespace hostkit
