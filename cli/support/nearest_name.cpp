#include "cli/support/nearest_name.h"

#include <algorithm>
#include <limits>

namespace cli {
namespace {

using Row = std::vector<std::size_t>;

std::size_t editDistance(std::string_view a, std::string_view b) {
  Row beforePrevious(b.size() + 1), previous(b.size() + 1), current(b.size() + 1);
  for (std::size_t j = 0; j <= b.size(); ++j) current[j] = j;
  for (std::size_t i = 1; i <= a.size(); ++i) {
    beforePrevious.swap(previous);
    previous.swap(current);
    current[0] = i;
    for (std::size_t j = 1; j <= b.size(); ++j) {
      const std::size_t replaced = previous[j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1);
      current[j] = std::min({previous[j] + 1, current[j - 1] + 1, replaced});
      const bool swapped = i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1];
      if (swapped) current[j] = std::min(current[j], beforePrevious[j - 2] + 1);
    }
  }
  return current[b.size()];
}

}  // namespace

std::string lowerCase(std::string_view text) {
  std::string lower(text);
  for (char& c : lower) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return lower;
}

std::string nearestName(std::string_view name, const std::vector<std::string>& candidates) {
  const std::string wanted = lowerCase(name);
  std::string nearest;
  std::size_t fewest = std::numeric_limits<std::size_t>::max();
  for (const std::string& candidate : candidates) {
    const std::size_t edits = editDistance(wanted, lowerCase(candidate));
    if (edits < fewest) {
      fewest = edits;
      nearest = candidate;
    }
  }
  return nearest;
}

}  // namespace cli
