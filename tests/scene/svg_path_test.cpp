// SVG path data as mask outlines, and paths taken out of SVG files.
#include <gtest/gtest.h>

#include <cmath>
#include <sstream>

#include "scene/svg_file.h"
#include "scene/svg_path.h"
#include "scene/text/errors.h"
#include "tests/support/complaints.h"
#include "tests/support/folder_test.h"

namespace {

using scene::MaskShape;
using scene::maskShapeFromPathData;

// "x,y" of the vertices; a tangent that is not on its vertex stands beside it: "in>x,y>out".
std::string written(const MaskShape& shape) {
  const auto pair = [](scene::MaskPoint point) {
    const auto rounded = [](double n) { return std::round(n * 1000) / 1000 + 0.0; };
    std::ostringstream text;
    text << rounded(point.x) << ',' << rounded(point.y);
    return text.str();
  };
  std::string text;
  for (const auto& vertex : shape.vertices) {
    const std::string here = pair(vertex.point);
    const std::string in = pair(vertex.in);
    const std::string out = pair(vertex.out);
    text += (text.empty() ? "" : " ") + (in == here ? "" : in + ">") + here;
    if (out != here) text += ">" + out;
  }
  return text + (shape.closed ? " closed" : " open");
}

TEST(PathData, BecomesAnOutline) {
  const std::vector<std::pair<std::string, std::string>> cases = {
      {"m 10 20 l 5 5 h 10 v -10 H 1 V 2 z", "10,20 15,25 25,25 25,15 1,15 1,2 closed"},
      {"M5 5Z", "5,5 closed"},
      // Numbers stand as close as they can.
      {"M0-1.5.5.25", "0,-1.5 0.5,0.25 open"},
      {"M1e1,2.E0-3e-1+4", "10,2 -0.3,4 open"},
      {"\n\tM 1 , 2,3\r4 ", "1,2 3,4 open"},
      // Further numbers repeat the command; a move goes on as lines.
      {"m1 1 1 1 1 1", "1,1 2,2 3,3 open"},
      {"M0 0h1 2v3 4", "0,0 1,0 3,0 3,3 3,7 open"},
      {"M0 0c0 1 1 2 2 2 1 0 2-1 2-2", "0,0>0,1 1,2>2,2>3,2 4,1>4,0 open"},
      // Smooth curves mirror a curve of their own kind only.
      {"M0 0C0 10 10 20 20 20S40 10 40 0", "0,0>0,10 10,20>20,20>30,20 40,10>40,0 open"},
      {"M0 0L10 0s10 5 10 10", "0,0 10,0 20,5>20,10 open"},
      {"M0 0T30 0", "0,0 10,0>30,0 open"},
      {"M0 0Q30 30 60 0S90 30 120 0", "0,0>20,20 40,20>60,0 90,30>120,0 open"},
      // A quadratic's cubic control points lie two thirds of the way to its own.
      {"M0 0Q30 30 60 0T120 0", "0,0>20,20 40,20>60,0>80,-20 100,-20>120,0 open"},
      {"M0 0q30 30 60 0t60 0 60 0",
       "0,0>20,20 40,20>60,0>80,-20 100,-20>120,0>140,20 160,20>180,0 open"},
      // A closed outline does not repeat its first vertex, which sums of steps miss by a little.
      {"M0 0C1 1 2 2 9 0C9 3 -1 -2 0 0Z", "-1,-2>0,0>1,1 2,2>9,0>9,3 closed"},
      {"m.1.1 .1 0 .1 0 0 .3 -.2 -.3z", "0.1,0.1 0.2,0.1 0.3,0.1 0.3,0.4 closed"},
      {"M0 0L9 0L9 9L0 0", "0,0 9,0 9,9 0,0 open"}};
  for (const auto& [data, expected] : cases) {
    EXPECT_EQ(written(maskShapeFromPathData(data)), expected) << data;
  }
}

TEST(PathData, FaultsAreReportedWithTheirPlace) {
  const tests::Complaints cases = {
      {"", "the path data is empty"},
      {"L 1 2", "path data begins with M, not \"L\" (character 1)"},
      {"10 20", "\"1\" is no command; they are M, L, H, V, C, S, Q, T and Z (character 1)"},
      {"M 1 2 \x01", "the byte 0x01 is no command"},
      {"M 1 2 A 5 5 0 0 1 9 9", "arcs (A) are not supported; the commands are M, L,"},
      {"M 0-1.5.5", "\"M\" takes 2 numbers at a time, and one is missing (character 10)"},
      {"M 1 2 C 1 2 3 4 5 6 7 Z", "\"C\" takes 6 numbers at a time"},
      {"M 1 2 Q 1 2 3", "\"Q\" takes 4 numbers at a time"},
      {"M 1 2, L 3 4", "a comma is followed by no number (character 6)"},
      {"M 1 2 L 3,, 4", "\"L\" takes 2"},
      {"M nan 0", "\"M\" takes 2"},
      {"M +-1 0", "\"M\" takes 2"},
      {"M 1e999 0", "a number is beyond all measure (character 3)"},
      {"M 0 0 L 1000001 0", "\"L\" reaches further than a million pixels (character 7)"},
      {"M 0 0 h 9e5 9e5", "\"h\" reaches further"},
      {"M 0 0 C 0 -2e6 1 1 2 2", "\"C\" reaches further"},
      {"M 0 0 Q -5e5 0 9e5 0 T 0 0", "\"T\" reaches further"},
      {"M 0 0 L 1 1 M 2 2", "a second outline begins; a mask is a single one (character 13)"},
      {"M 0 0 L 1 1 z Z", "a second outline begins"}};
  tests::expectComplaints(cases, [](const std::string& data) {
    return tests::errorOf<scene::PathDataError>([&] { maskShapeFromPathData(data); });
  });
}

using SvgFileTest = tests::FolderTest;

TEST_F(SvgFileTest, AnyPathOfTheFileCanBeTaken) {
  write("f.svg",
        "<?xml version='1.0'?>\n<!DOCTYPE svg>\n<s:svg xmlns:s='http://www.w3.org/2000/svg'>\n"
        "<s:defs><s:g id='g'>\n<s:path d='M0 0' id='deep'/></s:g></s:defs>\n"
        "<path id='top' d='M1 1&#x20;2 2'/></s:svg>");
  EXPECT_EQ(scene::readSvgPath(path("f.svg"), "deep").data, "M0 0");
  const scene::SvgPath top = scene::readSvgPath(path("f.svg"), "top");
  EXPECT_EQ(top.data, "M1 1 2 2");
  EXPECT_EQ(top.place, path("f.svg").string() + ":6");
}

TEST_F(SvgFileTest, FaultyFilesAreRefusedWithTheReason) {
  const tests::Complaints cases = {
      {"no XML at all", ":1: not an SVG file: "},
      {"<svg>\n<path", ":2: not an SVG file: "},
      {"<svg><path id='stir' d=''/></svg>", "\" has no path with the id \"star\"; the nearest is"},
      {"<svg>\n<rect id='star'/></svg>", ":2: \"star\" is a <rect>, and a mask takes a <path>"},
      {"<svg><g transform='scale(2)'>\n<path id='star' d='M0 0'/></g></svg>",
       ":2: a transform moves \"star\""}};
  const auto readStar = [this] { scene::readSvgPath(path("f.svg"), "star"); };
  tests::expectComplaints(cases, [&](const std::string& svg) {
    write("f.svg", svg);
    const std::string message = tests::errorOf<scene::WorkError>(readStar);
    return message.substr(message.find("f.svg") + 5);
  });
  EXPECT_THROW(scene::readSvgPath(path(""), "star"), scene::WorkError);
}

}  // namespace
