#include "components/cert/pkcs11_provider.h"

#include <openssl/rsa.h>

#include <algorithm>
#include <optional>
#include <set>

#include "components/cert/pkcs11_module.h"
#include "components/cert/pkcs12.h"
#include "components/logger/logger.h"
#include "components/utils/secret_string.h"
#include "components/utils/text.h"

namespace zorvanelink::components::cert {
namespace {

using logger::Log;
using Outcome = TokenSignature::Outcome;

constexpr std::size_t kMaxCerts = 256;
constexpr std::uint16_t kOfSystem = 1;  // certType
constexpr std::size_t kPinRoom = 256;   // bytes; a PIN that moves would leave a copy
constexpr char kIdPart[] = ";id=";

// A text of fixed width, filled up with blanks.
template <std::size_t kSize>
std::string trimmed(unsigned char const (&text)[kSize]) {
    std::string_view const all(reinterpret_cast<char const*>(text), kSize);
    return utils::RepairUtf8(all.substr(0, all.find_last_not_of(std::string_view(" \0", 2)) + 1));
}

std::string percent(std::string_view bytes) {
    std::string text;
    for (char const byte : bytes) {
        text += '%' + utils::ConvertHexToStr(std::string(1, byte));
    }
    return text;
}

std::string escaped(std::string_view text) {
    constexpr std::string_view kPlain =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~";
    std::string result;
    for (char const c : text) {
        result += kPlain.find(c) != std::string_view::npos ? std::string(1, c) : percent({&c, 1});
    }
    return result;
}

std::string uriOf(CK_TOKEN_INFO const& token) {
    return "pkcs11:token=" + escaped(trimmed(token.label)) +
           ";serial=" + escaped(trimmed(token.serialNumber));
}

PinTries triesOf(CK_TOKEN_INFO const& token) {
    return (token.flags & CKF_USER_PIN_LOCKED) != 0      ? PinTries::kNone
           : (token.flags & CKF_USER_PIN_FINAL_TRY) != 0 ? PinTries::kLast
           : (token.flags & CKF_USER_PIN_COUNT_LOW) != 0 ? PinTries::kFew
                                                         : PinTries::kNotTold;
}

Outcome outcomeOf(CK_RV result) {
    switch (result) {
        case CKR_OK:
            return Outcome::kSigned;
        case CKR_PIN_INCORRECT:
        case CKR_PIN_INVALID:
        case CKR_PIN_LEN_RANGE:
            return Outcome::kWrongPin;
        case CKR_PIN_LOCKED:
            return Outcome::kPinLocked;
        case CKR_FUNCTION_CANCELED:
        case CKR_CANCEL:
            return Outcome::kCancelled;
        case CKR_DEVICE_REMOVED:
        case CKR_TOKEN_NOT_PRESENT:
        case CKR_TOKEN_NOT_RECOGNIZED:
        case CKR_SLOT_ID_INVALID:
        case CKR_SESSION_CLOSED:
        case CKR_SESSION_HANDLE_INVALID:
            return Outcome::kNoToken;
        case CKR_MECHANISM_INVALID:
        case CKR_MECHANISM_PARAM_INVALID:
        case CKR_KEY_FUNCTION_NOT_PERMITTED:
        case CKR_KEY_TYPE_INCONSISTENT:
        case CKR_FUNCTION_NOT_SUPPORTED:
            return Outcome::kRefused;
        default:
            return Outcome::kFailed;
    }
}

std::vector<CK_OBJECT_HANDLE> rsaKeys(Pkcs11Session const& session, CK_OBJECT_CLASS kind,
                                      std::optional<std::string> id = {}) {
    CK_KEY_TYPE type = CKK_RSA;
    std::vector wanted{NumberIs(CKA_CLASS, kind), NumberIs(CKA_KEY_TYPE, type)};
    if (id) {
        wanted.push_back(BytesAre(CKA_ID, *id));
    }
    return session.Find(std::move(wanted));
}

// Of the certificates whose keys are there.
std::set<std::string> keyIds(Pkcs11Session const& session) {
    std::set<std::string> ids;
    for (CK_OBJECT_CLASS const kind : {CKO_PRIVATE_KEY, CKO_PUBLIC_KEY}) {
        for (CK_OBJECT_HANDLE const key : rsaKeys(session, kind)) {
            if (auto id = session.Attribute(key, CKA_ID); id && !id->empty()) {
                ids.insert(*std::move(id));
            }
        }
    }
    return ids;
}

void listToken(Pkcs11Session const& session, CK_TOKEN_INFO const& token,
               std::vector<CertInfo>& certs) {
    std::set<std::string> const ids = keyIds(session);
    CK_OBJECT_CLASS kind = CKO_CERTIFICATE;
    CK_CERTIFICATE_TYPE type = CKC_X_509;
    for (CK_OBJECT_HANDLE const object :
         session.Find({NumberIs(CKA_CLASS, kind), NumberIs(CKA_CERTIFICATE_TYPE, type)})) {
        auto const id = session.Attribute(object, CKA_ID);
        auto const der = session.Attribute(object, CKA_VALUE);
        CertInfo cert;
        if (certs.size() < kMaxCerts && id && ids.contains(*id) && der &&
            utils::ParseX509Cert(cert, *der) && cert.isRsa) {
            cert.certType = kOfSystem;
            cert.certAlias = uriOf(token) + kIdPart + percent(*id);
            cert.tokenLabel = trimmed(token.label);
            certs.push_back(std::move(cert));
        }
    }
}

// One signature: the token that it is asked of, and the PIN as long as that takes.
class Signing {
  public:
    Signing(Pkcs11Session const& session, CK_TOKEN_INFO const& token,
            Pkcs11Provider::AskPin const& ask)
        : session_(session), token_(token), ask_(ask) {}

