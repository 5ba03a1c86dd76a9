#pragma once

#include <algorithm>
#include <cmath>
#include <concepts>
#include <cstdint>
#include <limits>
#include <type_traits>
#include <utility>

namespace ht {

// Points and rectangles, of integers and of floats. y grows downward. Integer sums wrap round; nothing raises.

namespace detail {

// Of integers without the undefined behaviour of an overflow.
template <class T>
constexpr T Sum(T a, T b) {
  if constexpr (std::integral<T>)
    return static_cast<T>(static_cast<uint32_t>(a) + static_cast<uint32_t>(b));
  else
    return a + b;
}

template <class T>
constexpr T Difference(T a, T b) {
  if constexpr (std::integral<T>)
    return static_cast<T>(static_cast<uint32_t>(a) - static_cast<uint32_t>(b));
  else
    return a - b;
}

}  // namespace detail

template <class T>
struct THtPointOf {
  T X = 0, Y = 0;

  friend constexpr bool operator==(const THtPointOf&, const THtPointOf&) = default;
};
using TPoint = THtPointOf<int32_t>;
using TPointF = THtPointOf<float>;

/// Right and Bottom lie outside of what the rectangle holds. It may be empty, or reversed.
template <class T>
struct THtRectOf {
  T Left = 0, Top = 0, Right = 0, Bottom = 0;

  constexpr T Width() const { return detail::Difference(Right, Left); }
  constexpr T Height() const { return detail::Difference(Bottom, Top); }

  friend constexpr bool operator==(const THtRectOf&, const THtRectOf&) = default;
};
using TRect = THtRectOf<int32_t>;
using TRectF = THtRectOf<float>;

template <class T>
constexpr T RW(const THtRectOf<T>& r) {
  return r.Width();
}
template <class T>
constexpr T RH(const THtRectOf<T>& r) {
  return r.Height();
}

/// Moves the top left corner to (x, y) and keeps the size.
template <class T>
constexpr void RSetLocation(THtRectOf<T>& r, std::type_identity_t<T> x, std::type_identity_t<T> y) {
  r = {x, y, detail::Sum(x, r.Width()), detail::Sum(y, r.Height())};
}

template <class T>
constexpr void ROffset(THtRectOf<T>& r, std::type_identity_t<T> dx, std::type_identity_t<T> dy) {
  r = {detail::Sum(r.Left, dx), detail::Sum(r.Top, dy), detail::Sum(r.Right, dx), detail::Sum(r.Bottom, dy)};
}

/// Grows by `dx` on the left and on the right, and by `dy` at the top and at the bottom.
template <class T>
constexpr void RInflate(THtRectOf<T>& r, std::type_identity_t<T> dx, std::type_identity_t<T> dy) {
  r = {detail::Difference(r.Left, dx), detail::Difference(r.Top, dy), detail::Sum(r.Right, dx),
       detail::Sum(r.Bottom, dy)};
}

/// What lies in both; empty or reversed if they do not meet.
template <class T>
constexpr THtRectOf<T> RIntersect(const THtRectOf<T>& a, const THtRectOf<T>& b) {
  return {std::max(a.Left, b.Left), std::max(a.Top, b.Top), std::min(a.Right, b.Right),
          std::min(a.Bottom, b.Bottom)};
}

constexpr bool RSame(const TRect& a, const TRect& b) { return a == b; }

namespace detail {

// Integers are compared with floats as doubles, which hold both exactly.
template <class A, class B>
constexpr bool Less(A a, B b) {
  if constexpr (std::same_as<A, B>)
    return a < b;
  else
    return static_cast<double>(a) < static_cast<double>(b);
}

template <class R, class P>
constexpr bool Contains(const THtRectOf<R>& r, const THtPointOf<P>& p) {
  return !Less(p.X, r.Left) && Less(p.X, r.Right) && !Less(p.Y, r.Top) && Less(p.Y, r.Bottom);
}

template <class A, class B>
constexpr bool Inside(const THtRectOf<A>& a, const THtRectOf<B>& b) {
  return !Less(a.Left, b.Left) && !Less(b.Right, a.Right) && !Less(a.Top, b.Top) && !Less(b.Bottom, a.Bottom);
}

}  // namespace detail

/// The right and the bottom edge are outside.
constexpr bool RContains(const TRect& r, const TPoint& p) { return detail::Contains(r, p); }
constexpr bool RContains(const TRectF& r, const TPoint& p) { return detail::Contains(r, p); }
constexpr bool RContains(const TRectF& r, const TPointF& p) { return detail::Contains(r, p); }

/// They have more than an edge in common.
template <class A, class B>
constexpr bool RectIntersects(const THtRectOf<A>& a, const THtRectOf<B>& b) {
  return detail::Less(a.Left, b.Right) && detail::Less(b.Left, a.Right) && detail::Less(a.Top, b.Bottom) &&
         detail::Less(b.Top, a.Bottom);
}

/// `a` lies within `b`, edges included.
constexpr bool RectInside(const TRect& a, const TRect& b) { return detail::Inside(a, b); }
constexpr bool RectInside(const TRectF& a, const TRect& b) { return detail::Inside(a, b); }

namespace detail {

inline int32_t RoundToInt(float value) {
  using TLimits = std::numeric_limits<int32_t>;
  if (std::isnan(value)) return 0;
  const double rounded = std::nearbyint(static_cast<double>(value));
  return static_cast<int32_t>(
      std::clamp(rounded, static_cast<double>(TLimits::min()), static_cast<double>(TLimits::max())));
}

}  // namespace detail

/// To whole numbers: to the nearest, ties to even. The ends of the range stand for what lies beyond it, 0 for what is
/// no number.
inline TPoint P2P(const TPointF& p) { return {detail::RoundToInt(p.X), detail::RoundToInt(p.Y)}; }
inline TRect R2R(const TRectF& r) {
  return {detail::RoundToInt(r.Left), detail::RoundToInt(r.Top), detail::RoundToInt(r.Right),
          detail::RoundToInt(r.Bottom)};
}

constexpr TPointF P2F(const TPoint& p) { return {static_cast<float>(p.X), static_cast<float>(p.Y)}; }
constexpr TRectF R2F(const TRect& r) {
  return {static_cast<float>(r.Left), static_cast<float>(r.Top), static_cast<float>(r.Right),
          static_cast<float>(r.Bottom)};
}

constexpr void ExchangeSingle(float& a, float& b) { std::swap(a, b); }

}  // namespace ht
