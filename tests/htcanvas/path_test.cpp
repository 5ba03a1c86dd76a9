#include <cmath>
#include <gtest/gtest.h>

#include "htcanvas/custompath.h"
#include "htruntime/exception.h"
#include "logcanvas.h"

namespace ht {
namespace {

// One letter a record, then its numbers.
std::string Records(const THtCustomPath& path) {
  std::string text;
  for (int32_t i = 0; i < path.Count(); ++i) {
    const THtPathRec& record = path.GetRec(i);
    std::string numbers;
    if (record.Kind <= prLineTo) numbers = Words("", record.Point.X, record.Point.Y);
    for (const TPointF& point : record.Points) numbers += Words("", point.X, point.Y);
    text += (i > 0 ? " " : "") + std::string(1, "MLCASZEQP"[record.Kind]) +
            numbers.substr(numbers.empty() ? 0 : 1);
  }
  return text;
}

std::string Parsed(std::u16string_view data) {
  THtCustomPath path;
  path.Parse(data);
  return Records(path);
}

TEST(Path, Parses) {
  const struct {
    const char16_t* Data;
    const char* Records;
  } cases[] = {
      {u"", ""},
      {u"M10 20 30 40", "M10 20 L30 40"},
      {u"m1 1 1 1", "M1 1 L2 2"},
      {u"M0 0 L1 0 L2 0", "M0 0 L2 0"},
      {u"M0,0 L1,1 Z M5,5 L6,6", "M0 0 L1 1 Z M5 5 L6 6"},
      {u"M2 3 L9 9 Z L1,1", "M2 3 L9 9 Z M2 3 L1 1"},
      {u"M2 3 L9 9 ZZz l1,1", "M2 3 L9 9 Z M2 3 L3 4"},
      {u"M0 0 C1 1 2 2 3 3 4 4 5 5 6 6", "M0 0 C1 1 2 2 3 3 C4 4 5 5 6 6"},
      {u"M1 1 c1 1 2 2 3 3 1 0 2 0 3 0", "M1 1 C2 2 3 3 4 4 C5 4 6 4 7 4"},
      {u"M0 0C0 1 1 2 2 2S4 3 4 4", "M0 0 C0 1 1 2 2 2 C3 2 4 3 4 4"},
      {u"M0 0c0 1 1 2 2 2s1 0 2 2 1 0 2 2", "M0 0 C0 1 1 2 2 2 C3 2 3 2 4 4 C5 6 5 4 6 6"},
      {u"M1 2S3 4 5 6", "M1 2 C1 2 3 4 5 6"},
      {u"M0 0Q3 3 6 0", "M0 0 C2 2 4 2 6 0"},
      {u"M0 0q3 3 6 0t6 0 6 0", "M0 0 C2 2 4 2 6 0 C8 -2 10 -2 12 0 C14 2 16 2 18 0"},
      {u"M0 0T6 6", "M0 0 C0 0 2 2 6 6"},
      {u"M1 1H5V7h-2v-3", "M1 1 L5 1 L5 7 L3 7 L3 4"},
      {u"M0 0a1 1 0 00 2 0", "M0 0 A0 -1 2 2 180 -180"},
      {u"M0 0a1 1 0 012 0", "M0 0 A0 -1 2 2 180 180"},
      {u"M10 0A10 10 0 0 1 0 10", "M10 0 A-10 -10 20 20 0 90"},
      {u"M10 0A10 10 0 1 0 0 10", "M10 0 A-10 -10 20 20 0 -270"},
      {u"M0 0a1 1 0 0 1 4 0", "M0 0 A0 -2 4 4 180 180"},  // radii too small
      {u" , ; M 1 , 2 # 3 4 ", "M1 2 L3 4"},
      {u"M.5.5-.5-.5", "M0.5 0.5 L-0.5 -0.5"},
      {u"M1e1 0", "M10 0"},
      {u"M0 0L", "M0 0"},
      {u"M3 4a9 9 0 0 1 0 0L5 5", "M3 4 L5 5"},
      {u"M0 0A0 5 0 0 1 4 4", "M0 0 L4 4"},
      {u"M0 0a1e29 1 45 0 1 4e29 1", "M0 0"},  // the ellipse would reach 1e58
      {u"M0 0LSTL5 5", "M0 0 L5 5"},
  };
  for (const auto& c : cases) EXPECT_EQ(Parsed(c.Data), c.Records) << HtToUtf8(c.Data);
}

TEST(Path, RefusesWhatIsNoCommand) {
  const struct {
    const char16_t* Data;
    char16_t Command;
    const char* Records;
  } cases[] = {
      {u"10 20", 0, ""}, {u"M0 0 B1", u'B', "M0 0"}, {u"M0 0L1 1z5 5", 0, "M0 0 L1 1 Z"}, {u"x", u'x', ""}};
  for (const auto& c : cases) {
    THtCustomPath path;
    EXPECT_EQ(MessageOf<EHtException>([&] { path.Parse(c.Data); }),
              u"Unknown path command " + hstring(1, c.Command));
    EXPECT_EQ(Records(path), c.Records);
  }
}

TEST(Path, WritesData) {
  const struct {
    const char16_t* Data;
    const char* Text;
  } cases[] = {
      // clang-format off
      {u"", ""}, {u"M1 2L3 5", "M1 2l2 3 "}, {u"M1 2L3 5L1 2", "M1 2l2 3 z"}, {u"M0 0C1 1 2 2 3 3", "M0 0c1 1,2 2,3 3"},
      {u"M0 0C1 1 2 2 3 3L4 4", "M0 0c1 1,2 2,3 3l1 1 "}, {u"M10 0A10 10 0 0 1 0 10", "M10 0A10 10 0 0 1 0 10 "},
      // clang-format on
  };
  for (const auto& c : cases) {
    THtCustomPath path, again;
    path.Parse(c.Data);
    EXPECT_EQ(HtToUtf8(path.AsString()), c.Text);
    again.Parse(path.AsString());
    EXPECT_TRUE(path.AsString().View().ends_with(u'z') || Records(again) == Records(path)) << c.Text;
  }
  THtCustomPath rect;
  rect.AddRectangle(0, 0, 4, 3);
  rect.AddRectangle(10, 0, 4, 3);
  THtCustomPath again;
  again.Parse(rect.AsString());
  EXPECT_EQ(Records(again), Records(rect));
}

TEST(Path, RotatedArcs) {
  THtCustomPath path, lines, again;
  path.Parse(u"M0 0A4 2 90 0 1 0 8");  // a half ellipse that stands upright
  path.Flatten(.1f, lines);
  again.Parse(path.AsString());
  for (const THtCustomPath* p : {&path, &lines, &again}) {
    TRectF box;
    p->GetBounds(box, nullptr);
    EXPECT_TRUE(RSame(R2R(box), TRect{0, 0, 2, 8})) << Text(box);
    EXPECT_NEAR(p->LastPoint().Y, 8, .01);
  }
}

TEST(Path, Figures) {
  THtCustomPath path;
  path.AddRectangle(1, 2, 10, 5);
  EXPECT_EQ(Records(path), "M1 2 L11 2 L11 7 L1 7 Z");
  EXPECT_TRUE(path.IsRect() && !path.HasCurves());
  EXPECT_TRUE(path.ContainsPoint(5, 5) && !path.ContainsPoint(0, 5) && !path.ContainsPoint(12, 5));
  const THtMatrixData twice = [] {
    THtMatrixData m;
    m.Scale(2, 2);
    return m;
  }();
  TRectF box;
  path.GetBounds(box, &twice);
  EXPECT_EQ(box, (TRectF{2, 4, 22, 14}));
  const auto clone = path.Clone();
  path.Translate(1, 1);  // they share their records
  EXPECT_EQ(Records(static_cast<THtCustomPath&>(*clone)), "M2 3 L12 3 L12 8 L2 8 Z");
  path.LineTo(3, 3);  // behind a closed figure; that parts them
  path.Translate(1, 1);
  EXPECT_EQ(Records(static_cast<THtCustomPath&>(*clone)), "M2 3 L12 3 L12 8 L2 8 Z");
  EXPECT_EQ(path.GetRec(5).Kind, prMoveTo);
  path.AddEllipse(0, 0, 5, 5);
  EXPECT_TRUE(path.HasCurves() && !path.IsRect());
  path.Clear();
  path.GetBounds(box, nullptr);
  EXPECT_TRUE(path.Empty() && box == TRectF() && !path.ContainsPoint(0, 0) && path.AsString().Empty());
  path.MoveTo(1, 1);
  EXPECT_FALSE(path.ContainsPoint(1, 1));
  path.MoveTo(2, 2);
  path.LineTo(4, 6);
  path.LineTo(4, 6);
  EXPECT_EQ(Records(path), "M2 2 L4 6");
  path.AddRoundRect(0, 0, 20, 10, 3, 2);
  EXPECT_EQ(Records(path).substr(10),
            "M3 0 L17 0 A14 0 6 4 270 90 L20 8 A14 6 6 4 360 90 L3 10 A0 6 6 4 90 90 L0 2 A0 0 6 4 180 90");
}

TEST(Path, Flattens) {
  THtCustomPath path, lines, circle, polygon;
  path.Parse(u"M0 0C0 4 4 8 8 8l.001 0M20 0A10 10 0 0 1 0 0");
  path.Flatten(.5f, lines);
  EXPECT_FALSE(lines.HasCurves());
  EXPECT_TRUE(Records(lines).starts_with("M0 0 "));
  circle.AddArc(-10, -10, 20, 20, 0, 360, 1);
  circle.Flatten(.1f, polygon);
  for (int32_t i = 0; i < polygon.Count(); ++i)
    EXPECT_NEAR(std::hypot(polygon.GetRec(i).Point.X, polygon.GetRec(i).Point.Y), 10, 1e-3);
  EXPECT_GE(polygon.Count(), 36);
  EXPECT_TRUE(polygon.ContainsPoint(7, 7) && !polygon.ContainsPoint(7.2f, 7.2f));
}

}  // namespace
}  // namespace ht