    Outcome Run(std::string const& id, SignJob const& job, std::string& signature) {
        bool const raw = job.type == kRSAPrivEnc && job.padding == RSA_NO_PADDING;
        std::string const data = BytesToPad(job);
        if (data.empty() || (job.type == kRSAPrivEnc && !raw && job.padding != RSA_PKCS1_PADDING)) {
            return Outcome::kRefused;
        }
        bool const wantsLogin = (token_.flags & CKF_LOGIN_REQUIRED) != 0 && !session_.LoggedIn();
        if (Outcome const in = wantsLogin ? login(CKU_USER) : Outcome::kSigned;
            in != Outcome::kSigned) {
            return in;
        }
        auto const keys = rsaKeys(session_, CKO_PRIVATE_KEY, id);
        if (keys.empty()) {
            Log().warning("Token [{}] has no such key", trimmed(token_.label));
            return Outcome::kNoToken;
        }
        CK_RV result = session_.BeginSign(keys.front(), raw ? CKM_RSA_X_509 : CKM_RSA_PKCS);
        if (result == CKR_OK) {
            auto const each_time = session_.Attribute(keys.front(), CKA_ALWAYS_AUTHENTICATE);
            if (each_time && each_time->find_first_not_of('\0') != std::string::npos) {
                if (Outcome const in = login(CKU_CONTEXT_SPECIFIC); in != Outcome::kSigned) {
                    return in;
                }
            }
            result = session_.Sign(data, signature);
        }
        return told(result, "sign");
    }

  private:
    Outcome login(CK_USER_TYPE user) {
        bool const asks_itself = (token_.flags & CKF_PROTECTED_AUTHENTICATION_PATH) != 0;
        if (triesOf(token_) == PinTries::kNone) {
            return Outcome::kPinLocked;
        }
        if (!asks_itself && pin_.Get().empty()) {
            PinQuestion const question{trimmed(token_.label), triesOf(token_)};
            pin_.Get().reserve(kPinRoom);
            if (!ask_(question, pin_.Get()) || pin_.Get().empty()) {
                return Outcome::kCancelled;
            }
            utils::KeepOutOfDumps(pin_.Get());
        }
        CK_RV const result = session_.Login(user, asks_itself ? nullptr : &pin_.Get());
        return told(result == CKR_USER_ALREADY_LOGGED_IN ? CKR_OK : result, "log in");
    }
    Outcome told(CK_RV result, char const* what) const {
        if (result != CKR_OK) {
            Log().warning("Token [{}] does not {}: {:#x}", trimmed(token_.label), what, result);
        }
        return outcomeOf(result);
    }

    Pkcs11Session const& session_;
    CK_TOKEN_INFO const& token_;
    Pkcs11Provider::AskPin const& ask_;
    utils::SecretString pin_{std::string()};
};

std::string bytesOf(std::string_view percents) {
    std::string bytes;
    for (std::size_t at = 0; at + 2 < percents.size(); at += 3) {
        bytes += static_cast<char>(
            std::strtoul(std::string(percents.substr(at + 1, 2)).c_str(), nullptr, 16));
    }
    return bytes;
}

}  // namespace

Pkcs11Provider::Pkcs11Provider(std::string module) : path_(std::move(module)) {
}

Pkcs11Provider::~Pkcs11Provider() = default;

bool Pkcs11Provider::load() {
    if (!module_) {
        module_ = Pkcs11Module::Load(path_);
    }
    return module_ != nullptr;
}

std::vector<CertInfo> Pkcs11Provider::EnumCerts() {
    std::lock_guard const lock(mutex_);
    std::vector<CertInfo> certs;
    if (!load()) {
        return certs;
    }
    for (auto const& [slot, token] : module_->Tokens()) {
        if (auto const session = Pkcs11Session::Open(module_, slot)) {
            listToken(*session, token, certs);
        }
    }
    return certs;
}

TokenSignature Pkcs11Provider::Sign(std::string const& uri, SignJob const& job, AskPin const& ask) {
    std::lock_guard const lock(mutex_);
    TokenSignature result;
    result.outcome = Outcome::kNoToken;
    std::size_t const end = uri.find(kIdPart);
    if (end == std::string::npos || !load()) {
        return result;
    }
    std::string const wanted = uri.substr(0, end);
    auto const tokens = module_->Tokens();
    auto const found = std::ranges::find_if(
        tokens, [&](auto const& token) { return uriOf(token.second) == wanted; });
    auto held = sessions_.extract(wanted);
    auto session = held ? std::move(held.mapped()) : nullptr;
    if (found == tokens.end()) {
        Log().warning("The token of a signing request is not there");
        return result;
    }
    auto token = found->second;
    result.tokenLabel = trimmed(token.label);
    if (!session || !session->Alive()) {
        session = Pkcs11Session::Open(module_, found->first);
    }
    if (!session) {
        return result;
    }
    result.outcome = Signing(*session, token, ask)
                         .Run(bytesOf(std::string_view(uri).substr(end + sizeof kIdPart - 1)), job,
                              result.signature);
    if (result.outcome == Outcome::kSigned) {
        sessions_[wanted] = std::move(session);
    } else if ((*module_)->C_GetTokenInfo(found->first, &token) == CKR_OK) {
        result.triesLeft = triesOf(token);
    }
    return result;
}

void Pkcs11Provider::CloseSessions() {
    std::lock_guard const lock(mutex_);
    sessions_.clear();
}

}  // namespace zorvanelink::components::cert
