#include "components/cert/pkcs11_module.h"

#include <dlfcn.h>

#include <array>
#include <filesystem>

#include "components/cert/sign_job.h"
#include "components/logger/logger.h"

namespace zorvanelink::components::cert {
namespace {

using logger::Log;

constexpr char kAllOfP11Kit[] = "p11-kit-proxy.so";
constexpr CK_ULONG kMaxSlots = 256;
constexpr CK_ULONG kMaxObjects = 1024;
constexpr CK_ULONG kMaxAttribute = CK_ULONG{64} * 1024;  // bytes

CK_FUNCTION_LIST const* functionsOf(std::string const& path) {
    // Not unloaded again: few modules stand that.
    void* const library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    auto const get = reinterpret_cast<CK_C_GetFunctionList>(
        library != nullptr ? dlsym(library, "C_GetFunctionList") : nullptr);
    CK_FUNCTION_LIST* functions = nullptr;
    if (get == nullptr || get(&functions) != CKR_OK) {
        char const* const reason = dlerror();
        Log().warning("No PKCS#11 module [{}]: {}", path,
                      reason != nullptr ? reason : "no functions");
        return nullptr;
    }
    return functions;
}

}  // namespace

std::shared_ptr<Pkcs11Module const> Pkcs11Module::Load(std::string const& path) {
    if (!path.empty() && !std::filesystem::path(path).is_absolute()) {
        Log().warning("The PKCS#11 module [{}] is no absolute path", path);
        return nullptr;
    }
    CK_FUNCTION_LIST const* const functions = functionsOf(path.empty() ? kAllOfP11Kit : path);
    if (functions == nullptr) {
        return nullptr;
    }
    CK_C_INITIALIZE_ARGS args{};
    args.flags = CKF_OS_LOCKING_OK;
    CK_RV const result = functions->C_Initialize(&args);
    if (result != CKR_OK && result != CKR_CRYPTOKI_ALREADY_INITIALIZED) {
        Log().warning("The PKCS#11 module [{}] does not start: {:#x}", path, result);
        return nullptr;
    }
    return std::shared_ptr<Pkcs11Module const>(new Pkcs11Module(functions, result == CKR_OK));
}

Pkcs11Module::~Pkcs11Module() {
    if (ours_) {
        functions_->C_Finalize(nullptr);
    }
}

std::vector<std::pair<CK_SLOT_ID, CK_TOKEN_INFO>> Pkcs11Module::Tokens() const {
    CK_ULONG count = 0;
    functions_->C_GetSlotList(CK_TRUE, nullptr, &count);
    std::vector<CK_SLOT_ID> slots(std::min(count, kMaxSlots));
    count = slots.size();
    if (functions_->C_GetSlotList(CK_TRUE, slots.data(), &count) != CKR_OK) {
        return {};
    }
    slots.resize(std::min<CK_ULONG>(count, slots.size()));
    std::vector<std::pair<CK_SLOT_ID, CK_TOKEN_INFO>> tokens;
    for (CK_SLOT_ID const slot : slots) {
        CK_TOKEN_INFO info{};
        if (functions_->C_GetTokenInfo(slot, &info) == CKR_OK &&
            (info.flags & CKF_TOKEN_INITIALIZED) != 0) {
            tokens.emplace_back(slot, info);
        }
    }
    return tokens;
}

std::unique_ptr<Pkcs11Session> Pkcs11Session::Open(std::shared_ptr<Pkcs11Module const> module,
                                                   CK_SLOT_ID slot) {
    CK_SESSION_HANDLE handle = 0;
    CK_RV const result =
        (*module)->C_OpenSession(slot, CKF_SERIAL_SESSION, nullptr, nullptr, &handle);
    if (result != CKR_OK) {
        Log().warning("No session with a token: {:#x}", result);
        return nullptr;
    }
    return std::unique_ptr<Pkcs11Session>(new Pkcs11Session(std::move(module), handle));
}

Pkcs11Session::~Pkcs11Session() {
    (*module_)->C_CloseSession(handle_);
}

CK_SESSION_INFO Pkcs11Session::info() const {
    CK_SESSION_INFO info{};
    info.state = CK_UNAVAILABLE_INFORMATION;
    (*module_)->C_GetSessionInfo(handle_, &info);
    return info;
}

bool Pkcs11Session::Alive() const {
    return info().state != CK_UNAVAILABLE_INFORMATION;
}

bool Pkcs11Session::LoggedIn() const {
    return info().state == CKS_RO_USER_FUNCTIONS;
}

CK_RV Pkcs11Session::Login(CK_USER_TYPE user, std::string const* pin) const {
    // The standard's types know no const.
    auto* const bytes =
        pin != nullptr ? reinterpret_cast<CK_UTF8CHAR*>(const_cast<char*>(pin->data())) : nullptr;
    return (*module_)->C_Login(handle_, user, bytes, pin != nullptr ? pin->size() : 0);
}

std::vector<CK_OBJECT_HANDLE> Pkcs11Session::Find(std::vector<CK_ATTRIBUTE> wanted) const {
    if ((*module_)->C_FindObjectsInit(handle_, wanted.data(), wanted.size()) != CKR_OK) {
        return {};
    }
    std::vector<CK_OBJECT_HANDLE> found(kMaxObjects);
    CK_ULONG count = 0;
    bool const good =
        (*module_)->C_FindObjects(handle_, found.data(), found.size(), &count) == CKR_OK;
    (*module_)->C_FindObjectsFinal(handle_);
    found.resize(good ? std::min(count, kMaxObjects) : 0);
    return found;
}

std::optional<std::string> Pkcs11Session::Attribute(CK_OBJECT_HANDLE object,
                                                    CK_ATTRIBUTE_TYPE type) const {
    CK_ATTRIBUTE attribute{type, nullptr, 0};
    if ((*module_)->C_GetAttributeValue(handle_, object, &attribute, 1) != CKR_OK ||
        attribute.ulValueLen > kMaxAttribute) {
        return std::nullopt;
    }
    std::string value(attribute.ulValueLen, '\0');
    attribute.pValue = value.data();
    if ((*module_)->C_GetAttributeValue(handle_, object, &attribute, 1) != CKR_OK ||
        attribute.ulValueLen > value.size()) {
        return std::nullopt;
    }
    value.resize(attribute.ulValueLen);
    return value;
}

CK_RV Pkcs11Session::BeginSign(CK_OBJECT_HANDLE key, CK_MECHANISM_TYPE type) const {
    CK_MECHANISM mechanism{type, nullptr, 0};
    return (*module_)->C_SignInit(handle_, &mechanism, key);
}

CK_RV Pkcs11Session::Sign(std::string const& data, std::string& signature) const {
    signature.assign(kMaxSignBytes, '\0');
    CK_ULONG size = signature.size();
    CK_RV const result =
        (*module_)->C_Sign(handle_, reinterpret_cast<CK_BYTE*>(const_cast<char*>(data.data())),
                           data.size(), reinterpret_cast<CK_BYTE*>(signature.data()), &size);
    signature.resize(result == CKR_OK && size <= signature.size() ? size : 0);
    return result;
}

}  // namespace zorvanelink::components::cert
