// Which file code was loaded from. Not on Windows, where nobody asks.
#pragma once

#include <string>

namespace brisel {

/// The name, without folders, of the library or program that an address lies in: "libm.so.6". Empty
/// when the system cannot tell.
std::string libraryAt(const void* address);

}  // namespace brisel
