#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string_view>
#include <type_traits>
#include <vector>

namespace ht {

/// The names of an enumeration declared by HT_ENUM, in order. Ordinals count from 0.
class THtEnumInfo {
 public:
  /// `names` is the identifiers separated by commas; it stays alive.
  THtEnumInfo(std::u16string_view typeName, std::u16string_view names);

  std::u16string_view TypeName() const { return FTypeName; }
  int Count() const { return static_cast<int>(FNames.size()); }
  /// The identifier of an ordinal; empty outside the enumeration.
  std::u16string_view NameOf(int ordinal) const;
  /// The ordinal of the identifier `prefix` followed by `name`, without regard to ASCII case; -1 if there is none.
  int Find(std::u16string_view prefix, std::u16string_view name) const;
  int Find(std::u16string_view name) const { return Find({}, name); }

 private:
  std::u16string_view FTypeName;
  std::vector<std::u16string_view> FNames;
};

namespace detail {
consteval int CountNames(std::string_view names) {
  int count = 1;
  for (char c : names) count += c == ',';
  return count;
}
}  // namespace detail

/// Declares a plain enumeration together with its names, at namespace level:
///
///   HT_ENUM(TFloat, uint8_t, fNone, fLeft, fRight);   // fLeft == 1
///   HtEnumOf<TFloat>().NameOf(fLeft);                 // u"fLeft"
///
/// The values count from 0 without gaps.
#define HT_ENUM(TName, TBase, ...)                                                    \
  enum TName : TBase { __VA_ARGS__ };                                                 \
  constexpr int HtEnumCount(TName) { return ::ht::detail::CountNames(#__VA_ARGS__); } \
  inline const ::ht::THtEnumInfo& HtEnumInfoOf(TName) {                               \
    static const ::ht::THtEnumInfo kInfo(u"" #TName, u"" #__VA_ARGS__);               \
    return kInfo;                                                                     \
  }                                                                                   \
  static_assert(true)

/// The names of an enumeration declared by HT_ENUM.
template <class TEnum>
const THtEnumInfo& HtEnumOf() {
  return HtEnumInfoOf(TEnum{});
}

/// A set of the values of one enumeration, as bits: `{bdLTR, bdRTL}`, with `+`, `-`, `*` and `<=`.
template <class TEnum>
class TSet {
 public:
  constexpr TSet() = default;
  constexpr TSet(std::initializer_list<TEnum> values) {
    for (TEnum v : values) Include(v);
  }

  constexpr bool Contains(TEnum v) const { return (FWords[Word(v)] & Bit(v)) != 0; }
  constexpr void Include(TEnum v) { FWords[Word(v)] |= Bit(v); }
  constexpr void Exclude(TEnum v) { FWords[Word(v)] &= static_cast<TWord>(~Bit(v)); }
  constexpr bool Empty() const {
    for (TWord w : FWords)
      if (w != 0) return false;
    return true;
  }
  constexpr int Count() const {
    int count = 0;
    for (TWord w : FWords) count += std::popcount(w);
    return count;
  }

  /// Union, difference, intersection, and "is a subset of".
  friend constexpr TSet operator+(TSet a, const TSet& b) {
    for (size_t i = 0; i < kWords; ++i) a.FWords[i] |= b.FWords[i];
    return a;
  }
  friend constexpr TSet operator-(TSet a, const TSet& b) {
    for (size_t i = 0; i < kWords; ++i) a.FWords[i] &= static_cast<TWord>(~b.FWords[i]);
    return a;
  }
  friend constexpr TSet operator*(TSet a, const TSet& b) {
    for (size_t i = 0; i < kWords; ++i) a.FWords[i] &= b.FWords[i];
    return a;
  }
  friend constexpr bool operator<=(const TSet& a, const TSet& b) { return (a - b).Empty(); }
  // Word by word: the comparison of arrays is a call, even of one word.
  friend constexpr bool operator==(const TSet& a, const TSet& b) {
    for (size_t i = 0; i < kWords; ++i)
      if (a.FWords[i] != b.FWords[i]) return false;
    return true;
  }

 private:
  static constexpr size_t kBits = static_cast<size_t>(HtEnumCount(TEnum{}));
  // The smallest word that holds all values: sets stand in records of which there are very many.
  using TWord = std::conditional_t<
      kBits <= 8, uint8_t,
      std::conditional_t<kBits <= 16, uint16_t, std::conditional_t<kBits <= 32, uint32_t, uint64_t>>>;
  static constexpr size_t kWordBits = sizeof(TWord) * 8;
  static constexpr size_t kWords = (kBits + kWordBits - 1) / kWordBits;
  static constexpr size_t Word(TEnum v) { return static_cast<size_t>(v) / kWordBits; }
  static constexpr TWord Bit(TEnum v) {
    return static_cast<TWord>(TWord{1} << static_cast<size_t>(v) % kWordBits);
  }

  std::array<TWord, kWords> FWords{};
};

}  // namespace ht
