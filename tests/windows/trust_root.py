"""A registry file that makes a root certificate trusted in a Wine prefix: its entry in the machine's store "Root".

  trust_root.py ROOT.crt
"""
import hashlib
import ssl
import struct
import sys
from pathlib import Path

CERTIFICATE = 32  # the property that holds the certificate itself
HASH = 3          # its SHA-1

STORE = r"HKEY_LOCAL_MACHINE\Software\Microsoft\SystemCertificates\Root\Certificates"


def element(kind, data):
    return struct.pack("<III", kind, 1, len(data)) + data


def main():
    der = ssl.PEM_cert_to_DER_cert(Path(sys.argv[1]).read_text())
    digest = hashlib.sha1(der)
    blob = element(HASH, digest.digest()) + element(CERTIFICATE, der)
    print("REGEDIT4\n")
    print(f"[{STORE}\\{digest.hexdigest().upper()}]")
    print('"Blob"=hex:' + ",".join(f"{byte:02x}" for byte in blob))


if __name__ == "__main__":
    main()
