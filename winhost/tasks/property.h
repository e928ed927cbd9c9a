// The get_/put_ pair of one property of an automation interface, over a member of plain data. A put that is planned to
// fail changes nothing.
#pragma once

#include "winhost/com/object.h"

#define VANTA_TEXT_PROPERTY(Interface, Name, member)                                    \
  HRESULT get_##Name(BSTR* value) override {                                            \
    if (auto failed = PlannedFailure(#Interface "::get_" #Name)) return *failed;        \
    return ReturnBstr(member, value);                                                   \
  }                                                                                     \
  HRESULT put_##Name(BSTR value) override {                                             \
    if (auto failed = PlannedFailure(#Interface "::put_" #Name, value)) return *failed; \
    member = BstrText(value);                                                           \
    return S_OK;                                                                        \
  }

#define VANTA_VALUE_PROPERTY(Interface, Type, Name, member)                      \
  HRESULT get_##Name(Type* value) override {                                     \
    if (auto failed = PlannedFailure(#Interface "::get_" #Name)) return *failed; \
    if (!value) return E_POINTER;                                                \
    *value = member;                                                             \
    return S_OK;                                                                 \
  }                                                                              \
  HRESULT put_##Name(Type value) override {                                      \
    if (auto failed = PlannedFailure(#Interface "::put_" #Name)) return *failed; \
    member = value;                                                              \
    return S_OK;                                                                 \
  }
