// Scenes and clips from strangers: files that name others, lists that pass for clips, and what is
// larger than any memory.
#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/stat.h>

#include "cli/media/soundtrack.h"
#include "cli/scene/scene_plan.h"
#include "cli/support/errors.h"
#include "cli/support/file_descriptor.h"
#include "tests/cli/commands/render_fixture.h"
#include "tests/support/complaints.h"

namespace {

using tests::CommandResult;
using tests::picturesOf;

std::string repeated(int count, const std::string& text) {
  std::string all;
  for (int i = 0; i < count; ++i) all += text;
  return all;
}

class StrangersTest : public tests::RenderTest {
 protected:
  void makeStills(const std::string& names) const {
    ffmpeg("-f lavfi -i testsrc2=s=16x16 -frames:v 3 " + names);
  }
  // What reading a scene says, without the folder of all.
  std::string complaintAbout(const std::string& scene,
                             const cli::SceneOptions& options = {}) const {
    std::string said = tests::errorOf<cli::WorkError>(
        [&] { cli::planScene(cli::readScene(path(scene), options), options); });
    for (std::size_t at; (at = said.find(folder())) != said.npos;) said.erase(at, folder().size());
    return said;
  }
};

// Sends nobody anything; whether somebody has called.
class Listener {
 public:
  Listener() : socket_(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    auto* any = reinterpret_cast<sockaddr*>(&address);
    EXPECT_EQ(bind(socket_.get(), any, size), 0);
    EXPECT_EQ(listen(socket_.get(), 8), 0);
    getsockname(socket_.get(), any, &size);
    port_ = std::to_string(ntohs(address.sin_port));
  }
  bool wasCalled() const {
    pollfd state{socket_.get(), POLLIN, 0};
    return poll(&state, 1, 0) > 0;
  }
  const std::string& port() const { return port_; }

