#include "scene/text/nearest_name.h"

#include <algorithm>
#include <compare>
#include <optional>

#include "scene/text/errors.h"

namespace scene {
namespace {

using Row = std::vector<std::size_t>;
using Words = std::vector<std::string>;

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

// Runs of anything but ASCII blanks and punctuation, in small letters.
Words wordsOf(std::string_view text) {
  Words words(1);
  for (const char c : lowerCase(text)) {
    const bool isLetter = (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || (c & 0x80) != 0;
    if (isLetter) {
      words.back() += c;
    } else if (!words.back().empty()) {
      words.emplace_back();
    }
  }
  if (words.back().empty()) words.pop_back();
  return words;
}

std::string joined(const Words& words) {
  std::string text;
  for (const std::string& word : words) text += word;
  return text;
}

// Words that are the same except for typos, or one of which holds the other.
bool areAlike(const std::string& wanted, const std::string& word) {
  constexpr std::size_t kFewestToBeFound = 3;  // "of" is in too many words
  if (word.starts_with(wanted)) return true;
  if (wanted.size() >= kFewestToBeFound && word.find(wanted) != std::string::npos) return true;
  if (word.size() >= kFewestToBeFound && wanted.find(word) != std::string::npos) return true;
  return editDistance(wanted, word) <= std::min(wanted.size(), word.size()) / 3;
}

// How far a candidate is from what was wanted: less is nearer.
struct Distance {
  bool differs;         // in more than capitals, blanks and punctuation
  std::size_t missing;  // letters of the words wanted that match no word of the candidate
  std::size_t inexact;  // letters of those that match a word only roughly
  std::size_t edits;

  auto operator<=>(const Distance&) const = default;  // NOLINT(modernize-use-nullptr): its own zero
};

Distance distanceBetween(const Words& wanted, const Words& candidate) {
  std::size_t missing = 0;
  std::size_t inexact = 0;
  for (const std::string& word : wanted) {
    if (std::ranges::find(candidate, word) != candidate.end()) continue;
    const auto isLike = [&](const std::string& other) { return areAlike(word, other); };
    (std::ranges::any_of(candidate, isLike) ? inexact : missing) += word.size();
  }
  const std::string whole = joined(wanted);
  const std::string other = joined(candidate);
  return {whole != other, missing, inexact, editDistance(whole, other)};
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
  const Words wanted = wordsOf(name);
  std::string nearest;
  std::optional<Distance> least;
  for (const std::string& candidate : candidates) {
    const Distance distance = distanceBetween(wanted, wordsOf(candidate));
    if (!least || distance < *least) {
      least = distance;
      nearest = candidate;
    }
  }
  return nearest;
}

std::string orNearest(std::string_view name, const std::vector<std::string>& candidates,
                      const std::string& what) {
  constexpr std::size_t kLongestName = 256;  // what is longer is no slip of anybody's
  constexpr std::size_t kMostSteps = 1 << 25;
  std::size_t letters = 0;
  for (const std::string& candidate : candidates) letters += candidate.size() + 1;
  if (candidates.empty() || name.size() > kLongestName || name.size() * letters > kMostSteps) {
    return {};
  }
  return "; " + what + " is " + inQuotes(nearestName(name, candidates));
}

}  // namespace scene
