// Certificates whose keys lie in the user's own tokens (smart cards, USB keys), and signatures by
// those keys, over PKCS#11. A module is loaded when something is first asked of it.
//
// Every call waits for a card and Sign for a person: on a worker thread only, one call at a time.
// A token stays logged in from the first signature until CloseSessions, or until it goes.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "components/cert/cert_interface.h"
#include "components/cert/sign_job.h"

namespace zorvanelink::components::cert {

class Pkcs11Module;
class Pkcs11Session;

// What a token tells of the wrong PINs that it still takes; most tell nothing before they are few.
enum class PinTries { kNotTold, kFew, kLast, kNone };

struct PinQuestion {
    std::string tokenLabel;
    PinTries triesLeft = PinTries::kNotTold;
};

struct TokenSignature {
    enum class Outcome {
        kSigned,
        kCancelled,  // by the user, who was asked for the PIN
        kWrongPin,
        kPinLocked,
        kNoToken,  // not there, or gone meanwhile
        kRefused,  // the token does not make such signatures
        kFailed,
    };
    Outcome outcome = Outcome::kFailed;
    std::string signature;  // empty but for kSigned
    std::string tokenLabel;
    PinTries triesLeft = PinTries::kNotTold;
};

class Pkcs11Provider : public CertProvider {
  public:
    // False, or an empty PIN: the user wants none. On the thread of the call.
    using AskPin = std::function<bool(PinQuestion const& question, std::string& pin)>;

    // An absolute path; empty: the modules that p11-kit is configured for.
    explicit Pkcs11Provider(std::string module = {});
    ~Pkcs11Provider() override;

    // RSA certificates whose keys are in the same token: certType 1, the PKCS#11 URI in certAlias,
    // tokenLabel set. Nobody is asked for a PIN; a key that hides until then shows by its public
    // half.
    std::vector<CertInfo> EnumCerts() override;
    std::vector<GmCertInfo> EnumGmCerts() override { return {}; }

    // `uri`: a certificate's certAlias. Asks for the PIN when the token wants one, once, and tries
    // it once.
    TokenSignature Sign(std::string const& uri, SignJob const& job, AskPin const& ask);
    // Logs every token out.
    void CloseSessions();

  private:
    using Sessions = std::map<std::string, std::unique_ptr<Pkcs11Session>>;

    bool load();

    std::string const path_;
    std::mutex mutex_;
    std::shared_ptr<Pkcs11Module const> module_;
    Sessions sessions_;  // by the URI of the token
};

}  // namespace zorvanelink::components::cert
