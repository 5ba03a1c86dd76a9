#pragma once

#include "htruntime/hstring.h"

namespace ht {

/// A date and time: days since 1899-12-30, the time of day as the fraction. Before that day the fraction still
/// counts forward: -1.25 is 1899-12-29 06:00. Times are told to the millisecond.
using TDateTime = double;

constexpr double kMillisecondsPerDay = 86400000;

/// Years 1 to 9999 of the Gregorian calendar. False, or EConvertError "Invalid argument to date encode", for a day
/// that does not exist.
bool HtTryEncodeDate(int year, int month, int day, TDateTime& date);
TDateTime HtEncodeDate(int year, int month, int day);
/// Hours 0 to 23. False, or EConvertError "Invalid argument to time encode", for a time that does not exist.
bool HtTryEncodeTime(int hour, int minute, int second, int millisecond, TDateTime& time);
TDateTime HtEncodeTime(int hour, int minute, int second, int millisecond);

/// Zeros for a value outside the years 1 to 9999.
void HtDecodeDate(TDateTime value, int& year, int& month, int& day);
void HtDecodeTime(TDateTime value, int& hour, int& minute, int& second, int& millisecond);
/// 1 is Sunday, 7 Saturday; 0 outside the years 1 to 9999.
int HtDayOfWeek(TDateTime value);

/// A date and time by a mask, with English names:
///
///   HtFormatDateTime(u"yyyy-mm-dd hh:nn:ss", value)   // "2024-03-07 09:05:00"
///   HtFormatDateTime(u"dddd, d. mmmm \"at\" h am/pm", value)
///
/// `d`, `dd` day; `ddd`, `dddd` its name; `m`, `mm` month; `mmm`, `mmmm` its name; `yy` and `yyyy` year; `h`, `hh` hour;
/// `n`, `nn` minute, and `m`, `mm` too when the field before is the hour; `s`, `ss` second; `z`, `zzz` millisecond;
/// `am/pm` and `a/p`, written in the case of the mask, and `ampm`, always in capitals, which change the hours to 1 to 12.
/// A doubled letter gives two digits, zeros in front; `yyy` counts as `yyyy`, and a longer run as the longest form.
/// Letters count in either case. Text in either kind of quotes and every other character stand for themselves.
hstring HtFormatDateTime(std::u16string_view mask, TDateTime value);

}  // namespace ht
