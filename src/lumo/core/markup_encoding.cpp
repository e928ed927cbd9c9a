#include "lumo/core/markup_encoding.h"

#include <string.h>

namespace lumo {
namespace {

struct Mark {
  std::string_view bytes;
  const WCHAR* encoding;
};
constexpr Mark kMarks[] = {
    {"\xEF\xBB\xBF", TEXT("UTF-8")},
    {"\xFF\xFE", TEXT("UTF-16LE")},
    {"\xFE\xFF", TEXT("UTF-16BE")},
};

const Mark* FindMark(std::string_view bytes) {
  for (const Mark& mark : kMarks) {
    if (bytes.starts_with(mark.bytes)) return &mark;
  }
  return nullptr;
}

// How many bytes the sequence at the front takes; 0 when it is not valid.
size_t Utf8SequenceLength(std::string_view bytes) {
  const auto byte = [&](size_t i) { return i < bytes.size() ? static_cast<BYTE>(bytes[i]) : BYTE{}; };
  const BYTE lead = byte(0), second = byte(1);
  if (lead < 0x80) return 1;
  const size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
  if (lead < 0xC2 || lead > 0xF4) return 0;
  // Overlong forms, surrogates, beyond U+10FFFF.
  if ((lead == 0xE0 && second < 0xA0) || (lead == 0xED && second > 0x9F)) return 0;
  if ((lead == 0xF0 && second < 0x90) || (lead == 0xF4 && second > 0x8F)) return 0;
  for (size_t i = 1; i < length; ++i) {
    if ((byte(i) & 0xC0) != 0x80) return 0;
  }
  return length;
}

bool IsUtf8(std::string_view bytes) {
  while (!bytes.empty()) {
    const size_t length = Utf8SequenceLength(bytes);
    if (!length) return false;
    bytes.remove_prefix(length);
  }
  return true;
}

String FromUtf16(std::string_view bytes, bool swap, MarkupLog* log) {
  String text(bytes.size() / sizeof(WCHAR), WCHAR{});
  memcpy(text.data(), bytes.data(), text.size() * sizeof(WCHAR));
  if (bytes.size() % sizeof(WCHAR)) log->Add(TEXT("truncation_error"), {{TEXT("length"), bytes.size()}});
  if (swap) {
    for (WCHAR& unit : text) unit = static_cast<WCHAR>((unit << 8) | (unit >> 8));
    log->Add(TEXT("endian_swap"));
  }
  const size_t nulls = std::erase(text, WCHAR{});
  if (nulls) log->Add(TEXT("nulls_removed"), {{TEXT("length"), nulls}});
  return text;
}

// The units written into `text`, 0 when there is nothing to convert or the system will not.
int Convert(std::string_view bytes, UINT page, DWORD flags, String* text) {
  return MultiByteToWideChar(page, flags, bytes.data(), static_cast<int>(bytes.size()), text->data(),
                             static_cast<int>(text->size()));
}

String FromBytes(std::string_view bytes, UINT page, MarkupLog* log) {
  String text(bytes.size() + bytes.size() / 100 + 1, WCHAR{});
  int length = Convert(bytes, page, MB_ERR_INVALID_CHARS, &text);
  if (!length && !bytes.empty()) {
    log->Add(TEXT("conversion_loss"));
    length = Convert(bytes, page, 0, &text);
    if (!length) length = Convert(bytes, CP_ACP, 0, &text);  // the system lacks that code page
  }
  text.resize(static_cast<size_t>(length));
  log->Add(TEXT("converted_to"), {{TEXT("encoding"), TEXT("UTF-16")}, {TEXT("length"), text.size()}});
  return text;
}

String Widen(std::string_view bytes) {
  String text;
  for (const char byte : bytes) text.push_back(static_cast<BYTE>(byte));
  return text;
}

DecodedMarkup DecodeUnmarked(std::string_view bytes, MarkupLog* log) {
  if (IsUtf8(bytes)) return {FromBytes(bytes, CP_UTF8, log), TEXT("UTF-8")};
  constexpr size_t kHead = 65536;
  String encoding = DeclaredEncoding(Widen(bytes.substr(0, kHead)));
  if (encoding.empty()) encoding = TEXT("ANSI");
  log->Add(TEXT("utf8_detection"), {{TEXT("encoding"), encoding}});
  String text = FromBytes(bytes, CodePageOf(encoding), log);
  return {std::move(text), std::move(encoding)};
}

}  // namespace

DecodedMarkup DecodeMarkup(std::string_view bytes, MarkupLog* log) {
  const Mark* const mark = FindMark(bytes);
  if (!mark) return DecodeUnmarked(bytes, log);
  bytes.remove_prefix(mark->bytes.size());
  const bool eight_bits = mark == kMarks;
  const bool swap = mark == kMarks + 2;
  return {eight_bits ? FromBytes(bytes, CP_UTF8, log) : FromUtf16(bytes, swap, log), mark->encoding};
}

}  // namespace lumo
