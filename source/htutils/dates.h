#pragma once

#include "htruntime/datetime.h"

namespace ht {

/// Reads a date, a time or both by a mask. An empty text gives 0.
///
///   StrtoDateFmt(u"31.12.2020", u"")                      // the mask follows from the shape of the text
///   StrtoDateFmt(u"2020-12-31 10:20", u"yyyy-mm-dd hh:nn")
///   StrtoDateFmt(u"*10:20:30.123 UTC Thu Dec 31 2020", u"cisco")
///
/// Mask letters, in the case shown: `d` and `dd` day, `m` and `mm` month, `h` and `hh` hour (a single letter reads one
/// digit when no other follows), `mmm` and `mmmm` the English or Russian name of the month, `MMM` its English name,
/// `yyyy` and `yy` year (two digits: below 60 in 2000, else in 1900), `nn` minute, `ss` second, `pp` "p" for the
/// afternoon. Any other character of the mask passes one of the text, whatever it is. The reading ends with
/// the mask or the text; what is left of the text does not count.
///
/// An empty mask stands for one of: "dd.mm.yyyy hh:nn:ss" with one or two hour digits, with two year digits and
/// without seconds; "dd-mm-yyyy hh:nn:ss"; "dd-mmm-yyyy hh:nn:ss"; "yyyy-mm-dd hh:nn:ss"; "dd.mm.yyyy"; "dd.mm.yy";
/// "mm/dd/yyyy" with one or two digits of day and month; "yyyy-mm-dd"; "dd-mmm-yyyy"; "dd-mmm-yy". A text with points that
/// is none of these gives 0.
///
/// Without a date field the day is 0, without a time field the time. Raises EConvertError
/// "Date/time string '%s' does not match mask '%s'" for a field that cannot be read and for a date or time that
/// does not exist.
TDateTime StrtoDateFmt(std::u16string_view text, std::u16string_view mask);

}  // namespace ht
