#!/bin/sh
# Makes the development key pair and its code-signing certificate in the folder given, once, and prints the SHA-256 of
# the certificate's public key (DER SubjectPublicKeyInfo) as 64 hex digits: the form the deployment block takes.
#
#   make_dev_key.sh FOLDER      →  FOLDER/dev.key  FOLDER/dev.crt  FOLDER/dev.spki.sha256
#
# The key guards nothing: it lets a build sign and accept its own sample programs until a maker sets keys of its own.
set -eu

[ $# -eq 1 ] || { echo "usage: $0 FOLDER" >&2; exit 2; }
folder=$1

if [ ! -s "$folder/dev.spki.sha256" ]; then
  mkdir -p "$(dirname "$folder")"
  fresh=$(mktemp -d "$folder.XXXXXX")
  trap 'rm -rf "$fresh"' EXIT
  openssl genpkey -quiet -algorithm RSA -pkeyopt rsa_keygen_bits:2048 -out "$fresh/dev.key" 2>/dev/null ||
    openssl genpkey -algorithm RSA -pkeyopt rsa_keygen_bits:2048 -out "$fresh/dev.key" 2>/dev/null
  # Valid at any time that a machine's clock is set to in tests; `req -x509` cannot set the beginning, `ca` can.
  cat > "$fresh/ca.cnf" <<END
[ca]
default_ca = dev
[dev]
database = $fresh/index.txt
serial = $fresh/serial
new_certs_dir = $fresh
default_md = sha256
policy = any
x509_extensions = code_signing
[any]
commonName = supplied
[code_signing]
basicConstraints = critical,CA:FALSE
keyUsage = critical,digitalSignature
extendedKeyUsage = codeSigning
subjectKeyIdentifier = hash
END
  : > "$fresh/index.txt"
  openssl rand -hex 8 > "$fresh/serial"
  openssl req -new -key "$fresh/dev.key" -subj "/CN=Development signing key" -out "$fresh/dev.csr"
  openssl ca -batch -notext -config "$fresh/ca.cnf" -selfsign -keyfile "$fresh/dev.key" -in "$fresh/dev.csr" \
    -startdate 20000101000000Z -enddate 20491231235959Z -out "$fresh/dev.crt" 2>/dev/null
  openssl x509 -in "$fresh/dev.crt" -pubkey -noout | openssl pkey -pubin -outform DER |
    openssl dgst -sha256 -r | cut -c1-64 > "$fresh/dev.spki.sha256"
  rm -f "$fresh"/*.pem "$fresh"/ca.cnf "$fresh"/dev.csr "$fresh"/index.txt* "$fresh"/serial*
  # Whole or not at all, and the first of several builds wins.
  mv -T "$fresh" "$folder" 2>/dev/null || [ -s "$folder/dev.spki.sha256" ]
fi
cat "$folder/dev.spki.sha256"
