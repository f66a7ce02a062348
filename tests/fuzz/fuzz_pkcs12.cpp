// PKCS#12 files of any content, with an empty PIN.
#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>

#include "components/cert/pkcs12.h"
#include "components/logger/logger.h"

using namespace zorvanelink;

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* bytes, std::size_t size) {
    static int const file = [] {
        components::logger::Log().setLogLevel(components::logger::LOG_LEVEL::fatal);
        return memfd_create("pkcs12", 0);
    }();
    if (ftruncate(file, 0) != 0 || pwrite(file, bytes, size, 0) != static_cast<ssize_t>(size)) {
        return 0;
    }
    CertInfo cert;
    cert.filePath = "/proc/self/fd/" + std::to_string(file);
    int const result = components::utils::ParsePkcs12Cert(cert, false);
    if (result == components::utils::kPkcs12Ok && cert.fingerprint.empty()) {
        std::abort();
    }
    return 0;
}
