#pragma once

#include <atomic>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#if __has_include(<sys/single_threaded.h>)
#include <sys/single_threaded.h>
#define HT_SINGLE_THREADED (__libc_single_threaded)
#else
#define HT_SINGLE_THREADED false
#endif

namespace ht {

/// What stands in front of the units of every hstring.
struct THtStringHeader {
  int32_t
      RefCount;    // below 0: a literal, never counted nor freed; kPooled and the count: in an arena's block
  int32_t Length;  // in UTF-16 units, without the closing zero
};

/// The storage of a text literal: a header and its units, laid out like a counted text.
template <size_t N>
struct THtStringLiteral {
  THtStringHeader Header{-1, static_cast<int32_t>(N) - 1};
  char16_t Units[N]{};

  consteval THtStringLiteral(const char16_t (&text)[N]) {
    for (size_t i = 0; i < N; ++i) Units[i] = text[i];
  }
};

/// Counted UTF-16 text, shared by reference.
///
///   hstring tag = u"div"_hs;              // a literal: no allocation, no counting
///   hstring copy = tag;                   // one increment
///   if (copy == u"div") …                 // compares the pointers first
///
/// One pointer wide; null when empty; a zero unit always follows the last one. The count is atomic, so
/// copies may live on different threads; one hstring object belongs to one thread at a time. Any 16-bit
/// units are held as they are, unpaired surrogates and zeros included. Indexes count from 0.
class hstring {
 public:
  static constexpr size_t kMaxLength = 0x3FFFFFF0;

  constexpr hstring() noexcept = default;
  hstring(std::u16string_view text) : FUnits(text.empty() ? nullptr : NewCopy(text.data(), text.size())) {}
  hstring(const std::u16string& text) : hstring(std::u16string_view(text)) {}
  hstring(const char16_t* zeroTerminated) : hstring(std::u16string_view(zeroTerminated)) {}
  hstring(const char16_t* units, size_t count) : hstring(std::u16string_view(units, count)) {}
  hstring(size_t count, char16_t unit);
  hstring(const hstring& other) noexcept : FUnits(other.FUnits) { AddRef(); }
  constexpr hstring(hstring&& other) noexcept : FUnits(std::exchange(other.FUnits, nullptr)) {}
  constexpr ~hstring() {
    if (!std::is_constant_evaluated()) Release();
  }

  hstring& operator=(const hstring& other) noexcept {
    hstring(other).Swap(*this);
    return *this;
  }
  hstring& operator=(hstring&& other) noexcept {
    hstring(std::move(other)).Swap(*this);
    return *this;
  }

  /// A text of `count` units whose content is not set yet; the closing zero is. Write through Unique().
  /// Raises std::length_error above kMaxLength.
  static hstring Uninitialized(size_t count);

  /// The text of a literal's storage. Used by the `_hs` suffix.
  template <size_t N>
  static constexpr hstring OfLiteral(const THtStringLiteral<N>& literal) noexcept {
    hstring result;
    if constexpr (N > 1) result.FUnits = const_cast<char16_t*>(literal.Units);
    return result;
  }
  /// The text whose units stand right behind a literal's header, as in THtStringLiteral. It is not empty.
  static hstring OfLiteral(const THtStringHeader& header) noexcept {
    hstring result;
    result.FUnits = const_cast<char16_t*>(reinterpret_cast<const char16_t*>(&header + 1));
    return result;
  }

  /// What a text of `count` units takes, header and closing zero included.
  static constexpr size_t BytesFor(size_t count) {
    return sizeof(THtStringHeader) + (count + 1) * sizeof(char16_t);
  }
  /// A text in memory of BytesFor(text.size()) that THtBlockChain gave. Used by THtArena.
  static hstring InPool(void* memory, std::u16string_view text) noexcept;

  int32_t Length() const noexcept { return FUnits ? Header()->Length : 0; }
  size_t Size() const noexcept { return static_cast<size_t>(Length()); }
  bool Empty() const noexcept { return FUnits == nullptr; }
  /// Never null: an empty text gives a pointer to one zero unit.
  const char16_t* Data() const noexcept { return FUnits ? FUnits : u""; }
  const char16_t* begin() const noexcept { return Data(); }
  const char16_t* end() const noexcept { return Data() + Length(); }
  /// `index` runs from 0 to Length() (the closing zero) and is not checked.
  char16_t operator[](size_t index) const noexcept { return Data()[index]; }
  std::u16string_view View() const noexcept { return {Data(), Size()}; }
  operator std::u16string_view() const noexcept { return View(); }
  /// Both are the same storage (or both empty); equal texts may still differ in storage.
  bool SameStorage(const hstring& other) const noexcept { return FUnits == other.FUnits; }

