// Small pictures of many frames on one dark sheet, in groups with a title.
#pragma once

#include <string>
#include <vector>

#include "cli/pictures/cairo_picture.h"
#include "cli/pictures/frame.h"

namespace cli {

class ContactSheet {
 public:
  // Cells are `cellWidth` pixels wide and as high as the frame's aspect makes them.
  ContactSheet(int columns, int cellWidth);

  void addGroup(const std::string& title);

  // Adds a small copy of the frame to the last group.
  void addFrame(const Frame& frame, int number);

  // The whole sheet, opaque, 8 bits.
  Frame picture() const;

 private:
  struct Cell {
    CairoSurface picture;
    std::string caption;
  };
  struct Group {
    std::string title;
    std::vector<Cell> cells;
  };

  int cellHeight(const Group& group) const;
  int groupHeight(const Group& group) const;
  void drawGroup(cairo_t* cairo, const Group& group, int top) const;

  int columns_;
  int cellWidth_;
  std::vector<Group> groups_;
};

}  // namespace cli
