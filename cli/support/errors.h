// The failures a user can meet, which the command line shares with the reader of scenes.
#pragma once

#include "scene/text/errors.h"

namespace cli {

using scene::inQuotes;
using scene::UsageError;
using scene::WorkError;

// Ends a message about a damaged input, after which all of the output is there.
constexpr char kWrittenAllTheSame[] = " was written all the same, which --tolerate-damage accepts";

}  // namespace cli
