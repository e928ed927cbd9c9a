// Owners of automation values: texts and variants that are freed with their scope.
#pragma once

#include "base/text.h"

#include <windows.h>
#include <objbase.h>
#include <oleauto.h>

namespace vanta {

// A BSTR; null when there was no memory, which the callee then refuses.
class Bstr {
 public:
  explicit Bstr(StringView text) : text_(SysAllocStringLen(text.data(), static_cast<UINT>(text.size()))) {}
  ~Bstr() { SysFreeString(text_); }
  Bstr(const Bstr&) = delete;
  Bstr& operator=(const Bstr&) = delete;
  BSTR Get() const { return text_; }
  BSTR Release() {
    const BSTR text = text_;
    text_ = nullptr;
    return text;
  }

 private:
  BSTR text_;
};

// A VARIANT: empty, a text or a 32-bit number. Get() is passed by value and stays owned here.
class Variant {
 public:
  Variant() { VariantInit(&value_); }
  explicit Variant(StringView text) : Variant() {
    value_.vt = VT_BSTR;
    value_.bstrVal = Bstr(text).Release();
  }
  explicit Variant(LONG number) : Variant() {
    value_.vt = VT_I4;
    value_.lVal = number;
  }
  // A text, or empty for null.
  static Variant FromOptional(const WCHAR* text) { return text ? Variant(StringView(text)) : Variant(); }
  Variant(const Variant&) = delete;
  Variant& operator=(const Variant&) = delete;
  ~Variant() { VariantClear(&value_); }
  const VARIANT& Get() const { return value_; }

 private:
  VARIANT value_;
};

// Initialises COM for a scope on this thread and balances exactly that.
class ComScope {
 public:
  explicit ComScope(DWORD model) : result_(CoInitializeEx(nullptr, model)) {}
  ~ComScope() {
    if (SUCCEEDED(result_)) CoUninitialize();
  }
  ComScope(const ComScope&) = delete;
  ComScope& operator=(const ComScope&) = delete;

 private:
  HRESULT result_;
};

}  // namespace vanta
