#define OPENSSL_SUPPRESS_DEPRECATED  // methods of keys have no successor that calls back
#include <openssl/ec.h>
#include <openssl/engine.h>
#include <openssl/err.h>
#include <openssl/evp.h>

#include <algorithm>
#include <array>

#include "components/cert/cert_interface.h"
#include "components/cert/key_hooks.h"
#include "components/logger/logger.h"

namespace zorvanelink::components::cert {
namespace {

using logger::Log;

using EcKeyPtr = std::unique_ptr<EC_KEY, utils::Freeing<&EC_KEY_free>>;

constexpr int kUnknownControl = -2;

int curveOf(EVP_PKEY_CTX* context) {
    EC_KEY const* const ec = EVP_PKEY_get0_EC_KEY(EVP_PKEY_CTX_get0_pkey(context));
    return ec != nullptr ? EC_GROUP_get_curve_name(EC_KEY_get0_group(ec)) : NID_undef;
}

// The size has been asked for and found to fit before this is called.
int sign(EVP_PKEY_CTX* context, unsigned char* signature, std::size_t* signature_length,
         unsigned char const* data, std::size_t length) {
    ECCReqArgs const args{
        curveOf(context), {reinterpret_cast<char const*>(data), length}, static_cast<int>(length)};
    ECCRepData const reply = CertInterface::Instance().ECC_meth_sign(args);
    if (reply.dataLen <= 0 || reply.data.size() != static_cast<std::size_t>(reply.dataLen) ||
        reply.data.size() > *signature_length) {
        Log().error("Failed to ecc sign, the answer is {} with {} bytes", reply.ret,
                    reply.data.size());
        ERR_raise_data(ERR_LIB_EC, ERR_R_OPERATION_FAIL, "ecc sign: nothing was done");
        return -1;
    }
    std::copy(reply.data.begin(), reply.data.end(), signature);
    *signature_length = reply.data.size();
    return 1;
}

int acceptDigest(EVP_PKEY_CTX* /*context*/, int type, int /*number*/, void* /*value*/) {
    return type == EVP_PKEY_CTRL_MD || type == EVP_PKEY_CTRL_DIGESTINIT ? 1 : kUnknownControl;
}

// The library calls it without a look.
int copyNothing(EVP_PKEY_CTX* /*to*/, EVP_PKEY_CTX const* /*from*/) {
    return 1;
}

EVP_PKEY_METHOD* newMethod() {
    EVP_PKEY_METHOD const* const known = EVP_PKEY_meth_find(EVP_PKEY_SM2);
    if (known == nullptr) {
        Log().warning("Faile to get sm2 meth:{}", TakeOpenSslError());
    }
    EVP_PKEY_METHOD* const method = EVP_PKEY_meth_new(EVP_PKEY_SM2, EVP_PKEY_FLAG_AUTOARGLEN);
    if (method == nullptr) {
        Log().error("Faile to crate sm2 pmethkey:{}", TakeOpenSslError());
        return nullptr;
    }
    int (*begin)(EVP_PKEY_CTX*) = nullptr;
    if (known != nullptr) {
        EVP_PKEY_meth_copy(method, known);
        EVP_PKEY_meth_get_sign(known, &begin, nullptr);
    } else {
        EVP_PKEY_meth_set_ctrl(method, &acceptDigest, nullptr);
        EVP_PKEY_meth_set_copy(method, &copyNothing);
    }
    EVP_PKEY_meth_set_sign(method, begin, &sign);
    return method;
}

int methodOf(ENGINE* /*engine*/, EVP_PKEY_METHOD** method, int const** types, int type) {
    static EVP_PKEY_METHOD* const hooked = newMethod();
    static constexpr std::array kTypes{EVP_PKEY_SM2, EVP_PKEY_EC};
    if (method == nullptr) {
        *types = kTypes.data();
        return static_cast<int>(kTypes.size());
    }
    *method = std::ranges::count(kTypes, type) > 0 ? hooked : nullptr;
    return *method != nullptr ? 1 : 0;
}

ENGINE* newEngine() {
    ENGINE* const engine = ENGINE_new();
    ENGINE_set_id(engine, "zvl_sm2");
    ENGINE_set_name(engine, "Signatures by another key holder");
    ENGINE_set_pkey_meths(engine, &methodOf);
    return engine;
}

// The library's own way to such an object knows no SM2 key of a certificate.
EcKeyPtr publicKeyOf(EVP_PKEY* key) {
    std::array<char, 64> curve{};
    unsigned char* point = nullptr;
    if (key == nullptr || EVP_PKEY_get_group_name(key, curve.data(), curve.size(), nullptr) != 1) {
        return nullptr;
    }
    std::size_t const size = EVP_PKEY_get1_encoded_public_key(key, &point);
    EcKeyPtr ec(EC_KEY_new_by_curve_name(OBJ_txt2nid(curve.data())));
    if (ec && EC_KEY_oct2key(ec.get(), point, size, nullptr) != 1) {
        ec.reset();
    }
    OPENSSL_free(point);
    return ec;
}

}  // namespace

PkeyPtr HookSm2(EVP_PKEY* key) {
    // A method that is added for the process would also be the one that checks a peer's signature;
    // an engine is one key's.
    static ENGINE* const engine = newEngine();
    EcKeyPtr const ec = publicKeyOf(key);
    PkeyPtr hooked(EVP_PKEY_new());
    if (!ec || !hooked || EVP_PKEY_set1_EC_KEY(hooked.get(), ec.get()) != 1) {
        Log().error("Faile to get ecc evp:{}", TakeOpenSslError());
        return nullptr;
    }
    if (EVP_PKEY_set1_engine(hooked.get(), engine) != 1) {
        Log().error("Faile to set sm2 meth:{}", TakeOpenSslError());
        return nullptr;
    }
    return hooked;
}

}  // namespace zorvanelink::components::cert
