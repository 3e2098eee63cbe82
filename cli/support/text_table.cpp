#include "cli/support/text_table.h"

#include <unistd.h>

#include <algorithm>
#include <sstream>

#include "cli/support/terminal.h"

namespace cli {
namespace {

constexpr int kGap = 2;  // between columns

std::string padded(const std::string& cell, int columns) {
  return cell + std::string(static_cast<std::size_t>(std::max(columns - columnsOf(cell), 0)), ' ');
}

}  // namespace

std::string alignedTable(const std::vector<TableRow>& rows, int width) {
  std::vector<int> widths;
  int total = -kGap;
  for (std::size_t i = 0; i < rows.front().size(); ++i) {
    int widest = 0;
    for (const TableRow& row : rows) widest = std::max(widest, columnsOf(row[i]));
    total += kGap + widest;
    if (i > 0 && total > width) break;
    widths.push_back(widest);
  }
  std::string text;
  for (const TableRow& row : rows) {
    std::string line;
    for (std::size_t i = 0; i < widths.size(); ++i) line += padded(row[i], widths[i] + kGap);
    text += line.substr(0, line.find_last_not_of(' ') + 1) + "\n";
  }
  return text;
}

std::string wrapped(const std::string& text, int indent, int width) {
  std::istringstream words(text);
  std::string lines;
  int column = indent;
  for (std::string word; words >> word;) {
    const int columns = columnsOf(word);
    if (column > indent && column + 1 + columns > width) {
      lines += "\n" + std::string(static_cast<std::size_t>(indent), ' ');
      column = indent;
    }
    if (column > indent) {
      lines += ' ';
      ++column;
    }
    lines += word;
    column += columns;
  }
  return lines + "\n";
}

int columnsOf(const std::string& text) {
  const auto startsCharacter = [](char byte) { return (byte & 0xC0) != 0x80; };
  return static_cast<int>(std::ranges::count_if(text, startsCharacter));
}

int textWidth() {
  return std::min(terminalColumns(STDOUT_FILENO), 80);
}

}  // namespace cli
