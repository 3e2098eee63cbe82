// Parameter files: what they do to the host's records.
#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <limits>
#include <string_view>

#include "plugin/controls/parameter_file.h"
#include "plugin/sdk/codes.h"
#include "plugin/sdk/suites.h"
#include "tests/support/folder_test.h"

namespace {

constexpr std::int32_t kMost = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t kLeast = std::numeric_limits<std::int32_t>::min();

int suiteHolds;
bool suiteOffered;

SPErr acquire(const char* name, std::int32_t version, const void** suite) {
  static const PF_ParamUtilsSuite2 table{};
  if (!suiteOffered || version != 2 || std::strcmp(name, "PF Param Utils Suite") != 0) return 1;
  *suite = &table;
  ++suiteHolds;
  return 0;
}

SPErr release(const char*, std::int32_t) {
  --suiteHolds;
  return 0;
}

enum Index {
  kLayer,
  kCount,
  kSize,
  kAngle,
  kCheck,
  kColor,
  kStart,
  kPopup,
  kFloat,
  kPanel,
  kLong,
  kSizeAgain
};

class ParameterFileTest : public tests::FolderTest {
 protected:
  ParameterFileTest() {
    suiteHolds = 0;
    suiteOffered = true;
    basic.AcquireSuite = acquire;
    basic.ReleaseSuite = release;
    in.pica_basicP = &basic;
    reset();
  }

  // Every record unchanged, with 7 or 7.0 as the value of its type.
  void reset() {
    const auto declare = [&](Index index, PF_ParamType type, std::string_view name) {
      PF_ParamDef& def = records[index] = {};
      def.param_type = type;
      ASSERT_LE(name.size(), sizeof def.name);
      name.copy(def.name, name.size());
      def.flags = 0x41414141;  // what follows a name that fills its field is no part of it
      pointers[index] = &def;
    };
    declare(kLayer, PF_Param_LAYER, "Input");
    declare(kCount, PF_Param_SLIDER, "Count");
    declare(kSize, PF_Param_FIX_SLIDER, "Size");
    declare(kAngle, PF_Param_ANGLE, "Angle");
    declare(kCheck, PF_Param_CHECKBOX, "Check");
    declare(kColor, PF_Param_COLOR, "Color");
    declare(kStart, PF_Param_POINT, "Start");
    declare(kPopup, PF_Param_POPUP, "Popup");
    declare(kFloat, PF_Param_FLOAT_SLIDER, "Float");
    declare(kPanel, PF_Param_NO_DATA, "Panel");
    declare(kLong, PF_Param_SLIDER, "A name that fills all thirty-two");
    declare(kSizeAgain, PF_Param_FIX_SLIDER, "Size");
    for (const Index index : {kCount, kCheck, kPopup, kLong}) records[index].u.sd.value = 7;
    for (const Index index : {kSize, kAngle, kSizeAgain}) records[index].u.fd.value = 7 << 16;
    records[kFloat].u.fs_d.value = 7;
    out = {};
  }

  // False: the file was not taken, and nothing may have changed.
  bool applyFile(const std::string& name) {
    reset();
    const auto before = records;
    brisel::ApplyParameterFile(path(name).string().c_str(), kRecords, in, out, pointers, frame);
    EXPECT_EQ(suiteHolds, 0);
    const bool applied = out.out_flags == PF_OutFlag_REFRESH_UI;
    if (!applied) {
      EXPECT_EQ(out.out_flags, 0);
      EXPECT_EQ(std::memcmp(&before, &records, sizeof records), 0);
    }
    return applied;
  }
  bool applyBytes(const std::string& bytes) {
    write("file", bytes);
    return applyFile("file");
  }
  void apply(const std::string& lines) {
    EXPECT_TRUE(applyBytes("Tessaro parameters\r\n" + lines)) << lines;
  }

  // The value that the text after a slider's name gives it.
  std::int32_t count(const std::string& text) {
    apply("Count\r\n" + text);
    EXPECT_EQ(changed(kCount), records[kCount].u.sd.value != 7) << text;
    return records[kCount].u.sd.value;
  }
  bool changed(Index index) {
    return records[index].uu.change_flags == PF_ChangeFlag_CHANGED_VALUE;
  }

