// Signatures of a key at the other end of the link, beside the same ones with the key at hand.
#include <stdlib.h>
#include <unistd.h>

#include "benchmarks/bench_table.h"
#include "components/logger/logger.h"
#include "tools/support/pkcs12_maker.h"
#include "tools/support/signing_link.h"

namespace {

using namespace zorvanelink;
using components::cert::RSASignReqArgs;

constexpr double kMostAdded = 0.5;  // ms a signature
constexpr int kRounds = 20;         // the best one counts
constexpr int kSignatures = 50;     // a round

// Of one signature.
template <class Sign>
double secondsOf(Sign&& sign) {
    return bench::SecondsOf([&] {
               for (int i = 0; i < kSignatures; ++i) {
                   sign();
               }
           }) /
           kSignatures;
}

}  // namespace

int main() {
    components::logger::Logger::enable_console_log_ = false;
    components::logger::Logger::enable_file_log_ = false;
    char folder[] = "/tmp/zvl-bench-XXXXXX";
    if (mkdtemp(folder) == nullptr) {
        return 2;
    }
    components::ipc::PortPlace const place{components::ipc::kDefaultPort,
                                           std::string(folder) + "/port"};
    test::Pkey const key = test::MakeKey("RSA");
    RSASignReqArgs args;
    args.hash = NID_sha256;
    args.data = std::string(32, 'd');
    args.dataLen = 32;
    bool good = false;
    bench::BenchTable table("Signing over the link, against the same signatures without it");
    {
        test::SigningLink link(place, [&](std::string const& request) {
            return test::AnswerWith(key.get(), request);
        });
        auto const sign = link.key.RsaFuns().sign;
        double here = 1e9;
        double there = 1e9;
        for (int round = 0; round < kRounds; ++round) {
            here = std::min(here, secondsOf([&] {
                                return test::SignWith(
                                    key.get(), *components::cert::ReadSignJob(args.Serial()));
                            }));
            there = std::min(there, secondsOf([&] { return sign(args).data; }));
        }
        good = link.Stands() && sign(args).data.size() == 256;
        table.Add("RSA 2048, key at hand", here * 1e3, "ms");
        table.Add("RSA 2048, over the link", there * 1e3, "ms");
        table.AddAtMost("RSA 2048, added by the link", (there - here) * 1e3, "ms", kMostAdded);
    }
    unlink(place.file.c_str());
    rmdir(folder);
    return good ? table.Print() : 2;
}
