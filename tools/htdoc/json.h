#pragma once

#include <string>
#include <string_view>

#include "htutils/faststring.h"

/// A finite number with at most so many decimals and a digit before the point, as JSON wants it.
ht::hstring JsonNumber(double number, int decimals);

/// Builds one line of JSON: keys in the order in which they are given, no blanks, characters beyond ASCII as they are.
///
///   TJson json;
///   json.BeginObject().Key(u"name").Text(name).Key(u"list").BeginArray().Number(1).EndArray().EndObject();
///   PrintLine(json.GetAsString());
class TJson {
 public:
  TJson& BeginObject() { return Open(u'{'); }
  TJson& EndObject() { return Close(u'}'); }
  TJson& BeginArray() { return Open(u'['); }
  TJson& EndArray() { return Close(u']'); }
  TJson& Key(std::u16string_view key);
  TJson& Text(std::u16string_view text);
  TJson& Number(int64_t number);
  /// A number that is none is null.
  TJson& Number(double number, int decimals);
  TJson& Bool(bool value) { return Word(value ? u"true" : u"false"); }
  /// A value that is JSON already.
  TJson& Json(std::u16string_view json) { return Word(json); }
  TJson& Null() { return Word(u"null"); }

  ht::hstring GetAsString() const { return FText.GetAsString(); }

 private:
  TJson& Open(char16_t bracket);
  TJson& Close(char16_t bracket);
  TJson& Word(std::u16string_view word);
  void Separate();
  void Quote(std::u16string_view text);

  ht::TFastString FText{4096};
  bool FFirst = true;  // nothing stands before the next value in its array or object
};