  static constexpr std::int32_t kRecords = 12;
  SPBasicSuite basic{};
  PF_InData in{};
  PF_OutData out{};
  brisel::FrameSize frame;
  std::array<PF_ParamDef, kRecords> records;
  PF_ParamDef* pointers[kRecords];
};

TEST_F(ParameterFileTest, IsRecognizedByTheBeginningOfItsFirstLine) {
  EXPECT_TRUE(applyBytes("Tessaro parameters of 12 stars\r\n;\r\nCount\r\n3\r\n"));
  EXPECT_EQ(records[kCount].u.sd.value, 3);
  for (const std::string header :
       {"tessaro parameters\r\n", "Tessaro  parameters\r\n", "\r\n", ""}) {
    EXPECT_FALSE(applyBytes(header + "Count\r\n3\r\n")) << header;
  }
  for (const std::string bytes : {"", "Tessaro", "Tessaro parameters", "Tessaro parameters\r\n"}) {
    EXPECT_FALSE(applyBytes(bytes)) << bytes;
  }
  EXPECT_FALSE(applyFile("none"));
  suiteOffered = false;
  EXPECT_FALSE(applyBytes("Tessaro parameters\r\nCount\r\n3\r\n"));
}

TEST_F(ParameterFileTest, StoresByTheTypeOfTheParameter) {
  apply(
      "Size\r\n25.5\r\n;Count\r\nAngle\r\n-90.25\r\nCheck\r\n1\r\nColor\r\n255 200 64 128\r\n"
      "Start\r\n0.5 0.25\r\nPopup\r\n3.9\r\nFloat\r\n0.1\r\nCount\r\n-12.9\r\n");
  EXPECT_EQ(records[kCount].u.sd.value, -12);
  EXPECT_EQ(records[kSize].u.fd.value, 1671168);
  EXPECT_EQ(records[kSizeAgain].u.fd.value, 7 << 16) << "the first of a name";
  EXPECT_EQ(records[kAngle].u.ad.value, -90 * 65536 - 16384);
  EXPECT_EQ(records[kCheck].u.bd.value, 1);
  const PF_Pixel color = records[kColor].u.cd.value;
  EXPECT_EQ((std::array{color.red, color.green, color.blue, color.alpha}),
            (std::array<A_u_char, 4>{255, 200, 64, 128}));
  EXPECT_EQ(records[kPopup].u.pd.value, 3);
  EXPECT_EQ(records[kFloat].u.fs_d.value, 0.1f);
  for (int i = kCount; i <= kFloat; ++i) EXPECT_TRUE(changed(Index(i))) << i;
}

TEST_F(ParameterFileTest, EqualValuesAreNoChangeForSomeTypes) {
  apply(
      "Count\r\n7\r\nSize\r\n7\r\nAngle\r\n7\r\nCheck\r\n7\r\nColor\r\n0 0 0 0\r\nStart\r\n0 0\r\n"
      "Popup\r\n7\r\nFloat\r\n7\r\n");
  for (const Index index : {kCount, kSize, kCheck}) EXPECT_FALSE(changed(index)) << index;
  for (const Index index : {kAngle, kColor, kStart, kPopup, kFloat})
    EXPECT_TRUE(changed(index)) << index;
}

TEST_F(ParameterFileTest, PointsAreFractionsOfTheFrame) {
  const auto point = [&](const std::string& numbers) {
    apply("Start\r\n" + numbers + "\r\n");
    return std::pair(records[kStart].u.td.x_value, records[kStart].u.td.y_value);
  };
  frame = {100, 50};
  EXPECT_EQ(point("0.5 -0.25"), std::pair(32768 * 100, -16384 * 50));
  in.height = 9;  // without a width it does not count
  EXPECT_EQ(point("1 1"), std::pair(65536 * 100, 65536 * 50));
  in.width = 1920;
  in.height = 1080;
  EXPECT_EQ(point("0.5 0.25"), std::pair(32768 * 1920, 16384 * 1080));
  EXPECT_EQ(point("20 -40"), std::pair(kMost, kLeast));
  EXPECT_EQ(point("-1e30 1e30"), std::pair(kLeast, kMost));
  in.width = 640;
  in.height = 480;
  EXPECT_FALSE(applyBytes("none"));
  EXPECT_EQ(std::pair(frame.width, frame.height), std::pair(640, 480)) << "even so";
  in.width = 320;
  EXPECT_FALSE(applyFile("none"));
  EXPECT_EQ(frame.width, 640) << "without a file nothing happens";
}

TEST_F(ParameterFileTest, NumbersAreReadAsFarAsTheyAreNumbers) {
  const std::pair<const char*, std::int32_t> cases[] = {{"12x", 12},       {"\r\n\t 12\r\n", 12},
                                                        {"1,5 ", 1},       {"1e3 ", 1000},
                                                        {"5e ", 5},        {"5E-", 0},
                                                        {"5e- ", 5},       {"5e2.5 ", 500},
                                                        {"--5 ", 0},       {"-.5e1 ", -5},
                                                        {".5 ", 5},        {"value 5 ", 0},
                                                        {"+3 ", 3},        {"0x10 ", 0},
                                                        {"1.2.3 ", 1},     {"16777217 ", 16777216},
                                                        {"1e10 ", kMost},  {"-1e10 ", kLeast},
                                                        {"1e999 ", kMost}, {"nan ", 0},
                                                        {"9", 0},          {"[12]\r\n", 0},
                                                        {"12]", 0},        {"] 9 ", 9},
                                                        {"]] 9 ", 0}};
  for (const auto& [text, expected] : cases) EXPECT_EQ(count(text), expected) << text;
  EXPECT_EQ(count(std::string(64, '0') + "9 "), 0) << "no more than 64 characters";
  EXPECT_EQ(count(std::string(63, '0') + "9 "), 9);
}

TEST_F(ParameterFileTest, AMissingNumberIsTheOneBefore) {
  EXPECT_EQ(count("5\r\nSize\r\n[12]\r\nPanel\r\n44\r\nAngle\r\n]\r\n"), 5);
  EXPECT_EQ(records[kSize].u.fd.value, 5 << 16);
  EXPECT_EQ(records[kAngle].u.ad.value, 44 << 16) << "parameters without a value read one too";
  EXPECT_FALSE(changed(kPanel));
  apply("Color\r\n10 20 30");
  const PF_Pixel color = records[kColor].u.cd.value;
  EXPECT_TRUE(color.red == 10 && color.green == 20 && color.blue == 20 && color.alpha == 20);
  EXPECT_EQ(count("]\r\n"), 0) << "every file starts with 0";
}

TEST_F(ParameterFileTest, HugeNumbersSaturateOrKeepTheirLowBits) {
  apply("Size\r\n40000\r\nAngle\r\n-1e9\r\nCheck\r\n4294967296e1\r\nPopup\r\n-1e30\r\n");
  EXPECT_EQ(records[kSize].u.fd.value, kMost);
  EXPECT_EQ(records[kAngle].u.ad.value, kLeast);
  EXPECT_EQ(records[kCheck].u.bd.value, 0);
  EXPECT_EQ(records[kPopup].u.pd.value, 0);
  apply("Check\r\n1e30\r\nPopup\r\n6442450944\r\nColor\r\n300 -1 1e20 -1e20\r\n");
  EXPECT_EQ(records[kCheck].u.bd.value, -1);
  EXPECT_EQ(records[kPopup].u.pd.value, kLeast);
  const PF_Pixel color = records[kColor].u.cd.value;
  EXPECT_TRUE(color.red == 44 && color.green == 255 && color.blue == 255 && color.alpha == 0);
}

TEST_F(ParameterFileTest, NamesAreWholeLines) {
  EXPECT_EQ(count("3\r\nSize  \r\n1\r\n Angle\r\n1\r\nCheck\tbox\r\n1\r\nFloa\r\n1\r\n"), 3);
  EXPECT_TRUE(changed(kSize) && !changed(kAngle) && changed(kCheck) && !changed(kFloat));
  apply("A name that fills all thirty-two\r\n1\r\ncount\r\n1\r\nCounts\r\n1\r\n");
  EXPECT_TRUE(changed(kLong) && !changed(kCount));
  EXPECT_EQ(count("3\r\nA name that fills all thirty-twoA\r\n1\r\n"), 3);
  EXPECT_FALSE(changed(kLong));
  for (const std::size_t length : {1023u, 1024u, 5000u}) {
    EXPECT_EQ(count("1\r\n" + std::string(length, 'x') + "\r\n2\r\nSize\r\n3\r\n"), 1);
    EXPECT_EQ(records[kSize].u.fd.value, 3 << 16);
  }
  apply("Nothing\r\nCount\r\n4\r\n");
  EXPECT_EQ(records[kCount].u.sd.value, 4) << "a name that nobody has is one line";
  EXPECT_EQ(count("1\nSize\n2\n"), 1);
  EXPECT_FALSE(changed(kSize)) << "a bare line feed ends the number, and the next line is lost";
}

TEST_F(ParameterFileTest, SomeRecordsMayBeMissing) {
  write("file", "Tessaro parameters\r\nSize\r\n1\r\nCount\r\n2\r\n");
  pointers[kSize] = nullptr;
  brisel::ApplyParameterFile(path("file").string().c_str(), kSizeAgain, in, out, pointers, frame);
  EXPECT_TRUE(changed(kCount) && !changed(kSize) && !changed(kSizeAgain));
}

}  // namespace
