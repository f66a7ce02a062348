#include "tools/simservice/gatekeeper.h"

#include <fmt/format.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <optional>

#include "components/cert/pkcs12.h"
#include "components/utils/base64.h"
#include "components/utils/secret_string.h"
#include "components/utils/sensitive_value.h"

namespace zorvanelink::simservice {
namespace {

using common::MsgCode;
using core::sslvpn::CLMsgStartData;
namespace utils = components::utils;

// The reader of certificates wants a path: this file has one and lies on no disk.
class MemoryFile {
  public:
    explicit MemoryFile(std::string_view bytes) : descriptor_(memfd_create("pkcs12", MFD_CLOEXEC)) {
        while (descriptor_ >= 0 && !bytes.empty()) {
            ssize_t const written = write(descriptor_, bytes.data(), bytes.size());
            if (written <= 0) {
                break;  // a file cut short is no certificate
            }
            bytes.remove_prefix(static_cast<std::size_t>(written));
        }
    }
    ~MemoryFile() {
        if (descriptor_ >= 0) {
            close(descriptor_);
        }
    }
    MemoryFile(MemoryFile const&) = delete;
    MemoryFile& operator=(MemoryFile const&) = delete;
    std::string Path() const { return fmt::format("/proc/self/fd/{}", descriptor_); }

  private:
    int const descriptor_;
};

// Nothing when there is no file certificate, it cannot be read, or the PIN is wrong.
std::optional<CertInfo> openCertificate(CLMsgStartData const& start) {
    if (!start.pkcs12CertFileData) {
        return std::nullopt;
    }
    utils::SecretString const bytes(utils::Base64Decode(*start.pkcs12CertFileData, false));
    MemoryFile const file(bytes.Get());
    CertInfo cert;
    cert.filePath = file.Path();
    cert.pin = start.encryptedPinCode.value_or("");
    if (utils::ParsePkcs12Cert(cert, false) != utils::kPkcs12Ok) {
        return std::nullopt;
    }
    return cert;
}

bool isCertificateOf(User const& user, CertInfo const& cert) {
    return user.certificate == cert.commonName || user.certificate == cert.fingerprint;
}

template <class Predicate>
User const* findUser(std::vector<User> const& users, Predicate matches) {
    auto const found = std::find_if(users.begin(), users.end(), matches);
    return found == users.end() ? nullptr : &*found;
}

bool meets(core::sslvpn::UserPasswordComplexity const& policy, std::string const& user,
           std::string const& password) {
    auto const count = [&](int (*is)(int)) {
        return std::ranges::count_if(password, [is](unsigned char c) { return is(c) != 0; });
    };
    auto const others = static_cast<std::ptrdiff_t>(password.size()) - count(&isalnum);
    return !policy.enableComplexity ||
           (static_cast<int>(password.size()) >= policy.minLength &&
            count(&isupper) >= policy.capitalLetters && count(&islower) >= policy.smallLetters &&
            count(&isdigit) >= policy.numericCharacters &&
            others >= policy.nonAlphanumericLetters &&
            (!policy.noIncludeUserName || password.find(user) == std::string::npos));
}

}  // namespace

Gatekeeper::Gatekeeper(Scenario const& scenario, Scheduler const& scheduler)
    : scenario_(scenario), scheduler_(scheduler) {
}

Judgement Gatekeeper::Judge(CLMsgStartData const& start) {
    MsgCode refusal{};
    auto const* const user = recognise(start, refusal);
    auto const name = user != nullptr ? user->name : start.user;
    if (lockedSeconds(name) == 0) {
        if (user != nullptr) {
            accounts_[name].wrong_tries = 0;
            return {user};
        }
        if (refusal == MsgCode::ERR_AUTH_USER_OR_PASS) {
            countWrongTry(name);
        }
    }
    if (int const seconds = lockedSeconds(name); seconds > 0) {
        return {nullptr, MsgCode::ERR_AUTH_USER_ACCOUNT_LOCK, seconds};
    }
    return {nullptr, refusal};
}

User const* Gatekeeper::recognise(CLMsgStartData const& start, MsgCode& refusal) const {
    User const* user = nullptr;
    if (common::NeedsPassword(start.authType)) {
        utils::SecretString const password(utils::DecodeSensitiveValue(start.encryptedPassword));
        user = findUser(scenario_.users, [&](User const& known) {
            return known.name == start.user && passwordOf(known) == password.Get();
        });
        if (user == nullptr) {
            refusal = MsgCode::ERR_AUTH_USER_OR_PASS;
            return nullptr;
        }
    }
    if (!common::NeedsCertificate(start.authType)) {
        return user;
    }
    refusal = MsgCode::ERR_AUTH_BAD_CERT;
    auto const cert = openCertificate(start);
    if (!cert) {
        return nullptr;
    }
    if (user == nullptr) {
        return findUser(scenario_.users,
                        [&](User const& known) { return isCertificateOf(known, *cert); });
    }
    return user->certificate.empty() || isCertificateOf(*user, *cert) ? user : nullptr;
}

std::string const& Gatekeeper::passwordOf(User const& user) const {
    auto const account = accounts_.find(user.name);
    bool const changed = account != accounts_.end() && !account->second.password.empty();
    return changed ? account->second.password : user.password;
}

bool Gatekeeper::MustChange(User const& user) const {
    return scenario_.password.change != 0 && passwordOf(user) == user.password;
}

MsgCode Gatekeeper::ChangePassword(User const& user, std::string const& current,
                                   std::string const& password) {
    utils::SecretString const before(utils::DecodeSensitiveValue(current));
    utils::SecretString const wanted(utils::DecodeSensitiveValue(password));
    auto const used = [&](std::vector<std::string> const& list) {
        return std::ranges::find(list, wanted.Get()) != list.end();
    };
    if (before.Get() != passwordOf(user)) {
        return MsgCode::WRONG_USR_PWD_IN_CHANGE_PWD;
    }
    if (!meets(scenario_.password.policy, user.name, wanted.Get())) {
        return MsgCode::ERR_PASSWORD_COMPLEXITY;
    }
    auto& account = accounts_[user.name];
    if (before.Get() == wanted.Get() || used(account.old_ones) ||
        used(scenario_.password.history)) {
        return MsgCode::ERR_HISTORY_PASSWORD;
    }
    account.old_ones.push_back(before.Get());
    account.password = wanted.Get();
    return MsgCode::CHANGE_PWD_SUCCESS;
}

int Gatekeeper::lockedSeconds(std::string const& name) const {
    auto const account = accounts_.find(name);
    if (account == accounts_.end() || account->second.locked_until <= scheduler_.Now()) {
        return 0;
    }
    auto const left = account->second.locked_until - scheduler_.Now();
    return static_cast<int>(std::chrono::ceil<std::chrono::seconds>(left).count());
}

void Gatekeeper::countWrongTry(std::string const& name) {
    auto const* const user =
        findUser(scenario_.users, [&](User const& known) { return known.name == name; });
    if (user == nullptr || user->locked_after == 0) {
        return;
    }
    auto& account = accounts_[name];
    if (++account.wrong_tries >= user->locked_after) {
        account.wrong_tries = 0;
        account.locked_until = scheduler_.Now() + std::chrono::seconds(user->lock_seconds);
    }
}

}  // namespace zorvanelink::simservice
