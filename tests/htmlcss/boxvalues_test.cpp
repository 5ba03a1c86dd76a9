// Gradients, shadows, transforms and reflections straight from their texts.

#include <gtest/gtest.h>

#include "htmlcss/boxreflect.h"
#include "htmlcss/csstokenizer.h"
#include "htmlcss/csstransform.h"
#include "htmlcss/elementbackground.h"
#include "htmlcss/elementshadow.h"
#include "htmlpars/colors.h"
#include "htruntime/format.h"
#include "htutils/numbers.h"

namespace ht {
namespace {

// As a parser stores them.
TCSSTokens Tokens(const hstring& text) {
  TCSSTokens tokens;
  TCSSTokenizer tokenizer(text, true);
  while (tokenizer.NextToken()) {
    TCSSToken token = tokenizer.Token;
    if (token.CType == ctHash) token.SetColor(htmlHextoColor(u"#" + token.Name));
    if (token.CType != ctSpace) tokens.Append(token);
  }
  return tokens;
}

std::string Show(const TMeasure& m) { return HtToUtf8(m.AsString()); }
template <class TEnum>
std::string Show(TEnum value) requires std::is_enum_v<TEnum> {
  return HtToUtf8(HtEnumOf<TEnum>().NameOf(value));
}
std::string Number(float value) { return HtToUtf8(HtFormatDecimal(value, 3)); }
std::string Hex(uint32_t color) { return HtToUtf8(HtFormat(u"%.8x", static_cast<int64_t>(color))); }

std::string Show(const TGradient& g) {
  std::string text = g.Radial ? Show(g.CenterX) + "," + Show(g.CenterY)
                              : Show(g.Direction).substr(2) + " " + Number(g.Angle);
  for (const TGradientStop& stop : g.Stops) text += " " + Hex(stop.Color) + "@" + Show(stop.Position);
  return text;
}
std::string Show(const TElementBackground& b) {
  return Show(b.PositionX) + "," + Show(b.PositionY) + " " + HtToUtf8(b.Image) + "|" + Show(b.Repeat) + " " +
         Show(b.Origin) + " " + Show(b.Attachment) + " " + Show(b.SizeMode);
}
std::string Show(const TElementShadow& s) {
  return Show(s.X) + "," + Show(s.Y) + "," + Show(s.Blur) + " " + Hex(s.Color) + " " + Number(s.Opacity) +
         (s.Inset ? " inset" : "") + (s.NoShadow() ? " none" : "");
}
std::string Show(const TTransform& t) {
  std::string text;
  for (const TTransformItem& item : t.Items) {
    text += Show(item.TransformType).substr(2) + "(";
    for (const TMeasure& value : item.Values) text += (&value == &item.Values[0] ? "" : ",") + Show(value);
    text += ")";
  }
  return text;
}
std::string Show(const TBoxReflect& r) { return Show(r.Kind) + " " + Show(r.Offset) + " " + Show(r.Mask); }

struct TCase {
  const char16_t* Text;
  const char* Expected;
};

// What comes out when `read` is let loose on each text.
template <class TRead>
void Check(std::initializer_list<TCase> cases, TRead read) {
  for (const TCase& c : cases) {
    const TCSSTokens tokens = Tokens(c.Text);
    TCSSTokenSequence sequence(&tokens);
    EXPECT_EQ(read(sequence), c.Expected) << HtToUtf8(c.Text);
  }
}

TEST(Gradient, FromText) {
  const auto read = [](TCSSTokenSequence& sequence) {
    TElementBackground background;
    background.Parse(sequence);
    return Show(background.Gradient);
  };
  Check(
      {
          {u"linear-gradient(red,blue)", "Bottom 180 FFFF0000@0% FF0000FF@100%"},
          {u"linear-gradient(red,lime 20%,#00f)", "Bottom 180 FFFF0000@0% FF00FF00@20% FF0000FF@100%"},
          {u"linear-gradient(red,rgba(0,0,255,.5) 2px)", "Bottom 180 FFFF0000@0% 800000FF@2px"},
          {u"linear-gradient(-90.5deg,red,red)", "Bottom -90.5 FFFF0000@0% FFFF0000@100%"},
          {u"linear-gradient(0.5turn,red,red)", "Bottom 180"},
          {u"linear-gradient(to top)", "Top 0"},
          {u"linear-gradient(top)", "Bottom 180"},
          {u"linear-gradient(left)", "Left -90"},
          {u"linear-gradient(to bottom right)", "BottomRight 135"},
          {u"linear-gradient(to right top)", "TopRight 45"},
          {u"linear-gradient(to left right)", "Left -90"},
          {u"linear-gradient(top left)", "BottomLeft -135"},  // "from" turns the top round first
          {u"linear-gradient(red)", "Bottom 180 FFFF0000@auto"},
          // What is no colour ends the reading before stops are placed.
          {u"linear-gradient(red,blue,nocolour,lime)", "Bottom 180 FFFF0000@auto FF0000FF@auto"},
          {u"linear-gradient(red 5%,calc(1px),lime)", "Bottom 180 FFFF0000@5%"},
          {u"linear-gradient(var(--a,rgb(0,0,0)),lime)", "Bottom 180 00000000@0% FF00FF00@100%"},
          {u"linear-gradient(", "Bottom 180"},
          {u"linear-gradient(to", "Bottom 180"},
          {u"linear-gradient(rgb(", "Bottom 180 00000000@auto"},
          {u"linear-gradient(red,blue),linear-gradient(lime,lime)", "Bottom 180 FFFF0000@0% FF0000FF@100%"},
          {u"-webkit-linear-gradient(red,blue)", "Top 0"},
          {u"none linear-gradient(red,blue)", "Top 0"},
          {u"radial-gradient(red,lime,blue)", "50%,50% FFFF0000@0% FF00FF00@50% FF0000FF@100%"},
          {u"radial-gradient(red)", "50%,50% FFFF0000@0%"},
          {u"radial-gradient(circle 5px at 10px top,#f00,#00f 90%)", "10px,0 FFFF0000@0% FF0000FF@90%"},
          {u"radial-gradient(at 20%,red)", "20%,50% FFFF0000@0%"},
          {u"radial-gradient(closest-side)", "50%,50%"},
          {u"radial-gradient(rgb(1,2,3),nocolour)", "50%,50% FF010203@auto"},
          {u"radial-gradient(", "50%,50%"},
      },
      read);
}

TEST(Background, FromText) {
  const auto read = [](TCSSTokenSequence& sequence) {
    TElementBackground background;
    background.Image = u"old"_hs;
    background.Parse(sequence);
    return Show(background);
  };
  Check(
      {
          {u"url(a%20b.png) no-repeat fixed border-box cover",
           "auto,auto a b.png|brNoRepeat boBorderBox baFixed bsCover"},
          {u"url(data:a%20b) repeat-x", "auto,auto data:a%20b|brRepeatX boPaddingBox baScroll bsAuto"},
          {u"red 1.5px 2.5", "1.5px,2px old|brRepeat boPaddingBox baScroll bsAuto"},
          {u"bottom right", "100%,100% old|brRepeat boPaddingBox baScroll bsAuto"},
          {u"top center", "50%,0% old|brRepeat boPaddingBox baScroll bsAuto"},
          {u"center middle", "50%,50% old|brRepeat boPaddingBox baScroll bsAuto"},
          {u"10% 3px", "3px,auto old|brRepeat boPaddingBox baScroll bsAuto"},
          {u"rgb(1,2,3) 3px", "3px,auto old|brRepeat boPaddingBox baScroll bsAuto"},
          {u"foo(1px) 2px ] 3px", "3px,auto old|brRepeat boPaddingBox baScroll bsAuto"},
          {u"3px, fixed", "3px,auto old|brRepeat boPaddingBox baScroll bsAuto"},
          {u"fixed none 3px", "auto,auto |brRepeat boPaddingBox baFixed bsAuto"},
          {u"", "auto,auto old|brRepeat boPaddingBox baScroll bsAuto"},
      },
      read);
}

TEST(Background, AssignKeepsWhatItBelongsTo) {
  float width = 200;
  const TCSSTokens tokens = Tokens(u"linear-gradient(red,blue) 5px 6px");
  TCSSTokenSequence sequence(&tokens);
  TElementBackground from, to;
  from.PositionX.Parent = &width;
  from.Parse(sequence);
  to.Assign(from);
  EXPECT_EQ(Show(to) + Show(to.Gradient), Show(from) + Show(from.Gradient));
  EXPECT_EQ(to.PositionX.Parent, &width);
  from.Reset();
  EXPECT_TRUE(!from.Present() && to.Present());
}

TEST(Shadow, FromText) {
  Check(
      {
          {u"1px 2px 3px 4px red", "1px,2px,3px FFFF0000 1"},
          {u"1px 2px 3px #f00", "1px,2px,3px FFFF0000 1"},
          {u"inset 1px -2px 3px rgba(0,0,255,.5)", "1px,-2px,3px 800000FF 1 inset"},
          {u"1px 2px 3px 4px", "1px,2px,3px 00000000 1"},
          {u"1px 1px red", "1px,1px,0 00000000 1"},
          {u"1px 1px", "1px,1px,auto 00000000 0 none"},
          {u"inset", "auto,auto,auto 00000000 0 inset none"},
          {u"None", "auto,auto,auto 00000000 0 none"},
          {u"", "auto,auto,auto 00000000 0 none"},
      },
      [](TCSSTokenSequence& sequence) {
        TElementShadow shadow;
        shadow.Parse(sequence);
        return Show(shadow);
      });
  Check(
      {
          {u"red 1px 1px 2px", "1px,1px,2px FFFF0000 1"},
          {u"1px 1px 2px red", "1px,1px,2px FFFF0000 1"},
          {u"rgb(0,0,255) 1px 1px 2px", "1px,1px,2px FF0000FF 1"},
          {u"#00f 1px 1px", "1px,1px,auto FF0000FF 1 none"},
          {u"none", "auto,auto,auto 00000000 0 none"},
      },
      [](TCSSTokenSequence& sequence) {
        TElementShadow shadow;
        shadow.ParseTextShadow(sequence);
        return Show(shadow);
      });
}

TEST(Transform, FromText) {
  Check(
      {
          {u"translate(10px) scale(2) translate3d(5%)",
           "Translate(10px,0px)Scale(2px,2px)Translate3d(5%,0%)"},
          {u"translate(1px,2em) rotateX(3deg)", "Translate(1px,2em)RotateX(3deg)"},
          {u"matrix(1,0,0,1,5,6)", "Matrix(1px,0px,0px,1px,5px,6px)"},
          {u"skewX(3deg) scale(2)", ""},
          {u"scale() scaleY", "Scale()ScaleY()"},
          {u"none", "None()"},
      },
      [](TCSSTokenSequence& sequence) {
        TTransform transform;
        transform.Decode(sequence);
        return Show(transform);
      });
  Check({{u"top left", "0%,0% mfLeft mfTop"},
         {u"left bottom", "0%,100% mfLeft mfBottom"},
         {u"5px 10%", "5px,10%"},
         {u"right", "100%,auto mfRight"}},
        [](TCSSTokenSequence& sequence) {
          TTransform transform;
          transform.DecodeOrigin(sequence);
          std::string text = Show(transform.OriginX) + "," + Show(transform.OriginY);
          for (const TMeasure* m : {&transform.OriginX, &transform.OriginY})
            for (const TMeasureFlag flag : {mfLeft, mfRight, mfTop, mfBottom})
              if (m->Flags.Contains(flag)) text += " " + Show(flag);
          return text;
        });
}

TEST(Transform, FindsOrMakesItems) {
  const struct {
    TMeasure* (TTransform::*Get)(bool);
    const char *FromText, *Created;
  } cases[] = {{&TTransform::TranslateX, "1px", "TranslateX(0px)"},
               {&TTransform::TranslateY, "2px", "TranslateY(0px)"},
               {&TTransform::ScaleX, "3px", "ScaleX(1px)"},
               {&TTransform::ScaleY, "4px", "ScaleY(1px)"},
               {&TTransform::Rotate, "5deg", "Rotate(0px)"},
               {&TTransform::RotateX, "6deg", "RotateX(0px)"}};
  const TCSSTokens tokens = Tokens(
      u"translateY(2px) translate3d(1px,9px,9px) scaleY(4) scaleX(3) scale(8) rotateX(6deg) rotate(5deg)");
  for (const auto& c : cases) {
    TTransform transform;
    EXPECT_EQ((transform.*c.Get)(false), nullptr);
    const TMeasure* created = (transform.*c.Get)(true);
    EXPECT_EQ((transform.*c.Get)(false), created);
    EXPECT_EQ(Show(transform), c.Created);
    TCSSTokenSequence sequence(&tokens);
    transform.Decode(sequence);
    EXPECT_EQ(Show(*(transform.*c.Get)(true)), c.FromText);
  }
}

TEST(Reflect, FromText) {
  Check(
      {
          {u"below 5px", "brBelow 5px Top 0"},
          {u"left 10% linear-gradient(to bottom, red, lime, blue 30%)",
           "brLeft 10% Bottom 180 FFFF0000@0% FF00FF00@100% FF0000FF@30%"},
          {u"above linear-gradient(transparent, #fff)", "brAbove auto Top 0 00FFFFFF@0% FFFFFFFF@100%"},
          {u"5px below", "brNone auto Top 0"},
          {u"below linear-gradient(", "brBelow auto Top 0"},
          {u"", "brNone auto Top 0"},
      },
      [](TCSSTokenSequence& sequence) {
        TBoxReflect reflect;
        reflect.Decode(sequence);
        return Show(reflect);
      });
}

}  // namespace
}  // namespace ht
