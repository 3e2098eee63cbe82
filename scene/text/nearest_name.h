// "Did you mean ...?" for names a user mistyped.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace scene {

/// The candidate that was most likely meant; empty when there are none. Capitals, blanks and
/// punctuation do not count. Comes first what has most of the words wanted (by their letters) at
/// least in part or but for typos; then what has most of them whole; then what takes the fewest
/// edits (insert, delete, replace, swap of neighbors) to reach; then the first in the list.
std::string nearestName(std::string_view name, const std::vector<std::string>& candidates);

/// The end of a message about a name that there is not: "; the nearest is "Size"", or nothing where
/// there is none, or finding it would take long. `what` stands before the "is".
std::string orNearest(std::string_view name, const std::vector<std::string>& candidates,
                      const std::string& what = "the nearest");

/// The text with A-Z as a-z.
std::string lowerCase(std::string_view text);

}  // namespace scene
