// Text that others wrote, for a terminal.
#pragma once

#include <string>
#include <string_view>

namespace scene {

/// With control characters, which a terminal would obey, as "\x1B", and of what is very long its
/// two ends.
std::string printable(std::string_view text);

}  // namespace scene
