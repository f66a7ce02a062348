// PKCS#12 files of any content, with an empty PIN.
#include <sys/mman.h>
#include <unistd.h>

#include "components/cert/pkcs12.h"
#include "components/logger/logger.h"
#include "tests/fuzz/fuzz_target.h"

void zorvanelink::test::Fuzz(std::string const& input) {
    static int const file = [] {
        components::logger::Log().setLogLevel(components::logger::LOG_LEVEL::fatal);
        return memfd_create("pkcs12", 0);
    }();
    Require(ftruncate(file, 0) == 0 &&
            pwrite(file, input.data(), input.size(), 0) == static_cast<ssize_t>(input.size()));
    CertInfo cert;
    cert.filePath = "/proc/self/fd/" + std::to_string(file);
    Require(components::utils::ParsePkcs12Cert(cert, false) != components::utils::kPkcs12Ok ||
            !cert.fingerprint.empty());
}
