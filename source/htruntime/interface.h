#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <utility>

#include "htruntime/object.h"

namespace ht {

/// The identifier of an interface: the 16 bytes of {D1-D2-D3-D4} in text order.
struct TGuid {
  uint32_t D1 = 0;
  uint16_t D2 = 0, D3 = 0;
  std::array<uint8_t, 8> D4{};

  friend constexpr bool operator==(const TGuid&, const TGuid&) = default;
};

constexpr int32_t kInterfaceFound = 0;
constexpr int32_t kNoInterface = static_cast<int32_t>(0x80004002);

/// The base of the reference-counted interfaces. Held through TIntf.
class IHtInterface {
 public:
  static constexpr TGuid kGuid{0x00000000, 0x0000, 0x0000, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};

  /// Gives a pointer to the interface `id` of this object, counted once, and kInterfaceFound; else null and
  /// kNoInterface.
  virtual int32_t QueryInterface(const TGuid& id, void** result) = 0;
  /// Both return the new count.
  virtual int32_t _AddRef() = 0;
  virtual int32_t _Release() = 0;

 protected:
  ~IHtInterface() = default;
};

/// A counted reference to an interface: the object dies with the last one.
template <class T>
class TIntf {
 public:
  TIntf() = default;
  TIntf(std::nullptr_t) {}
  TIntf(T* intf) : FIntf(intf) {
    if (FIntf) FIntf->_AddRef();
  }
  TIntf(const TIntf& other) : TIntf(other.FIntf) {}
  TIntf(TIntf&& other) noexcept : FIntf(std::exchange(other.FIntf, nullptr)) {}
  ~TIntf() {
    if (FIntf) FIntf->_Release();
  }
  TIntf& operator=(TIntf other) noexcept {
    std::swap(FIntf, other.FIntf);
    return *this;
  }

  T* Get() const { return FIntf; }
  T* operator->() const { return FIntf; }
  T& operator*() const { return *FIntf; }
  explicit operator bool() const { return FIntf != nullptr; }
  friend bool operator==(const TIntf&, const TIntf&) = default;

 private:
  T* FIntf = nullptr;
};

/// An object that is counted by the interfaces taken on it and dies with the last one. On the stack or in another
/// object it is used without interfaces.
class TInterfacedObject : public TObject {
  HT_CLASS(TInterfacedObject, TObject)

 public:
  /// Both are thread-safe and return the new count.
  int32_t AddReference() { return FRefCount.fetch_add(1, std::memory_order_relaxed) + 1; }
  int32_t ReleaseReference() {
    const int32_t left = FRefCount.fetch_sub(1, std::memory_order_acq_rel) - 1;
    if (left == 0) delete this;
    return left;
  }

 private:
  std::atomic<int32_t> FRefCount{0};
};

}  // namespace ht
