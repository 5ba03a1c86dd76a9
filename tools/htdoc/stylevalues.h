#pragma once

#include <span>

#include "document/document.h"

/// A property as `htdoc style` shows it: colours as "#rrggbb" or "#rrggbbaa", lengths in pixels or "auto", keywords by
/// their names, numbers plain, all else as declared. The text is JSON.
struct TStyleProperty {
  ht::TCSSProperty Prop;
  ht::hstring (*Value)(ht::TDocumentStyle& style);
};

/// The properties that an element has itself, in the order of the property table; no shorthands.
std::span<const TStyleProperty> StyleProperties();

/// The value of any property; of a shorthand, those of its parts. Empty for a name that is none.
ht::hstring StyleValue(ht::TDocumentStyle& style, std::u16string_view name);
