#include "htmlcss/styleindexer.h"

#include <array>

#include "htruntime/numformat.h"
#include "htutils/faststring.h"

namespace ht {

namespace {

constexpr std::array kTextProperties{u"font-family"_hs, u"font-size"_hs, u"color"_hs, u"background-color"_hs,
                                     u"line-height"_hs};
constexpr std::array kSVGProperties{u"font-family"_hs, u"font-size"_hs, u"fill"_hs, u"font-weight"_hs,
                                    u"font-style"_hs};

// The values of the properties, an empty one for each that the set does not have.
hstring KeyOf(std::span<const hstring> properties, const TCSSStyleSet& set) {
  TFastString key(128);
  for (size_t i = 0; i < properties.size(); ++i) {
    if (i > 0) key.AddChar(u';');
    key.Add(set.GetValue(properties[i]));
  }
  return key.GetAsString();
}

hstring StyleOf(std::span<const hstring> properties, const TCSSStyleSet& set) {
  TFastString style(128);
  for (const hstring& name : properties) {
    const hstring value = set.GetValue(name);
    if (value.Empty()) continue;
    style.Add(name).AddChar(u':');
    if (&name == &properties[0]) style.AddChar(u' ');
    style.Add(value).AddChar(u';');
  }
  return style.GetAsString();
}

}  // namespace

TStyleIndexer::TStyleIndexer()
    : Items(129, true, HtNameOffset(&TCSSStyleIndexerItem::Key)),
      Aliases(65, true, HtNameOffset(&TStringRec2::Name)) {}

// An empty name is made up.
TCSSStyleIndexerItem& TStyleIndexer::AddItem(const hstring& key, const hstring& style,
                                             const hstring& className) {
  auto item = std::make_unique<TCSSStyleIndexerItem>();
  item->Key = key;
  item->Style = style;
  item->ClassName = className.Empty() ? u"f"_hs + HtIntToStr(NextIndex) : className;
  ++NextIndex;
  Items.AddObject(item.get());
  return *item.release();
}

void TStyleIndexer::GetClassOf(std::span<const hstring> properties, TCSSStyleSet& set, hstring& className) {
  const hstring key = KeyOf(properties, set);
  if (key == u";;;;") {
    className.Clear();
    return;
  }
  const auto* item = Items.Get<TCSSStyleIndexerItem>(key);
  if (!item) item = &AddItem(key, StyleOf(properties, set), {});
  for (const hstring& name : properties)
    if (int32_t index; set.Find(name, index)) set.Delete(index);
  className = item->ClassName;
}

void TStyleIndexer::GetClass(TCSSStyleSet& set, hstring& className) {
  GetClassOf(kTextProperties, set, className);
}

void TStyleIndexer::GetSVGClass(TCSSStyleSet& set, hstring& className) {
  GetClassOf(kSVGProperties, set, className);
}

void TStyleIndexer::GetClass(const hstring& style, const hstring& name, hstring& className) {
  const auto* item = Items.Get<TCSSStyleIndexerItem>(style);
  if (!item) {
    item = &AddItem(style, style, name);
  } else if (!name.Empty()) {
    auto alias = std::make_unique<TStringRec2>();
    alias->Name = name;
    alias->ClassName = item->ClassName;
    Aliases.Put(name, alias.release());
  }
  className = item->ClassName;
}

hstring TStyleIndexer::FindStyleClass(const hstring& name) const {
  const auto* alias = name.Empty() ? nullptr : Aliases.Get<TStringRec2>(name);
  return alias ? alias->ClassName : name;
}

void TStyleIndexer::GenerateCSS(TFastString& builder) const {
  for (int32_t i = 0; const auto* item = Items.GetNext<TCSSStyleIndexerItem>(i);)
    builder.AddChar(u'.').Add(item->ClassName).AddChar(u'{').Add(item->Style).Add(u"}\r\n");
}

hstring TStyleIndexer::GenerateCSS() const {
  TFastString builder(65535);
  GenerateCSS(builder);
  return builder.GetAsString();
}

}  // namespace ht
