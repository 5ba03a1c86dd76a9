#include "htutils/faststring.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "htruntime/rounding.h"
#include "htruntime/stream.h"

namespace ht {

namespace {

constexpr int32_t kMaxDecimals = 8;
constexpr uint64_t kScales[kMaxDecimals + 1] = {1,      10,      100,      1000,     10000,
                                                100000, 1000000, 10000000, 100000000};
constexpr double kInt64Limit = 9.2e18;

}  // namespace

TFastString& TFastString::Add(double value, int32_t decimals, bool leadingZero) {
  if (std::isnan(value)) return Add(u"NaN");
  if (std::isinf(value)) {
    if (value < 0) AddChar(u'-');
    return Add(u"INF");
  }
  if (std::abs(value) >= kInt64Limit) {
    char digits[320];  // the longest double has 309
    const char* end = std::to_chars(digits, std::end(digits), value, std::chars_format::fixed).ptr;
    for (const char* p = digits; p < end; ++p) AddChar(static_cast<char16_t>(*p));
    return *this;
  }

  decimals = std::clamp(decimals, 0, kMaxDecimals);
  const uint64_t scale = kScales[decimals];
  const auto factor = static_cast<double>(scale);
  const double whole = HtRoundEven(value);
  if (decimals == 0 || std::abs(value - whole) * factor < 0.5) return Add(static_cast<int64_t>(whole));

  const double scaled = HtRoundEven(std::abs(value) * factor);
  uint64_t integer, fraction;
  if (scaled < kInt64Limit) {
    integer = static_cast<uint64_t>(scaled) / scale;
    fraction = static_cast<uint64_t>(scaled) % scale;
  } else {
    // A value with a fraction is below 2^52, so both parts fit where their product does not.
    integer = static_cast<uint64_t>(std::abs(value));
    fraction = static_cast<uint64_t>(HtRoundEven((std::abs(value) - static_cast<double>(integer)) * factor));
    integer += fraction / scale;
    fraction %= scale;
  }
  if (value < 0 && scaled != 0) AddChar(u'-');
  if (fraction == 0) return Add(integer);
  if (integer != 0 || leadingZero) Add(integer);
  int32_t places = decimals;
  for (; fraction % 10 == 0; fraction /= 10) --places;
  char16_t* point = Room(static_cast<size_t>(places) + 1);
  for (int32_t i = places; i > 0; --i, fraction /= 10) point[i] = static_cast<char16_t>(u'0' + fraction % 10);
  *point = u'.';
  Advance(static_cast<size_t>(places) + 1);
  return *this;
}

void TFastString::Prepend(std::u16string_view text) {
  if (text.empty()) return;
  std::unique_ptr<char16_t[]> data(new char16_t[text.size()]);
  std::copy(text.begin(), text.end(), data.get());
  auto* moved = new TNode(FFirst);
  if (FCurrent == &FFirst) FCurrent = moved;
  FFirst = {data.release(), text.size(), text.size(), moved};
  FBefore += text.size();
}

void TFastString::Grab(TFastString& other) {
  if (&other == this || other.IsEmpty()) return;
  TNode& first = other.FFirst;
  const bool single = other.FCurrent == &first;
  if (single && first.Len * 2 < first.Size) {
    Append(first.Data, first.Len);
    first.Len = 0;
    return;
  }
  auto* moved = new TNode(first);
  FBefore += FCurrent->Len + other.FBefore;
  FCurrent->Next = moved;
  FCurrent = single ? moved : other.FCurrent;
  first = TNode();
  other.FCurrent = &first;
  other.FBefore = 0;
}

hstring TFastString::GetAsString() const {
  hstring text;
  ToString(text);
  return text;
}

void TFastString::ToStringFrom(hstring& text, int64_t start) const {
  const int64_t skip = std::clamp<int64_t>(start - 1, 0, GetTotalLen());
  text = hstring::Uninitialized(static_cast<size_t>(GetTotalLen() - skip));
  CopyTo(text.Unique(), static_cast<size_t>(skip));
}

void TFastString::SavetoStream(TStream& stream) const {
  for (const TNode* node = &FFirst; node; node = node->Next)
    stream.WriteBuffer(node->Data, static_cast<int64_t>(node->Len * sizeof(char16_t)));
}

void TFastString::SavetoBuffer(void* buffer) const {
  auto* to = static_cast<std::byte*>(buffer);
  for (const TNode* node = &FFirst; node; node = node->Next) {
    if (node->Len) std::memcpy(to, node->Data, node->Len * sizeof(char16_t));
    to += node->Len * sizeof(char16_t);
  }
}

void TFastString::ClearandLeaveSpace() {
  FreeNodes(std::exchange(FFirst.Next, nullptr));
  FFirst.Len = 0;
  FCurrent = &FFirst;
  FBefore = 0;
}

// `text` lies outside this builder.
void TFastString::SetTo(std::u16string_view text) {
  Clear();
  Add(text);
}

void TFastString::DeletefromEnd(int64_t count) {
  if (count <= 0) return;
  if (static_cast<uint64_t>(count) <= FCurrent->Len) {
    FCurrent->Len -= static_cast<size_t>(count);
  } else {
    const hstring text = GetAsString();
    const int64_t left = std::max<int64_t>(text.Length() - count, 0);
    SetTo(text.View().substr(0, static_cast<size_t>(left)));
  }
}

void TFastString::TrimTrailing(char16_t lowest, char16_t highest) {
  const auto isBlank = [=](char16_t c) { return c >= lowest && c <= highest; };
  while (FCurrent->Len && isBlank(FCurrent->Data[FCurrent->Len - 1])) --FCurrent->Len;
  if (FCurrent->Len || FBefore == 0) return;
  const hstring text = GetAsString();
  std::u16string_view rest = text;
  while (!rest.empty() && isBlank(rest.back())) rest.remove_suffix(1);
  SetTo(rest);
}

void TFastString::TrimTrailingSpaces() { TrimTrailing(u' ', u' '); }

void TFastString::TrimTrailingBlanks() { TrimTrailing(0, u' '); }

bool TFastString::EndsWith(std::u16string_view text) const {
  const auto length = static_cast<int64_t>(text.size());
  return !IsEmpty() && length <= GetTotalLen() && HasAt(static_cast<size_t>(GetTotalLen() - length), text);
}

char16_t TFastString::LastChar() const {
  if (FCurrent->Len) return FCurrent->Data[FCurrent->Len - 1];
  char16_t last = 0;
  for (const TNode* node = &FFirst; node; node = node->Next)
    if (node->Len) last = node->Data[node->Len - 1];
  return last;
}

}  // namespace ht
