// Any text as a background, a shadow, a transform, an origin and a reflection: every reader comes to an end, makes no
// more of the text than it has tokens, and no length that comes out is infinite or none.
#include <cmath>
#include <cstdint>

#include "htmlcss/boxreflect.h"
#include "htmlcss/csstokenizer.h"
#include "htmlcss/csstransform.h"
#include "htmlcss/elementbackground.h"
#include "htmlcss/elementshadow.h"
#include "support/require.h"

using namespace ht;

static void Take(TMeasure m) { Require(std::isfinite(m.GetFPixels()) && std::isfinite(m.FValue)); }

static void Take(const TGradient& gradient, size_t tokens) {
  Require(std::isfinite(gradient.Angle) && gradient.Stops.size() <= tokens);
  Take(gradient.CenterX);
  Take(gradient.CenterY);
  for (const TGradientStop& stop : gradient.Stops) Take(stop.Position);
}

static TCSSTokens TokensOf(const hstring& text) {
  TCSSTokens tokens;
  TCSSTokenizer tokenizer(text, true);
  while (tokenizer.NextToken())
    if (tokenizer.Token.CType != ctSpace) tokens.Append(tokenizer.Token);
  return tokens;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const TCSSTokens tokens = TokensOf(HtFromUtf8({reinterpret_cast<const char*>(data), size}));
  const auto count = static_cast<size_t>(tokens.Count());
  const auto read = [&](auto reader) {
    TCSSTokenSequence sequence(&tokens);
    reader(sequence);
  };

  TElementBackground background, copy;
  read([&](TCSSTokenSequence& sequence) { background.Parse(sequence); });
  copy.Assign(background);
  Require(copy.Present() == background.Present());
  for (const TMeasure& m : {copy.PositionX, copy.PositionY}) Take(m);
  Take(copy.Gradient, count);

  TElementShadow box, text;
  read([&](TCSSTokenSequence& sequence) { box.Parse(sequence); });
  read([&](TCSSTokenSequence& sequence) { text.ParseTextShadow(sequence); });
  for (const TMeasure& m : {box.X, box.Y, box.Blur, text.X, text.Y, text.Blur}) Take(m);

  TTransform transform;
  read([&](TCSSTokenSequence& sequence) { transform.Decode(sequence); });
  read([&](TCSSTokenSequence& sequence) { transform.DecodeOrigin(sequence); });
  size_t values = transform.Items.size();
  for (const TTransformItem& item : transform.Items) {
    values += item.Values.size();
    for (const TMeasure& m : item.Values) Take(m);
  }
  Require(values <= 2 * count);  // one argument may become two
  for (const auto get : {&TTransform::TranslateX, &TTransform::TranslateY, &TTransform::ScaleX,
                         &TTransform::ScaleY, &TTransform::Rotate, &TTransform::RotateX}) {
    const TMeasure* made = (transform.*get)(true);
    Require(made && made == (transform.*get)(false));
  }

  TBoxReflect reflect;
  read([&](TCSSTokenSequence& sequence) { reflect.Decode(sequence); });
  Take(reflect.Offset);
  Take(reflect.Mask, count);
  return 0;
}
