#include "lumo/core/markup_attributes.h"
#include "lumo/core/markup_encoding.h"
#include "lumo/core/markup_index.h"
#include "lumo/core/markup_tokenizer.h"
#include "lumo/core/markup_units.h"

namespace lumo {
namespace {

using vanta::EqualAsciiNoCase;

// The value of an attribute in the tag or instruction that begins at `offset`.
String AttributeOf(StringView text, LONG offset, StringView wanted) {
  AttributeRecords attributes;
  const WCHAR* const end = text.data() + text.size();
  const WCHAR* name = text.data() + offset + 1;
  while (name != end && !EndsMarkupName(*name)) ++name;
  UnitFinder finder(name, end);
  ReadAttributes(text.data(), name, finder, &attributes);
  for (const AttributeRecord& found : attributes) {
    const StringView attribute = text.substr(static_cast<size_t>(found.name), static_cast<size_t>(found.name_length));
    if (EqualAsciiNoCase(attribute, wanted))
      return String(text.substr(static_cast<size_t>(found.value), found.ValueLength()));
  }
  return {};
}

// The "encoding" of an XML declaration that nothing but blanks precedes.
String OfXmlDeclaration(StringView text) {
  MarkupTokenizer tokenizer(text);
  MarkupToken token;
  bool taken = tokenizer.Next(&token);
  if (taken && token.type == MarkupNode::Whitespace) taken = tokenizer.Next(&token);
  if (!taken || token.type != MarkupNode::Instruction || !token.is_finished) return {};
  if (NodeName(text, token) != TEXT("xml")) return {};
  return AttributeOf(text, token.offset, TEXT("encoding"));
}

// "text/html; charset=gb2312" → "gb2312"
String CharsetOf(StringView content) {
  constexpr StringView kKey = TEXT("charset=");
  for (size_t at = 0; at + kKey.size() <= content.size(); ++at) {
    if (!EqualAsciiNoCase(content.substr(at, kKey.size()), kKey)) continue;
    const StringView rest = content.substr(at + kKey.size());
    return String(rest.substr(0, rest.find_first_of(TEXT("; \t\r\n\"'"))));
  }
  return {};
}

String OfMetaElement(StringView text, LONG offset) {
  String charset = AttributeOf(text, offset, TEXT("charset"));
  if (!charset.empty()) return charset;
  if (!EqualAsciiNoCase(AttributeOf(text, offset, TEXT("http-equiv")), TEXT("Content-Type"))) return {};
  return CharsetOf(AttributeOf(text, offset, TEXT("content")));
}

String OfMetaElements(StringView text) {
  MarkupIndex index;
  MarkupLog ignored;
  IndexMarkup(text, &index, &ignored);
  // Whether an element is, or stands inside, a head or html element; parents come before their children.
  const MarkupRecords& records = index.elements;
  std::vector<bool> inside(records.size());
  for (size_t i = 1; i < records.size(); ++i) {
    const ElementRecord& element = records[i];
    const StringView name = NameOf(text, element);
    const auto parent = static_cast<size_t>(element.parent);
    inside[i] = inside[parent] || EqualAsciiNoCase(name, TEXT("head")) || EqualAsciiNoCase(name, TEXT("html"));
    if (!inside[parent] || !EqualAsciiNoCase(name, TEXT("meta"))) continue;
    String charset = OfMetaElement(text, element.start);
    if (!charset.empty()) return charset;
  }
  return {};
}

struct CodePage {
  StringView name;
  UINT page;
};
constexpr CodePage kCodePages[] = {
    {TEXT("UTF-8"), CP_UTF8},     {TEXT("us-ascii"), 20127},
    {TEXT("gb2312"), 936},        {TEXT("gbk"), 936},
    {TEXT("gb18030"), 54936},     {TEXT("big5"), 950},
    {TEXT("shift_jis"), 932},     {TEXT("euc-jp"), 51932},
    {TEXT("euc-kr"), 51949},      {TEXT("ks_c_5601-1987"), 949},
    {TEXT("koi8-r"), 20866},      {TEXT("koi8-u"), 21866},
    {TEXT("windows-874"), 874},   {TEXT("windows-1250"), 1250},
    {TEXT("windows-1251"), 1251}, {TEXT("windows-1252"), 1252},
    {TEXT("windows-1253"), 1253}, {TEXT("windows-1254"), 1254},
    {TEXT("windows-1255"), 1255}, {TEXT("windows-1256"), 1256},
    {TEXT("windows-1257"), 1257}, {TEXT("windows-1258"), 1258},
    {TEXT("iso-8859-1"), 28591},  {TEXT("iso-8859-2"), 28592},
    {TEXT("iso-8859-3"), 28593},  {TEXT("iso-8859-4"), 28594},
    {TEXT("iso-8859-5"), 28595},  {TEXT("iso-8859-6"), 28596},
    {TEXT("iso-8859-7"), 28597},  {TEXT("iso-8859-8"), 28598},
    {TEXT("iso-8859-9"), 28599},  {TEXT("iso-8859-13"), 28603},
    {TEXT("iso-8859-15"), 28605},
};

}  // namespace

String DeclaredEncoding(const String& text) {
  String declared = OfXmlDeclaration(text);
  return declared.empty() ? OfMetaElements(text) : declared;
}

UINT CodePageOf(StringView encoding) {
  for (const CodePage& row : kCodePages) {
    if (EqualAsciiNoCase(row.name, encoding)) return row.page;
  }
  return CP_ACP;
}

}  // namespace lumo
