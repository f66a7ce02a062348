// Texts of signing requests and of their answers: what can be read is written so that it reads the
// same again, and a request never makes more to sign than may cross.
#include "components/cert/sign_job.h"
#include "tests/fuzz/fuzz_target.h"

using namespace zorvanelink::components::cert;

namespace {

template <class Record, class... Type>
void comesBack(std::string const& input, Type... type) {
    Record record;
    if (record.Deserial(input)) {
        std::string const text = record.Serial(type...);
        Record again;
        zorvanelink::test::Require(again.Deserial(text) && again.Serial(type...) == text);
    }
}

}  // namespace

void zorvanelink::test::Fuzz(std::string const& input) {
    comesBack<RSAMethReqArgs>(input, kRSAPrivEnc);
    comesBack<RSASignReqArgs>(input);
    comesBack<RSAVerfyReqArgs>(input);
    comesBack<RSARepData>(input, kRSAPrivEnc);
    comesBack<ECCReqArgs>(input);
    comesBack<ECCRepData>(input);
    if (auto const job = ReadSignJob(input)) {
        Require(job->type != kRSAUnknown && job->data.size() <= kMaxSignBytes);
        BytesToPad(*job);
    }
}