  /// Makes this the only owner of its units and returns them for writing; null for an empty text.
  char16_t* Unique();
  /// Shortens or lengthens the text and makes it unique; new units are not set.
  void SetLength(size_t count);
  void Clear() noexcept { hstring().Swap(*this); }
  hstring& Append(std::u16string_view text);
  hstring& operator+=(std::u16string_view text) { return Append(text); }
  hstring& operator+=(char16_t unit) { return Append({&unit, 1}); }

  void Swap(hstring& other) noexcept { std::swap(FUnits, other.FUnits); }

  friend bool operator==(const hstring& a, const hstring& b) noexcept {
    return a.FUnits == b.FUnits || SameUnits(a, b.View());
  }
  friend std::strong_ordering operator<=>(const hstring& a, const hstring& b) noexcept {
    return a.View() <=> b.View();
  }
  template <class T>
    requires(!std::is_same_v<T, hstring> && std::is_convertible_v<const T&, std::u16string_view>)
  friend bool operator==(const hstring& a, const T& b) noexcept { return SameUnits(a, b); }

  friend hstring operator+(const hstring& a, const hstring& b) { return Concat(a, b); }
  template <class T>
    requires(!std::is_same_v<T, hstring> && std::is_convertible_v<const T&, std::u16string_view>)
  friend hstring operator+(const hstring& a, const T& b) { return Concat(a, b); }
  template <class T>
    requires(!std::is_same_v<T, hstring> && std::is_convertible_v<const T&, std::u16string_view>)
  friend hstring operator+(const T& a, const hstring& b) { return Concat(a, b); }

  /// `a` followed by `b` in one allocation.
  static hstring Concat(std::u16string_view a, std::u16string_view b);

 private:
  static constexpr int32_t kPooled = 0x40000000;

  char16_t* FUnits = nullptr;

  THtStringHeader* Header() const noexcept { return reinterpret_cast<THtStringHeader*>(FUnits) - 1; }
  static char16_t* NewUnits(size_t count);
  static char16_t* NewCopy(const char16_t* units, size_t count);
  static void Free(char16_t* units) noexcept;

  static bool SameUnits(const hstring& a, std::u16string_view b) noexcept {
    return a.Size() == b.size() &&
           (b.empty() || std::memcmp(a.Data(), b.data(), b.size() * sizeof(char16_t)) == 0);
  }

  void AddRef() const noexcept {
    if (!FUnits) return;
    std::atomic_ref<int32_t> count(Header()->RefCount);
    const int32_t now = count.load(std::memory_order_relaxed);
    if (now < 0) return;
    if (HT_SINGLE_THREADED)
      count.store(now + 1, std::memory_order_relaxed);
    else
      count.fetch_add(1, std::memory_order_relaxed);
  }

  void Release() noexcept {
    if (!FUnits) return;
    std::atomic_ref<int32_t> count(Header()->RefCount);
    // A count of 1 belongs to the caller alone, so the last release costs no locked instruction.
    const int32_t now = count.load(std::memory_order_acquire);
    if (now < 0) return;
    if ((now & ~kPooled) == 1)
      Free(FUnits);
    else if (HT_SINGLE_THREADED)
      count.store(now - 1, std::memory_order_relaxed);
    else if ((count.fetch_sub(1, std::memory_order_acq_rel) & ~kPooled) == 1)
      Free(FUnits);
  }
};

/// `u"text"_hs`: a text whose units stand in the program image. Tables and constants of such texts are
/// `constexpr`.
template <THtStringLiteral Literal>
constexpr hstring operator""_hs() noexcept {
  return hstring::OfLiteral(Literal);
}

/// UTF-8 to UTF-16. Every maximal ill-formed piece becomes one U+FFFD, as Unicode recommends.
hstring HtFromUtf8(std::string_view bytes);
/// UTF-16 to UTF-8. An unpaired surrogate becomes U+FFFD.
std::string HtToUtf8(std::u16string_view text);

/// Ordinal comparison by unit value: below 0, 0 or above 0.
int HtCompareStr(std::u16string_view a, std::u16string_view b) noexcept;
/// Comparison that ignores case by Unicode's simple lower-case mapping; no locale is asked.
int HtCompareText(std::u16string_view a, std::u16string_view b) noexcept;
inline bool HtSameText(std::u16string_view a, std::u16string_view b) noexcept {
  return HtCompareText(a, b) == 0;
}

/// The text without units of 32 and below at either end, or at one of them.
std::u16string_view HtTrim(std::u16string_view text) noexcept;
std::u16string_view HtTrimLeft(std::u16string_view text) noexcept;
std::u16string_view HtTrimRight(std::u16string_view text) noexcept;

}  // namespace ht

template <>
struct std::hash<ht::hstring> {
  size_t operator()(const ht::hstring& text) const noexcept { return std::hash<std::u16string_view>()(text); }
};
