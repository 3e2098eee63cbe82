// The effect's controls as a host shows them: one line per parameter, and the controls that the
// module draws itself.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "cli/pictures/cairo_picture.h"
#include "hostkit/session.h"

namespace cli {

class Panel {
 public:
  // Pixels; controls that the module draws are cut down to what fits.
  Panel(hostkit::Session& session, std::string title, int width);

  // Lets the module gray out parameters and draw its controls, and returns the picture.
  Frame paint();

  // Clicks a pixel of the picture painted last; false when no control of the module lies there.
  bool click(PF_Point point);
  bool hover(PF_Point point);

 private:
  struct Line {
    const hostkit::Parameter* parameter;
    int top;
    std::optional<PF_Rect> control;  // below the line
  };

  void layOut();
  void paintLine(cairo_t* cairo, const Line& line) const;
  const Line* controlAt(PF_Point point) const;
  const PF_ParamDef& value(const hostkit::Parameter& parameter) const;

  hostkit::Session& session_;
  std::string title_;
  int width_;
  int height_ = 0;
  std::vector<Line> lines_;
};

}  // namespace cli
