// Files that somebody offers as a server's certificate, DER or PEM.
#include "components/cert/server_cert.h"
#include "components/logger/logger.h"
#include "tests/fuzz/fuzz_target.h"

void zorvanelink::test::Fuzz(std::string const& input) {
    using namespace components;
    static bool const quiet = [] {
        logger::Log().setLogLevel(logger::LOG_LEVEL::fatal);
        return true;
    }();
    Require(quiet);
    utils::ServerCert cert;
    bool const taken = utils::ParseServerCert(input, "input", cert) == utils::ServerCertResult::kOk;
    Require(taken == !cert.subject.empty() && taken == !cert.sha256.empty());
    Require(!taken || input.find("PRIVATE KEY-----") == std::string::npos);
}
