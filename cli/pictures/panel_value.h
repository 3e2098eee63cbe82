// How the panel shows a parameter's value.
#pragma once

#include <cairo.h>

#include "hostkit/parameters.h"

namespace cli {

inline constexpr double kPanelTextSize = 12;  // pixels

// Draws into the line around `middle`, from `left` on; nothing for kinds that have no value.
void drawPanelValue(cairo_t* cairo, const hostkit::Parameter& parameter, const PF_ParamDef& value,
                    double left, double middle);

}  // namespace cli
