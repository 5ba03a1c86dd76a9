// htdoc draw and meta: scripts to SVG, to the character, directly and through a recording.

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

class HtDocDraw : public testing::Test {
 protected:
  HtDocDraw() { fs::create_directories(FFolder); }
  ~HtDocDraw() override { fs::remove_all(FFolder); }

  void Write(const std::string& name, const std::string& bytes) {
    std::ofstream(FFolder / name, std::ios::binary) << bytes;
  }
  // Draws a script; what was printed, on either stream.
  std::string Draw(const std::string& script, const std::string& options = {}, int status = 0) {
    Write("script", script);
    return Run("draw " + options + " script", status);
  }
  std::string Run(const std::string& arguments, int status = 0) {
    const std::string command =
        "cd '" + FFolder.string() + "' && '" HT_PROGRAM "' " + arguments + " --fixed-fonts 2>&1";
    FILE* pipe = popen(command.c_str(), "r");
    std::string output;
    for (int c; (c = std::fgetc(pipe)) != EOF;) output += static_cast<char>(c);
    const int result = pclose(pipe);
    EXPECT_EQ(WIFEXITED(result) ? WEXITSTATUS(result) : -1, status) << output;
    return output;
  }
  std::string Read(const std::string& name) {
    std::ifstream file(FFolder / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }

 private:
  fs::path FFolder = fs::path(testing::TempDir()) / ("htdoc_draw_" + std::to_string(getpid()));
};

const std::string kHead =
    R"(<svg version="1.0" xmlns="http://www.w3.org/2000/svg" xmlns:xlink="http://www.w3.org/1999/xlink" )";

TEST_F(HtDocDraw, Commands) {
  const std::pair<const char*, std::string> kCases[] = {
      {"", ""},
      {"# nothing\n\n   \n", ""},
      {"line 1 2 3 4\r\n", R"(<line x1="1" y1="2" x2="3" y2="4" stroke="#000000" stroke-width="1"/>)"},
      {"pen 80FF0000 2.5 dashdot\ndashes 5 2\nrect 1 2 3 4",
       R"(<rect fill="none" x="1" y="2" width="3" height="4" stroke="#ff000080" stroke-width="2.5" stroke-dasharray="8,1,1,1"/>)"},
      {"fillrect 1 2 3 4\nbrush 00123456\nfillellipse 0 0 4 2",
       R"(<rect x="1" y="2" width="3" height="4" fill="#000000" fill-opacity="1"/><ellipse cx="2" cy="1" rx="2" ry="1" fill="#123456" fill-opacity="0"/>)"},
      {"roundrect 0 0 9 8 1 2\nellipse 0 0 4 2",
       R"(<rect fill="none" x="0" y="0" width="9" height="8" rx="1" ry="2" stroke="#000000" stroke-width="1"/><ellipse cx="2" cy="1" rx="2" ry="1" fill="none" stroke="#000000" stroke-width="1"/>)"},
      {"linear 90 0 0 9 8 0:FFFFFFFF 1:FF000000\nfillroundrect 0 0 9 8 1 2",
       R"~(<linearGradient id="lg0" gradientUnits="userSpaceOnUse" x1="0" y1="0" x2="9" y2="8"><stop offset="0" stop-color="#ffffff" stop-opacity="1"/> <stop offset="1" stop-color="#000000" stop-opacity="1"/></linearGradient><rect style="fill:url(#lg0)" stroke="none" x="0" y="0" width="9" height="8" rx="1" ry="2"/>)~"},
      {"radial 1 2 3 4 5 0:FF0000FF\nfillpath M0 0 4 0 4 4z",
       R"~(<radialGradient id="rg0" gradientUnits="userSpaceOnUse" cx="1" cy="2" r="5" fx="3" fy="4"><stop offset="0" stop-color="#0000ff" stop-opacity="1"/> <stop offset="1" stop-color="#0000ff" stop-opacity="1"/></radialGradient><path  fill="none" style="fill:url(#rg0)"  d="M0 0h4 v4 z "/>)~"},
      {"path M0 0L1 2", R"(<path fill="none" stroke="#000000" stroke-width="1" d="M0 0l1 2 "/>)"},
      {"save\ncliprect 1 2 3 4\ntranslate 5 6\nrestore\nclippath M0 0 5 5 0 9",
       R"~(<defs><clipPath id="0"><rect x="1" y="2" width="3" height="4"/></clipPath></defs><g clip-path="url(#0)"><g transform="translate(5,6)"></g></g><defs><clipPath id="c1"><path d="M0 0l5 5 -5 4 "/></clipPath></defs><g clip-path="url(#c1)"></g>)~"},
      {"scale 2 3\nrotate 90\nmatrix 1 2 3 4 5 6",
       R"~(<g transform=" scale(2,3)"><g transform="matrix(0,1,-1,0,0,0)"><g transform="matrix(1,2,3,4,5,6)"></g></g></g>)~"},
      {"text 1 2 3 4 one  <two> \nfont 10 bold+underline My Font\ncolor FF00FF00\nanchor here\ntext 1 2 3 4 "
       "x",
       "<text x=\"1\" y=\"14.8\" class=\"f0\">one  &lt;two&gt; </text>\r\n"
       "<text x=\"1\" y=\"10\" id=\"here\" class=\"f1\" style=\"text-decoration:underline;\">x</text>\r\n"},
      {"link a?b&c The title\nline 0 0 1 1\nendlink",
       R"(<a href="a?b&amp;c" title="The title"><line x1="0" y1="0" x2="1" y2="1" stroke="#000000" stroke-width="1"/></a>)"},
      {"image script 1 2 3 4",
       R"(<image x="1" y="2" width="3" height="4" xlink:href="data:image/bitmap;base64,aW1hZ2Ugc2NyaXB0IDEgMiAzIDQ="/>)"},
      {"check 0 0 20 20 disabled+hover",
       R"(<rect fill="none" x="1" y="1" width="18" height="18" stroke="#aaaaaa" stroke-width="1"/>)"},
      {"radio 0 0 23 23 -",
       R"(<ellipse cx="10" cy="10" rx="10" ry="10" fill="none" stroke="#000000" stroke-width="1"/>)"},
      {"wavy 0 5 9 5", R"(<path fill="none" stroke="#000000" stroke-width="1" d="M0 6l3 -2 3 2 3 -2 "/>)"},
  };
  for (const auto& [script, expected] : kCases) EXPECT_EQ(Draw(script), expected) << script;
  EXPECT_EQ(Draw("font 12 italic A\ntext 0 0 1 1 x", "--style"),
            ".f0{font-family: A;font-size:12px;fill:#000000;font-style:italic;}\r\n");
  EXPECT_NE(Draw("button 0 0 40 20 pressed").find("#a5d0e5"), std::string::npos);
}

TEST_F(HtDocDraw, Pages) {
  const std::string script = "page 25.4 50.8 96\nline 0 0 1 1\npage 50.8 25.4 48\n";
  const std::string first =
      kHead +
      R"(width="96" height="192"><line x1="0" y1="0" x2="1" y2="1" stroke="#000000" stroke-width="1"/></svg>)";
  const std::string second = kHead + R"(width="96" height="48"></svg>)";
  EXPECT_EQ(Draw(script), first + "\n" + second + "\n");
  EXPECT_EQ(Draw(script, "-o a.b.svg"), "");
  EXPECT_EQ(Read("a.b-1.svg"), first);
  EXPECT_EQ(Read("a.b-2.svg"), second);
  EXPECT_EQ(Draw("page 25.4 25.4 1", "-o one.svg"), "");
  EXPECT_EQ(Read("one.svg"), kHead + R"(width="1" height="1"></svg>)");
}

TEST_F(HtDocDraw, Faults) {
  const std::pair<const char*, const char*> kCases[] = {
      {"\nblot 1", "line 2: unknown command blot"},
      {"line 1 2 3", "line 1: a word is missing"},
      {"line 1 2 3 4 5", "line 1: too many words for line"},
      {"line 1 2 3 nan", "line 1: no number: nan"},
      {"line 1 2 3 4x", "line 1: no number: 4x"},
      {"brush FF00", "line 1: no color AARRGGBB: FF00"},
      {"pen FF000000 1 dotted", "line 1: unknown word dotted"},
      {"font 10 bold+fat A", "line 1: unknown word fat"},
      {"linear 0 0 0 1 1", "line 1: a word is missing"},
      {"linear 0 0 0 1 1 FF000000", "line 1: no stop POS:COLOR: FF000000"},
      {"pen FF000000 0\ndashes 1", "line 2: the pen is 0 wide"},
      {"path M0 0 B1", "line 1: Unknown path command B"},
      {"save\nrestore\nrestore", "line 3: restore without save"},
      {"line 0 0 1 1\npage 1 1 96", "line 2: page stands behind what is drawn without one"},
      {"image missing.png 0 0 1 1", "line 1: Cannot open file \"missing.png\"."},
  };
  for (const auto& [script, message] : kCases) {
    const std::string output = Draw(script, {}, 2);
    EXPECT_NE(output.find(message), std::string::npos) << script << ": " << output;
  }
  EXPECT_NE(Draw("", "-o a.hmeta --style", 2).find("no style"), std::string::npos);
}

TEST_F(HtDocDraw, Recorded) {
  const std::string page = "page 25.4 50.8 96\n";
  const std::string script =
      page + "line 0 0 1 1\nsave\nrotate 15\ntext 5 6 60 20 A \"b\"\nrestore\n" + page +
      "linear 90 0 0 9 8 0:FFFFFFFF 1:FF000000\nfillpath M0 0H9V9\n" + page +
      "pen 80FF0000 2 dash\nroundrect 1 2 30 40 5 6\nbrush FF00FF00\nfillrect 1 2 3 4\n";
  const std::string direct = Draw(script);
  EXPECT_EQ(Draw(script, "-o r.hmeta"), "");
  EXPECT_EQ(Run("meta r.hmeta --check"), "true\n");
  EXPECT_EQ(Run("meta r.hmeta --opacity 1 --page 96x192"), direct);
  EXPECT_EQ(Run("meta r.hmeta --svg p --page 96x192"), "");
  EXPECT_EQ(Read("p-1.svg") + "\n" + Read("p-2.svg") + "\n" + Read("p-3.svg") + "\n", direct);
  const std::string third =
      R"(<rect fill="none" x="1" y="2" width="30" height="40" rx="5" ry="6" stroke="#ff0000)";
  const std::string tail = R"("/><rect x="1" y="2" width="3" height="4" fill="#00ff00" fill-opacity=")";
  EXPECT_EQ(Run("meta r.hmeta --order 3 --opacity .5 --page 9x9"),
            kHead + R"(width="9" height="9">)" + third + R"(40" stroke-width="2" stroke-dasharray="8)" +
                tail + ".5\"/></svg>\n");
  const std::string sheet = Run("meta r.hmeta --sheet 2x1 --page 100x200 --style");
  EXPECT_EQ(sheet.find(kHead + R"(width="200" height="100"><style>.f0{)"), 0u) << sheet;
  EXPECT_NE(sheet.find(R"~(<g transform="matrix(.5,0,0,.5,100,0)"><linearGradient)~"), sheet.npos) << sheet;

  const std::string dump = Run("meta r.hmeta");
  EXPECT_EQ(dump, Run("meta r.hmeta --dump"));
  for (
      const char* line :
      {R"({"page":1,"record":"line","x1":0,"y1":0,"x2":1,"y2":1,"Pen":{"FLineJoin":"ljMiter","FLineCap":"lcFlat","FColor":"FF000000","FWidth":1,"FPenStyle":"hpsSolid","FDashOffset":0,"FMode":"ldmCopy","Dashes":[]}})",
       R"({"page":1,"record":"state","Save":true})",
       R"({"page":1,"record":"matrix","M":[0.9659,0.2588,-0.2588,0.9659,0,0],"Flags":"mfRotation"})",
       R"({"page":1,"record":"text","Text":"A \"b\"","Font":{"FFamily":"Arial","FHeight":16},"FontStyle":[],"RTL":false)",
       R"({"page":2,"record":"path","Path":{"Data":"M0 0h9 v9 ","FForClip":false,"FillModeWinding":false},"Fill":true,"Bounds":[0,0,9,9],"Brush":{"Kind":"hbGradient","Angle":90,)",
       R"({"page":3,"record":"rect","X":1,"Y":2,"w":3,"h":4,"Rx":0,"Ry":0,"Rounded":false,"Fill":true,"Stroke":false,"BrushColor":"FF00FF00"})"})
    EXPECT_NE(dump.find(line), dump.npos) << line << "\n" << dump;

  const std::string bytes = Read("r.hmeta");
  Write("cut.hmeta", bytes.substr(0, bytes.size() - 1));
  EXPECT_EQ(Run("meta cut.hmeta --check", 1), "false\n");
  EXPECT_NE(Run("meta cut.hmeta", 2).find("Stream read error"), std::string::npos);
  const std::pair<const char*, const char*> kFaults[] = {
      {"--order 4", "--order: no number from 1 to 3: 4"},
      {"--sheet 2", "--sheet: no pair of numbers AxB: 2"},
      {"--sheet 1x1 --order 1", "leave out --sheet or --order"},
      {"--opacity nan", "--opacity: no number from 0"},
  };
  for (const auto& [options, message] : kFaults)
    EXPECT_NE(Run(std::string("meta r.hmeta ") + options, 2).find(message), std::string::npos) << options;
}

}  // namespace
