#pragma once

#include <stdexcept>

#include "htruntime/hstring.h"

namespace ht {

/// The base of every failure of the library: a message in UTF-16, and in UTF-8 through what().
class EHtException : public std::runtime_error {
 public:
  explicit EHtException(hstring message)
      : std::runtime_error(HtToUtf8(message)), Message(std::move(message)) {}

  const hstring Message;
};

// The runtime's own failures. They add nothing but their type.

/// A text that is no number, date or other value of the type asked for; a code page that does not exist.
class EConvertError : public EHtException {
  using EHtException::EHtException;
};
/// An index outside a pointer list.
class EListError : public EHtException {
  using EHtException::EHtException;
};
/// A string list or id list: an index outside it, a write into a sorted list, a duplicate.
class EStringListError : public EListError {
  using EListError::EListError;
};
/// A value outside the range that an operation takes.
class ERangeError : public EHtException {
  using EHtException::EHtException;
};
/// A condition of the library's own that does not hold.
class EAssertionFailed : public EHtException {
  using EHtException::EHtException;
};
/// An object released while it is still referenced.
class EInvalidPointer : public EHtException {
  using EHtException::EHtException;
};
/// A stream that cannot read, write or seek as asked.
class EStreamError : public EHtException {
  using EHtException::EHtException;
};
/// A file that cannot be opened or created; the message names it and the system's reason.
class EFileStreamError : public EStreamError {
  using EStreamError::EStreamError;
};

}  // namespace ht
