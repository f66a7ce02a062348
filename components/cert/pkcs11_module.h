// Private to components/cert: one PKCS#11 module in this process, and what is asked of it again and
// again. A token's bytes are as hostile as a peer's: sizes are bounded before anything is
// allocated.
#pragma once

#include <p11-kit/pkcs11.h>

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace zorvanelink::components::cert {

class Pkcs11Module {
  public:
    // Loads and initialises the module: an absolute path, or, when empty, all that p11-kit is
    // configured for on this system. Null, with a log line, when that fails.
    static std::shared_ptr<Pkcs11Module const> Load(std::string const& path);
    ~Pkcs11Module();
    Pkcs11Module(Pkcs11Module const&) = delete;
    Pkcs11Module& operator=(Pkcs11Module const&) = delete;

    CK_FUNCTION_LIST const* operator->() const { return functions_; }
    // Those that hold a token which has been set up.
    std::vector<std::pair<CK_SLOT_ID, CK_TOKEN_INFO>> Tokens() const;

  private:
    Pkcs11Module(CK_FUNCTION_LIST const* functions, bool ours)
        : functions_(functions), ours_(ours) {}

    CK_FUNCTION_LIST const* const functions_;
    bool const ours_;  // to finalise: nobody else in the process had initialised it
};

// A read-only session with a token; closed, and by that logged out, with the object.
class Pkcs11Session {
  public:
    static std::unique_ptr<Pkcs11Session> Open(std::shared_ptr<Pkcs11Module const> module,
                                               CK_SLOT_ID slot);
    ~Pkcs11Session();
    Pkcs11Session(Pkcs11Session const&) = delete;
    Pkcs11Session& operator=(Pkcs11Session const&) = delete;

    bool Alive() const;
    bool LoggedIn() const;
    // `pin` null: the token asks for it by itself.
    CK_RV Login(CK_USER_TYPE user, std::string const* pin) const;

    std::vector<CK_OBJECT_HANDLE> Find(std::vector<CK_ATTRIBUTE> wanted) const;
    // None when the object has not got it, or too much of it.
    std::optional<std::string> Attribute(CK_OBJECT_HANDLE object, CK_ATTRIBUTE_TYPE type) const;
    CK_RV BeginSign(CK_OBJECT_HANDLE key, CK_MECHANISM_TYPE type) const;
    CK_RV Sign(std::string const& data, std::string& signature) const;

  private:
    Pkcs11Session(std::shared_ptr<Pkcs11Module const> module, CK_SESSION_HANDLE handle)
        : module_(std::move(module)), handle_(handle) {}
    CK_SESSION_INFO info() const;

    std::shared_ptr<Pkcs11Module const> const module_;
    CK_SESSION_HANDLE const handle_;
};

// A search's condition on a number, such as the class of an object.
inline CK_ATTRIBUTE NumberIs(CK_ATTRIBUTE_TYPE type, CK_ULONG& number) {
    return {type, &number, sizeof number};
}
inline CK_ATTRIBUTE BytesAre(CK_ATTRIBUTE_TYPE type, std::string& bytes) {
    return {type, bytes.data(), bytes.size()};
}

}  // namespace zorvanelink::components::cert
