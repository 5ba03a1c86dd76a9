#pragma once

#include <mutex>
#include <shared_mutex>

#include "htdictionary/stringkeys.h"

namespace ht {

/// A THtObjectDictionary that threads may share: any number of them search at a time, or one of them changes it.
///
/// What a search gives is borrowed: another thread may remove and free it, so either nothing is removed while
/// threads work, or the dictionary does not own its objects. The `…Hashed` operations and GetAt take no lock:
/// they are for callers who hold it, or own the dictionary alone:
///
///   std::unique_lock lock(dictionary.GetLock());
///   if (dictionary.FindHashed(hash, text) < 0) dictionary.AddHashed(hash, text, new TFont(text));
///
/// The lock is not recursive: neither a callback of Traverse nor the destructor of an object may call back.
class THtThreadObjectDictionary : public THtStringKeyed<THtIdObjectDictionary, TObject> {
  HT_CLASS(THtThreadObjectDictionary, THtIdObjectDictionary)

  using TBase = THtStringKeyed<THtIdObjectDictionary, TObject>;
  using TReadLock = std::shared_lock<std::shared_mutex>;
  using TWriteLock = std::unique_lock<std::shared_mutex>;

 public:
  /// `nameOffset` is that of an hstring, from HtNameOffset. Without a hash function: ShaPerfectHashAsm.
  THtThreadObjectDictionary(int32_t capacity, bool ownsObjects, intptr_t nameOffset,
                            THtStringHashFunc hash = nullptr)
      : THtStringKeyed(kkText, nameOffset, hash ? hash : ShaPerfectHashAsm, capacity, ownsObjects) {}

  std::shared_mutex& GetLock() const { return FLock; }

  template <class T>
  bool Find(std::u16string_view text, T*& object) const {
    TReadLock lock(FLock);
    return TBase::Find(text, object);
  }
  template <class T>
  bool Find(const char16_t* chars, int32_t length, T*& object) const {
    TReadLock lock(FLock);
    return TBase::Find(chars, length, object);
  }
  template <class T = TObject>
  T* Get(std::u16string_view text) const {
    TReadLock lock(FLock);
    return TBase::template Get<T>(text);
  }
  bool ContainsKey(std::u16string_view text) const {
    TReadLock lock(FLock);
    return TBase::ContainsKey(text);
  }
  template <class T = TObject>
  void Traverse(void* data, void (*callback)(void* data, T* object)) const {
    TReadLock lock(FLock);
    TBase::Traverse(data, callback);
  }
  template <class T = TObject>
  T* GetNext(int32_t& index) const {
    TReadLock lock(FLock);
    return TBase::template GetNext<T>(index);
  }
  int32_t GetCount() const {
    TReadLock lock(FLock);
    return TBase::GetCount();
  }

  int32_t Add(std::u16string_view text, TObject* object) {
    TWriteLock lock(FLock);
    return TBase::Add(text, object);
  }
  int32_t AddObject(TObject* object) {
    TWriteLock lock(FLock);
    return AddItem(object);
  }
  void Put(std::u16string_view text, TObject* object) {
    TWriteLock lock(FLock);
    TBase::Put(text, object);
  }
  TObject* Extract(std::u16string_view text) {
    TWriteLock lock(FLock);
    return TBase::Extract(text);
  }
  bool Remove(std::u16string_view text) {
    TWriteLock lock(FLock);
    return TBase::Remove(text);
  }
  void Clear(int32_t capacity = 0) {
    TWriteLock lock(FLock);
    TBase::Clear(capacity);
  }
  void SetCapacity(int32_t capacity) {
    TWriteLock lock(FLock);
    TBase::SetCapacity(capacity);
  }

 private:
  mutable std::shared_mutex FLock;
};

}  // namespace ht
