// Columns of text for people.
#pragma once

#include <string>
#include <vector>

namespace cli {

using TableRow = std::vector<std::string>;

// One line per row, each column as wide as its widest cell. All rows have as many cells.
std::string alignedTable(const std::vector<TableRow>& rows);

}  // namespace cli
