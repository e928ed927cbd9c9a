// Owners of OpenSSL objects.
#pragma once

#include <openssl/asn1.h>
#include <openssl/bio.h>
#include <openssl/evp.h>
#include <openssl/pkcs7.h>
#include <openssl/ts.h>
#include <openssl/x509.h>
#include <openssl/x509_vfy.h>

#include <memory>

namespace winhost {

template <auto Free>
struct FreeWith {
  template <class T>
  void operator()(T* object) const {
    Free(object);
  }
};
template <class T, auto Free>
using Owned = std::unique_ptr<T, FreeWith<Free>>;

// A list whose members belong to somebody else.
struct FreeX509List {
  void operator()(STACK_OF(X509) * list) const { sk_X509_free(list); }
};
using X509List = std::unique_ptr<STACK_OF(X509), FreeX509List>;

using OwnedBio = Owned<BIO, BIO_free>;
using OwnedDigest = Owned<EVP_MD_CTX, EVP_MD_CTX_free>;
using OwnedPkcs7 = Owned<PKCS7, PKCS7_free>;
using OwnedX509 = Owned<X509, X509_free>;
using OwnedStore = Owned<X509_STORE, X509_STORE_free>;
using OwnedStoreContext = Owned<X509_STORE_CTX, X509_STORE_CTX_free>;
using OwnedTimestampCheck = Owned<TS_VERIFY_CTX, TS_VERIFY_CTX_free>;
using OwnedObject = Owned<ASN1_OBJECT, ASN1_OBJECT_free>;

}  // namespace winhost
