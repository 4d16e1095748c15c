// Adds a certificate authority to, or removes it from, the local machine's trusted roots of the Wine
// prefix it runs in, for the end-to-end tests of the secure version check.
//   rootCertificate add|remove <DER file>
#include <windows.h>

#include <wincrypt.h>

#include <cstdio>
#include <vector>

int wmain(int argc, wchar_t** argv)
{
    if (argc != 3)
        return 2;
    std::vector<BYTE> der;
    if (FILE* f = _wfopen(argv[2], L"rb")) {
        BYTE buffer[4096];
        size_t n;
        while ((n = fread(buffer, 1, sizeof buffer, f)) > 0)
            der.insert(der.end(), buffer, buffer + n);
        fclose(f);
    }
    HCERTSTORE store = CertOpenStore(CERT_STORE_PROV_SYSTEM_W, 0, 0, CERT_SYSTEM_STORE_LOCAL_MACHINE, L"Root");
    if (der.empty() || !store)
        return 1;
    bool ok = false;
    if (lstrcmpW(argv[1], L"add") == 0) {
        ok = CertAddEncodedCertificateToStore(store, X509_ASN_ENCODING, der.data(), static_cast<DWORD>(der.size()),
                                              CERT_STORE_ADD_REPLACE_EXISTING, nullptr);
    } else if (PCCERT_CONTEXT given =
                   CertCreateCertificateContext(X509_ASN_ENCODING, der.data(), static_cast<DWORD>(der.size()))) {
        PCCERT_CONTEXT found =
            CertFindCertificateInStore(store, X509_ASN_ENCODING, 0, CERT_FIND_EXISTING, given, nullptr);
        ok = !found || CertDeleteCertificateFromStore(found);
        CertFreeCertificateContext(given);
    }
    CertCloseStore(store, 0);
    return ok ? 0 : 1;
}
