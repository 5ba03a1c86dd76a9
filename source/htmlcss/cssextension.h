#pragma once

#include <span>

#include "htmlcss/stylesheet.h"

namespace ht {

/// A ready-made sheet that is switched on by the class names a document uses.
///
///   const hstring keys[] = {u"chart"_hs};
///   TCSSExtension::RegisterExtension(keys, u".chart { display: block }"_hs);      // at start-up
///   TCSSExtension::AddExtensions(classes, sheet);                                // for each document
///
/// The registry is one for the process and has no lock: fill it before other threads read it.
class TCSSExtension : public TObject {
  HT_CLASS(TCSSExtension, TObject)

 public:
  std::vector<hstring> KeyClasses;
  TCSSStyleSheet CSS;

  TCSSExtension(std::span<const hstring> keyClasses, const hstring& css);

  /// Parses the CSS, once.
  static void RegisterExtension(std::span<const hstring> keyClasses, const hstring& css);
  /// Assigns to the sheet, in the order of registration, each extension of which a key class is among `classes`.
  static void AddExtensions(const THtStringList& classes, TCSSStyleSheet& sheet);
};

}  // namespace ht
