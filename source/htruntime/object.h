#pragma once

#include <memory>
#include <type_traits>

#include "htruntime/hstring.h"

namespace ht {

class TObject;

/// What a class itself knows and can be asked: its name, its parent and how to make an instance. One constant
/// object a class; a *class reference* is a pointer to it. Families whose classes answer more (node classes,
/// canvas classes) derive from it and add virtual operations.
///
/// Constant-initialised and never destroyed, so class references are valid at any time on any thread.
class TClass {
 public:
  constexpr TClass(const char16_t* name, const TClass* (*parent)()) : FName(name), FParent(parent) {}
  TClass(const TClass&) = delete;
  TClass& operator=(const TClass&) = delete;

  const char16_t* Name() const { return FName; }
  /// Null for TObject.
  const TClass* Parent() const { return FParent(); }
  /// True for the class itself and everything that derives from `ancestor`.
  bool InheritsFrom(const TClass* ancestor) const;
  /// A new instance made without arguments; null for a class that cannot be made that way.
  virtual std::unique_ptr<TObject> NewInstance() const { return nullptr; }

 protected:
  ~TClass() = default;

 private:
  const char16_t* FName;
  const TClass* (*FParent)();
};

/// The root of all classes that are owned through a base pointer or asked for their class.
class TObject {
 public:
  /// The type of class object of a family; a family's root replaces it.
  using TClassRef = TClass;

  TObject() = default;
  TObject(const TObject&) = delete;
  TObject& operator=(const TObject&) = delete;
  virtual ~TObject() = default;

  static const TClass* Class();
  virtual const TClass* ClassType() const { return Class(); }
  hstring ClassName() const { return ClassType()->Name(); }
  bool InheritsFrom(const TClass* ancestor) const { return ClassType()->InheritsFrom(ancestor); }
};

/// The class object of T, derived from the class type of T's family.
template <class T>
class TClassOf final : public T::TClassRef {
 public:
  constexpr TClassOf(const char16_t* name, const TClass* (*parent)()) : T::TClassRef(name, parent) {}

  std::unique_ptr<TObject> NewInstance() const override {
    if constexpr (std::is_default_constructible_v<T> && !std::is_abstract_v<T>)
      return std::make_unique<T>();
    else
      return nullptr;
  }
};

/// Gives a class its class object. Stands first in the body of a class that derives from TObject:
///
///   class TLayoutNode : public THtmlNode {
///     HT_CLASS(TLayoutNode, THtmlNode)
///     …
///   };
///   const TClass* c = TLayoutNode::Class();
#define HT_CLASS(TSelf, TBase)                                                                             \
 public:                                                                                                   \
  static const typename TBase::TClassRef* Class() {                                                        \
    static constexpr ::ht::TClassOf<TSelf> kClass(u"" #TSelf,                                              \
                                                  []() -> const ::ht::TClass* { return TBase::Class(); }); \
    return &kClass;                                                                                        \
  }                                                                                                        \
  const ::ht::TClass* ClassType() const override { return Class(); }                                       \
                                                                                                           \
 private:

}  // namespace ht
