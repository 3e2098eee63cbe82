// The plug-in property list: what a host reads from the module's resources before it ever calls it.
#pragma once

#include <cstdint>
#include <vector>

namespace brisel {

/// The resource's bytes (type "PIPL", id 16000), made from the constants that global set-up
/// reports.
std::vector<std::uint8_t> propertyList();

}  // namespace brisel
