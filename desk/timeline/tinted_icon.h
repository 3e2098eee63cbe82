// The style's icons for media, which are black, in the color that a button's text has.
#pragma once

#include <QIcon>
#include <QStyle>

namespace desk {

/// Follows the palette of the program, in which it is light or dark.
QIcon tintedIcon(const QStyle& style, QStyle::StandardPixmap icon);

}  // namespace desk