 private:
  cli::FileDescriptor socket_;
  std::string port_;
};

TEST_F(StrangersTest, ScenesNameFilesBelowTheirFolderOnly) {
  for (const char* name : {"in", "in/sub"}) std::filesystem::create_directory(path(name));
  makeStills("out_%03d.png");
  makeStills("in/f_%03d.png");
  std::filesystem::create_directories(path("in/a\nfile b"));
  std::filesystem::copy(path("in/f_001.png"), path("in/a\nfile b/c.png"));
  write("out.svg", "<svg><path id='a' d='M0 0H5V5Z'/></svg>");
  std::filesystem::create_symlink("..", path("in/up"));
  std::filesystem::create_symlink("../out_001.png", path("in/link.png"));
  std::filesystem::create_symlink("../out.svg", path("in/link.svg"));
  std::filesystem::create_symlink("loop.png", path("in/loop.png"));
  std::filesystem::create_symlink("f_001.png", path("in/own.png"));
  std::filesystem::copy(path("in/f_001.png"), path("in/g_001.png"));
  std::filesystem::create_symlink("../out_002.png", path("in/g_002.png"));
  ASSERT_EQ(mkfifo(path("in/pipe.png").c_str(), 0600), 0);
  ASSERT_EQ(mkfifo(path("in/pipe.svg").c_str(), 0600), 0);
  // What a reader that goes from number to number would come to behind the last picture.
  for (const char* name :
       {"p_001.png", "p_002.png", "e.Y", "z_4294967297.png", "z_4294967298.png"}) {
    std::filesystem::copy(path("in/f_001.png"), path("in") / name);
  }
  ASSERT_EQ(mkfifo(path("in/p_003.png").c_str(), 0600), 0);
  const std::string outside =
      " lies outside the scene's folder; move it there, or allow its folder ";
  const tests::Complaints cases = {
      {"input = 'f_001.png'", "none"},
      {"input = 'f_%03d.png'", "none"},
      {"input = 'sub/../own.png'", "none"},
      {"input = '" + path("in/f_001.png").string() + "'", "none"},
      {"input = '../out_001.png'", "in/s.toml:2: the input \"in/../out_001.png\"" + outside},
      {"input = '" + path("out_001.png").string() + "'",
       "in/s.toml:2: the input \"out_001.png\"" + outside},
      {"input = 'link.png'", "in/s.toml:2: the input \"in/link.png\"" + outside},
      {"input = \"a\\nfile b/*.png\"", "in/s.toml:2: files with a line break in their path cannot"},
      {"input = 'loop.png'", "in/s.toml:2: the input \"in/loop.png\" cannot be found: "},
      {"input = 'up/out_%03d.png'", "in/s.toml:2: the input \"in/up/out_%03d.png\"" + outside},
      {"input = 'u*/out_*.png'", "in/s.toml:2: the input \"in/up/out_001.png\"" + outside},
      {"input = 'g_%03d.png'", "in/s.toml:2: the input \"in/g_002.png\"" + outside},
      {"input = 'g_001.png'", "in/s.toml:2: the input \"in/g_002.png\"" + outside},
      {"input = '../none/out.png'", "in/s.toml:2: the input \"in/../none/out.png\"" + outside},
      {"input = '/dev/zero'", "in/s.toml:2: the input \"/dev/zero\"" + outside},
      {"input = 'pipe.png'", "in/s.toml:2: the input \"in/pipe.png\" is a pipe; give it with -i"},
      {"input = 'p_%03d.png'",
       "in/s.toml:2: \"in/p_003.png\", of the input \"in/p_%03d.png\", is a folder, a device or a"},
      {"input = 'p_001.png'", "in/s.toml:2: \"in/p_003.png\", of the input \"in/p_001.png\", is"},
      {"input = 'p_00[1-2].png'", "none"},
      {"input = 'p_002.png'", "none"},
      {"input = 'e.Y'", "in/s.toml:2: the input \"in/e.Y\" is one plane of a picture, of which"},
      {"input = 'z_#.png'", "in/s.toml:2: the numbers of the input \"in/z_#.png\" lead above 2147"},
      {"input = 'sub'", "in/s.toml:2: the input \"in/sub\" is a folder"},
      {"input = '-'", "in/s.toml:2: the input \"in/./-\" does not exist"},
      {"mask = '../out.svg#a'", "in/s.toml:2: mask: the file \"in/../out.svg\"" + outside},
      {"mask = 'link.svg#a'", "in/s.toml:2: mask: the file \"in/link.svg\"" + outside},
      {"mask = '/proc/self/mem#a'", "in/s.toml:2: mask: the file \"/proc/self/mem\"" + outside},
      {"mask = 'pipe.svg#a'", "in/s.toml:2: mask: \"in/pipe.svg\" is a device or a pipe, not a"},
      {"mask = 'sub#a'", "in/s.toml:2: mask: \"in/sub\" is a folder"}};
  cli::SceneOptions allowing;
  allowing.allowed = {folder()};
  for (const auto& [line, complaint] : cases) {
    write("in/s.toml", "[scene]\n" + line + "\nsize = [16, 16]\n");
    const std::string said = complaintAbout("in/s.toml");
    EXPECT_TRUE(said.starts_with(complaint)) << line << "\n" << said;
    const bool isThere = line.find("none") == line.npos && line.find("/dev") == line.npos;
    if (complaint.find("outside") != complaint.npos && isThere && line.find("/proc") == line.npos) {
      EXPECT_EQ(complaintAbout("in/s.toml", allowing), "none") << line;
    }
  }
  // The option itself, and that one's own -i is nobody else's business.
  write("in/s.toml", "[scene]\nframes = 1\nsize = [16, 16]\ninput = '../out_001.png'\n");
  const CommandResult refused = render("in/s.toml -o o.png");
  EXPECT_EQ(refused.exitCode, 1);
  EXPECT_EQ(refused.err, "brisel: in/s.toml:4: the input \"in/../out_001.png\"" + outside +
                             "with --allow \"" + std::filesystem::canonical(path("")).string() +
                             "\"\n");
  renders("in/s.toml -o o.png --allow .");
  renders("in/s.toml -o p.png -i out_001.png --still");
  EXPECT_EQ(render("in/s.toml -o q.png --allow none").exitCode, 2);
}

// Each stands for what would open another file or the network if it were opened as what it is.
TEST_F(StrangersTest, ListsThatPassForClipsOpenNothing) {
  makeStills("secret_%d.png");
  ffmpeg(
      "-f lavfi -i testsrc2=s=16x16:d=1 -f lavfi -i sine=d=1 -c:v mpeg2video -f mpegts secret.ts");
  const Listener listener;
  const std::string url = "http://127.0.0.1:" + listener.port() + "/x.ts";
  const std::string hls = "#EXTM3U\n#EXT-X-TARGETDURATION:1\n#EXTINF:1,\n";
  const std::vector<std::pair<std::string, std::string>> files = {
      {"a.mp4", "ffconcat version 1.0\nfile secret.ts\n"},
      {"b.mov", "ffconcat version 1.0\nfile " + url + "\n"},
      {"c.mp4", hls + url + "\n#EXT-X-ENDLIST\n"},
      {"d.m3u8", hls + "secret.ts\n#EXT-X-ENDLIST\n"},
      {"e.mkv", hls + "concat:secret.ts\n#EXT-X-ENDLIST\n"},
      {"f.mp4",
       "<?xml version=\"1.0\"?><MPD xmlns=\"urn:mpeg:dash:schema:mpd:2011\" "
       "profiles=\"urn:mpeg:dash:profile:isoff-on-demand:2011\"><Period><AdaptationSet><"
       "Representation id=\"1\"><BaseURL>" +
           url +
           "</BaseURL></Representation>"
           "</AdaptationSet></Period></MPD>"},
      {"g.mov", "v=0\no=- 0 0 IN IP4 127.0.0.1\ns=x\nc=IN IP4 127.0.0.1\nt=0 0\nm=video " +
                    listener.port() + " RTP/AVP 32\n"},
      {"h.png", "ffconcat version 1.0\nfile secret_1.png\n"}};
  for (const auto& [list, text] : files) {
    const std::string name = list;  // clang takes no part of a pair into a lambda
    write(name, text);
    const std::string said =
        tests::errorOf<cli::WorkError>([&] { cli::probeMedia(cli::findSource(path(name))); });
    EXPECT_NE(said.find("it is a list of other files, or of a kind"), said.npos) << name << said;
    const std::string sound = tests::errorOf<cli::WorkError>(
        [&] { cli::findSoundtrack(cli::findSource(path(name)), 0, 1); });
    EXPECT_NE(sound.find("it is a list of other files, or of a kind"), sound.npos) << sound;
  }
  setenv("AV_LOG_FORCE_COLOR", "1", 1);
  setenv("FFREPORT", ("file=" + path("report").string()).c_str(), 1);
  const CommandResult result = render("s.toml -i c.mp4 -o o.mov");
  unsetenv("AV_LOG_FORCE_COLOR");
  unsetenv("FFREPORT");
  EXPECT_FALSE(std::filesystem::exists(path("report")));
  EXPECT_EQ(result.err,
            "brisel: cannot read the input \"c.mp4\": it is a list of other files, or of a kind "
            "that is not read\n");
  EXPECT_EQ(brisel({"join", "a.mp4", "-o", "j.mp4"}).exitCode, 1);
  // One of numbered pictures with a gap, which are read by a list of ours.
  makeStills("n_%d.png");
  std::filesystem::rename(path("n_3.png"), path("n_4.png"));
  write("n_4.png", read("h.png"));
  EXPECT_LE(picturesOf(cli::probeMedia(cli::findSource(path("n_%d.png"), {.tolerateDamage = true}),
                                       {.tolerateDamage = true}))
                .size(),
            3u);
  EXPECT_FALSE(listener.wasCalled());
}

TEST_F(StrangersTest, NamesAreNoProtocolsOptionsOrPatterns) {
  makeStills("one_%d.png");
  for (const std::string name : {"http:x.png", "-x.png", "concat:a|b.png", "%d.png", "x*.png",
                                 "[1].png", "a'b.png", "x%%.png"}) {
    std::filesystem::copy(path("one_1.png"), path(name));
    EXPECT_EQ(picturesOf(path(name)).size(), 1u) << name;
  }
  EXPECT_EQ(picturesOf(path("*%*.png")).size(), 2u) << "the same in a list";
}

TEST_F(StrangersTest, WhatIsTooLargeIsRefusedBeforeItIsTaken) {
  // A small picture that claims to be a large one; nobody looks at the checksum.
  makeStills("small_%d.png");
  const auto png = [this](int side) {
    std::string bytes = read("small_1.png");
    for (const std::size_t at : {std::size_t{16}, std::size_t{20}}) {
      bytes[at + 2] = static_cast<char>(side >> 8);
      bytes[at + 3] = static_cast<char>(side);
    }
    return bytes;
  };
  write("60000.png", png(60000));
  write("12000.png", png(12000));
  write("vertices.svg", "<svg><path id='a' d='M" + repeated(100'001, "1 1 ") + "'/></svg>");
  write("large.svg", "");
  std::filesystem::resize_file(path("large.svg"), std::uintmax_t{1} << 30);
  write("gigabyte.toml", "");
  std::filesystem::resize_file(path("gigabyte.toml"), std::uintmax_t{1} << 30);
  ASSERT_EQ(mkfifo(path("pipe.toml").c_str(), 0600), 0);
  write("frame.toml", "[scene]\nsize = [30000, 30000]\nframes = 1\n");
  write("deep.toml", "[params]\nx = " + std::string(1'000'000, '['));
  write("dots.toml", "[params]\n" + repeated(1'000'000, "a.") + "a = 1\n");
  write("header.toml", "\n[" + repeated(1'000'000, "\"a.\" . ") + "a]\n");
  write("escape.toml", "[scene]\n\"\\u001B[2J\" = 1\n");
  write("vertices.toml", "[scene]\nmask = 'vertices.svg#a'\n");
  write("svg.toml", "[scene]\nmask = 'large.svg#a'\n");
  std::filesystem::copy(path("small_1.png"), path("small_9999.png"));
  const tests::Complaints cases = {
      {"s.toml --tolerate-damage -i small_%d.png",
       "the input \"small_%d.png\" lacks 9995 numbers, and 5000 at most are bridged"},
      {"s.toml -i 60000.png",
       "the input \"60000.png\" holds no picture that can be read: its "
       "pictures of 60000x60000 are too large for ffmpeg"},
      {"s.toml -i 12000.png",
       "the input \"12000.png\" holds no picture that can be read: its "
       "pictures of 12000x12000 take more than --limit-memory allows"},
      {"frame.toml", "frames of 30000x30000 pixels would take about "},
      {"gigabyte.toml", "the scene \"gigabyte.toml\" is larger than 16 MB, the most that is read"},
      {"pipe.toml", "the scene \"pipe.toml\" is a device or a pipe, not a file"},
      {"/dev/zero", "the scene \"/dev/zero\" is a device or a pipe, not a file"},
      {"deep.toml", "deep.toml:2: values are nested too deeply"},
      {"dots.toml", "dots.toml:2: a key has more than 16 parts"},
      {"header.toml", "header.toml:2: a key has more than 16 parts"},
      {"escape.toml", "escape.toml:2: unknown key \"\\x1B[2J\"; the nearest is"},
      {"vertices.toml", "vertices.toml:2: mask: vertices.svg:1: a mask has 100000 vertices at"},
      {"svg.toml", "svg.toml:2: mask: \"large.svg\" is larger than 16 MB"}};
  for (const auto& [arguments, message] : cases) {
    const CommandResult result = render(arguments + " -o o.mov --limit-memory 500M");
    EXPECT_EQ(result.exitCode, 1) << arguments;
    EXPECT_TRUE(result.isOneSentence()) << result.err;
    EXPECT_TRUE(result.err.starts_with("brisel: " + message)) << arguments << ": " << result.err;
  }
  for (const std::string limit : {"lots", "-1", "1.5G", "99999999G"}) {
    const CommandResult result = render("s.toml -o o.mov --limit-memory " + limit);
    EXPECT_EQ(result.exitCode, 2) << limit;
    EXPECT_TRUE(result.err.find(limit + "\" is no size such as 500M or 2G") != result.err.npos)
        << result.err;
  }
}

}  // namespace
