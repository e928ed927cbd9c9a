#include "winhost/trust/indirect_data.h"

#include <openssl/objects.h>

#include <algorithm>
#include <array>

namespace winhost {
namespace {

constexpr char kSpcIndirectData[] = "1.3.6.1.4.1.311.2.1.4";

bool IsObject(const ASN1_OBJECT* object, const char* dotted) {
  char text[80] = {};
  return object && OBJ_obj2txt(text, sizeof(text), object, 1) > 0 && std::string_view(text) == dotted;
}

const EVP_MD* DigestNamed(DerBytes object_id) {
  const std::uint8_t* at = object_id.data();
  const OwnedObject object(d2i_ASN1_OBJECT(nullptr, &at, static_cast<long>(object_id.size())));
  switch (object ? OBJ_obj2nid(object.get()) : NID_undef) {
    case NID_sha1:
      return EVP_sha1();
    case NID_sha256:
      return EVP_sha256();
    case NID_sha384:
      return EVP_sha384();
    case NID_sha512:
      return EVP_sha512();
    default:
      return nullptr;
  }
}

bool DigestRange(const FileView& file, std::uint64_t begin, std::uint64_t end, EVP_MD_CTX* context) {
  std::array<std::uint8_t, 64 * 1024> chunk;
  while (begin < end) {
    const auto size = static_cast<std::uint32_t>(std::min<std::uint64_t>(chunk.size(), end - begin));
    if (!file.Read(begin, chunk.data(), size) || !EVP_DigestUpdate(context, chunk.data(), size)) return false;
    begin += size;
  }
  return true;
}

}  // namespace

std::optional<IndirectData> ReadIndirectData(const PKCS7* message) {
  if (!PKCS7_type_is_signed(message) || !message->d.sign || !message->d.sign->contents) return std::nullopt;
  const PKCS7* inner = message->d.sign->contents;
  if (!IsObject(inner->type, kSpcIndirectData) || !inner->d.other || inner->d.other->type != V_ASN1_SEQUENCE) {
    return std::nullopt;
  }
  const ASN1_STRING* encoded = inner->d.other->value.sequence;
  DerBytes all(ASN1_STRING_get0_data(encoded), static_cast<std::size_t>(ASN1_STRING_length(encoded)));
  const auto sequence = EatDer(all, kDerSequence);
  if (!sequence || !all.empty()) return std::nullopt;
  DerBytes rest = sequence->content;
  const auto attribute = EatDer(rest, kDerSequence);  // what kind of file; the table it was found in says so already
  const auto digest_info = attribute ? EatDer(rest, kDerSequence) : std::nullopt;
  if (!digest_info) return std::nullopt;
  DerBytes info = digest_info->content;
  const auto algorithm = EatDer(info, kDerSequence);
  const auto digest = algorithm ? EatDer(info, kDerOctetString) : std::nullopt;
  if (!digest) return std::nullopt;
  DerBytes algorithm_rest = algorithm->content;
  const auto object_id = EatDer(algorithm_rest, kDerObjectId);
  const EVP_MD* known = object_id ? DigestNamed(object_id->whole) : nullptr;
  if (!known) return std::nullopt;
  return IndirectData{
      {sequence->content.begin(), sequence->content.end()}, known, {digest->content.begin(), digest->content.end()}};
}

std::optional<std::vector<std::uint8_t>> DigestPe(const FileView& file, const PeSignature& signature,
                                                  const EVP_MD* algorithm) {
  const OwnedDigest context(EVP_MD_CTX_new());
  std::vector<std::uint8_t> digest(EVP_MAX_MD_SIZE);
  unsigned length = 0;
  if (!context || !EVP_DigestInit_ex(context.get(), algorithm, nullptr) ||
      !DigestRange(file, 0, signature.checksum_at, context.get()) ||
      !DigestRange(file, signature.checksum_at + 4, signature.entry_at, context.get()) ||
      !DigestRange(file, signature.entry_at + 8, signature.table_at, context.get()) ||
      !EVP_DigestFinal_ex(context.get(), digest.data(), &length)) {
    return std::nullopt;
  }
  digest.resize(length);
  return digest;
}

}  // namespace winhost
