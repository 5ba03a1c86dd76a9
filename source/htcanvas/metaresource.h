#pragma once

#include <algorithm>
#include <array>
#include <atomic>
#include <memory>
#include <utility>

#include "htcanvas/brush.h"
#include "htcanvas/pen.h"

namespace ht {

/// A brush or pen that belongs to recorded drawing: a clone of what was drawn with. It never changes, so that records of
/// equal resources share one; the last of them frees it. May be null. The count of owners is thread-safe.
///
///   THtMetaPen pen(canvas.GetPen(0xFF000000, 1));   // a clone
///   THtMetaPen same = pen;                          // the same object
template <class T>
class THtMetaResource {
 public:
  THtMetaResource() = default;
  explicit THtMetaResource(const T& resource) : THtMetaResource(resource.Clone()) {}
  explicit THtMetaResource(std::unique_ptr<T> resource)
      : FShare(resource ? new TShare{{1}, std::move(resource)} : nullptr) {}
  THtMetaResource(const THtMetaResource& other) noexcept : FShare(other.FShare) {
    if (FShare) FShare->Owners.fetch_add(1, std::memory_order_relaxed);
  }
  THtMetaResource(THtMetaResource&& other) noexcept : FShare(std::exchange(other.FShare, nullptr)) {}
  THtMetaResource& operator=(THtMetaResource other) noexcept {
    std::swap(FShare, other.FShare);
    return *this;
  }
  ~THtMetaResource() {
    if (FShare && FShare->Owners.fetch_sub(1, std::memory_order_acq_rel) == 1) delete FShare;
  }

  const T* Get() const { return FShare ? FShare->Resource.get() : nullptr; }
  const T& operator*() const { return *Get(); }
  const T* operator->() const { return Get(); }
  explicit operator bool() const { return FShare != nullptr; }

 private:
  struct TShare {
    std::atomic<int32_t> Owners;
    std::unique_ptr<T> Resource;
  };

  TShare* FShare = nullptr;
};

using THtMetaBrush = THtMetaResource<THtBrush>;
using THtMetaPen = THtMetaResource<THtPen>;

namespace detail {

/// Whether colour and width are all there is to a pen.
bool IsPlain(const THtPen& pen);

/// Things that were used lately, by colour: sixteen sets of four, each a queue. Drawings use few resources, many times each:
/// finding one again costs less than a new one, in time and in memory.
template <class T>
class TMetaRecent {
 public:
  /// The one that `is` accepts, or else the place for it.
  template <class TIs>
  T& Find(uint32_t color, const TIs& is) {
    std::array<T, 4>& set = FSets[color * 0x9E3779B1u >> 28];
    for (T& item : set)
      if (is(item)) return item;
    std::rotate(set.begin(), set.end() - 1, set.end());
    return set[0];
  }

 private:
  std::array<std::array<T, 4>, 16> FSets;
};

/// The clones of a recording. Resources of derived classes may hold more than can be compared here, so that each
/// record gets a clone of its own.
template <class T>
class TMetaClones {
 public:
  THtMetaResource<T> Clone(const T& resource);

 private:
  TMetaRecent<THtMetaResource<T>> FRecent;
};

extern template class TMetaClones<THtBrush>;
extern template class TMetaClones<THtPen>;

}  // namespace detail

}  // namespace ht
