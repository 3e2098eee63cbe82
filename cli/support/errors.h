// The failures a user can meet, which the command line shares with the reader of scenes.
#pragma once

#include "scene/text/errors.h"

namespace cli {

using scene::inQuotes;
using scene::UsageError;
using scene::WorkError;

}  // namespace cli
