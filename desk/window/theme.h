// Light or dark, where it is not left to the desktop.
#pragma once

#include <QString>

namespace desk {

enum class Theme { Desktop, Light, Dark };

/// For the whole program, and for its next start.
void setTheme(Theme theme);

/// The one that was set last.
Theme theme();

/// Has it, as the program starts.
void restoreTheme();

}  // namespace desk
