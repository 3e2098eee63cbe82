// How deep TOML text nests, before a parser builds what could then not be taken down again.
#pragma once

#include <string_view>

namespace scene {

/// Parts of a key such as a.b.c: each is a table within the one before it.
inline constexpr int kMaxKeyParts = 16;

/// The line, from 1, of the first key that has more parts; 0 when none has.
int lineOfTooDeepKey(std::string_view toml);

}  // namespace scene
