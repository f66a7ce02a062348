// A token of SoftHSM in a folder of its own: what a smart card is to its user, without the card.
#pragma once

#include <dlfcn.h>
#include <openssl/core_names.h>
#include <openssl/evp.h>
#include <p11-kit/pkcs11.h>

#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

#include "tools/support/files.h"

namespace zorvanelink::test {

// Sets SOFTHSM2_CONF for this process, makes the token and is done with the module again, so that
// who comes next starts it.
class SoftToken {
  public:
    SoftToken(std::string const& module, std::filesystem::path const& folder, std::string label,
              std::string pin) {
        std::filesystem::create_directories(folder / "tokens");
        setenv("SOFTHSM2_CONF",
               WriteFile(folder / "softhsm2.conf",
                         "directories.tokendir = " + (folder / "tokens").string() + "\n")
                   .c_str(),
               1);
        auto const get = reinterpret_cast<CK_C_GetFunctionList>(
            dlsym(dlopen(module.c_str(), RTLD_NOW), "C_GetFunctionList"));
        must(get(&module_));
        must(module_->C_Initialize(nullptr));
        label.resize(32, ' ');
        must(module_->C_InitToken(anySlot(), bytes(label), 4, bytes(label)));
        must(module_->C_OpenSession(anySlot(), CKF_SERIAL_SESSION | CKF_RW_SESSION, nullptr,
                                    nullptr, &session_));
        must(module_->C_Login(session_, CKU_SO, bytes(label), 4));
        must(module_->C_InitPIN(session_, bytes(pin), pin.size()));
        must(module_->C_Logout(session_));
        must(module_->C_Login(session_, CKU_USER, bytes(pin), pin.size()));
    }
    ~SoftToken() { module_->C_Finalize(nullptr); }
    SoftToken(SoftToken const&) = delete;
    SoftToken& operator=(SoftToken const&) = delete;

    void AddCert(std::string der, std::string id) {
        add(CKO_CERTIFICATE, {number(CKA_CERTIFICATE_TYPE, x509_), text(CKA_ID, id),
                              text(CKA_SUBJECT, id), text(CKA_VALUE, der)});
    }
    // Both halves, the private one hidden until the PIN has been given.
    void AddKey(EVP_PKEY* key, std::string id) {
        std::string parts[8];
        std::vector<CK_ATTRIBUTE> attributes{number(CKA_KEY_TYPE, rsa_), text(CKA_ID, id)};
        for (std::size_t i = 0; i < std::size(parts); ++i) {
            BIGNUM* part = nullptr;
            EVP_PKEY_get_bn_param(key, kParts[i].name, &part);
            parts[i].resize(static_cast<std::size_t>(BN_num_bytes(part)));
            BN_bn2bin(part, bytes(parts[i]));
            BN_clear_free(part);
            attributes.push_back(text(kParts[i].type, parts[i]));
        }
        add(CKO_PUBLIC_KEY, {attributes.begin(), attributes.begin() + 4});
        attributes.push_back({CKA_PRIVATE, &yes_, sizeof yes_});
        attributes.push_back({CKA_SIGN, &yes_, sizeof yes_});
        add(CKO_PRIVATE_KEY, attributes);
    }

  private:
    struct Part {
        CK_ATTRIBUTE_TYPE type;
        char const* name;
    };
    static constexpr Part kParts[]{
        {CKA_MODULUS, OSSL_PKEY_PARAM_RSA_N},
        {CKA_PUBLIC_EXPONENT, OSSL_PKEY_PARAM_RSA_E},
        {CKA_PRIVATE_EXPONENT, OSSL_PKEY_PARAM_RSA_D},
        {CKA_PRIME_1, OSSL_PKEY_PARAM_RSA_FACTOR1},
        {CKA_PRIME_2, OSSL_PKEY_PARAM_RSA_FACTOR2},
        {CKA_EXPONENT_1, OSSL_PKEY_PARAM_RSA_EXPONENT1},
        {CKA_EXPONENT_2, OSSL_PKEY_PARAM_RSA_EXPONENT2},
        {CKA_COEFFICIENT, OSSL_PKEY_PARAM_RSA_COEFFICIENT1},
    };

    static void must(CK_RV result) {
        if (result != CKR_OK) {
            throw std::runtime_error("SoftHSM: " + std::to_string(result));
        }
    }
    static unsigned char* bytes(std::string& text) {
        return reinterpret_cast<unsigned char*>(text.data());
    }
    static CK_ATTRIBUTE text(CK_ATTRIBUTE_TYPE type, std::string& value) {
        return {type, value.data(), value.size()};
    }
    static CK_ATTRIBUTE number(CK_ATTRIBUTE_TYPE type, CK_ULONG& value) {
        return {type, &value, sizeof value};
    }
    CK_SLOT_ID anySlot() {
        CK_SLOT_ID slots[2]{};
        CK_ULONG count = 2;
        must(module_->C_GetSlotList(CK_TRUE, slots, &count));
        return slots[0];
    }
    void add(CK_OBJECT_CLASS kind, std::vector<CK_ATTRIBUTE> attributes) {
        attributes.push_back(number(CKA_CLASS, kind));
        attributes.push_back({CKA_TOKEN, &yes_, sizeof yes_});
        CK_OBJECT_HANDLE object = 0;
        must(module_->C_CreateObject(session_, attributes.data(), attributes.size(), &object));
    }

    CK_FUNCTION_LIST* module_ = nullptr;
    CK_SESSION_HANDLE session_ = 0;
    CK_BBOOL yes_ = CK_TRUE;
    CK_ULONG x509_ = CKC_X_509;
    CK_ULONG rsa_ = CKK_RSA;
};

}  // namespace zorvanelink::test
