// Text in columns and paragraphs for people.
#pragma once

#include <string>
#include <vector>

namespace cli {

using TableRow = std::vector<std::string>;

// One line per row, each column as wide as its widest cell; of all rows the last columns are left
// out, but for the first, until no line is longer than `width`. All rows have as many cells.
std::string alignedTable(const std::vector<TableRow>& rows, int width);

// The text in lines of at most `width` columns, broken at blanks; all of them but the first begin
// with `indent` blanks, and the first is taken to stand behind as many. A word that is longer than
// a line stays whole. Ends with a line break.
std::string wrapped(const std::string& text, int indent, int width);

// How many columns the text takes, one for each UTF-8 character.
int columnsOf(const std::string& text);

// The width for text on standard output: the terminal's, but no more than 80 columns.
int textWidth();

}  // namespace cli
