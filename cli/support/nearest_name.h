// "Did you mean ...?" for names a user mistyped.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace cli {

// The candidate that takes the fewest edits (insert, delete, replace, swap of neighbours) to reach,
// capitals not counted; the first one among equals. Empty when there are no candidates.
std::string nearestName(std::string_view name, const std::vector<std::string>& candidates);

// The text with A-Z as a-z.
std::string lowerCase(std::string_view text);

}  // namespace cli
