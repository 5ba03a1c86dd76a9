#include "json.h"

#include <cmath>

#include "htruntime/format.h"
#include "htutils/numbers.h"

using namespace ht;

hstring JsonNumber(double number, int decimals) {
  const hstring text = HtFormatDecimal(std::abs(number), decimals);
  const hstring digits = text.View().starts_with(u'.') ? u"0" + text : text;
  return number < 0 && digits != u"0" ? u"-" + digits : digits;
}

void TJson::Separate() {
  if (!FFirst) FText.AddChar(u',');
  FFirst = false;
}

TJson& TJson::Open(char16_t bracket) {
  Separate();
  FText.AddChar(bracket);
  FFirst = true;
  return *this;
}

TJson& TJson::Close(char16_t bracket) {
  FText.AddChar(bracket);
  FFirst = false;
  return *this;
}

TJson& TJson::Key(std::u16string_view key) {
  Separate();
  Quote(key);
  FText.AddChar(u':');
  FFirst = true;
  return *this;
}

TJson& TJson::Text(std::u16string_view text) {
  Separate();
  Quote(text);
  return *this;
}

TJson& TJson::Number(int64_t number) {
  Separate();
  FText.Add(number);
  return *this;
}

TJson& TJson::Number(double number, int decimals) {
  return std::isfinite(number) ? Json(JsonNumber(number, decimals)) : Null();
}

TJson& TJson::Word(std::u16string_view word) {
  Separate();
  FText.Add(word);
  return *this;
}

void TJson::Quote(std::u16string_view text) {
  FText.AddChar(u'"');
  for (char16_t c : text) {
    switch (c) {
      case u'"': FText.Add2Char(u'\\', u'"'); break;
      case u'\\': FText.Add2Char(u'\\', u'\\'); break;
      case u'\b': FText.Add2Char(u'\\', u'b'); break;
      case u'\f': FText.Add2Char(u'\\', u'f'); break;
      case u'\n': FText.Add2Char(u'\\', u'n'); break;
      case u'\r': FText.Add2Char(u'\\', u'r'); break;
      case u'\t': FText.Add2Char(u'\\', u't'); break;
      default:
        if (c < 32)
          FText.Add(HtFormat(u"\\u%.4x", static_cast<int>(c)));
        else
          FText.AddChar(c);
    }
  }
  FText.AddChar(u'"');
}
