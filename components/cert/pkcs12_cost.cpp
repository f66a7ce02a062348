#include "components/cert/pkcs12_cost.h"

#include <openssl/asn1t.h>
#include <openssl/x509.h>

#include <cstdint>
#include <initializer_list>
#include <memory>

#include "components/cert/freeing.h"
#include "components/cert/pkcs12.h"

namespace zorvanelink::components::utils {
namespace {

// -1 for a number that no container may demand.
long countOf(ASN1_INTEGER const* number) {
    std::int64_t count = 0;
    bool const read = ASN1_INTEGER_get_int64(&count, number) == 1;
    return read && count >= 0 && count <= kMaxPkcs12Iterations ? static_cast<long>(count) : -1;
}

long product(std::initializer_list<ASN1_INTEGER const*> numbers) {
    long result = 1;
    for (ASN1_INTEGER const* number : numbers) {
        long const count = countOf(number);
        if (count < 0 || result > kMaxPkcs12Iterations) {
            return -1;
        }
        result *= count;
    }
    return result;
}

// Iterations that a PBE algorithm asks for; 0 when it names none.
long iterationsOf(X509_ALGOR const* algorithm) {
    ASN1_OBJECT const* object = nullptr;
    int type = 0;
    void const* parameter = nullptr;
    X509_ALGOR_get0(&object, &type, &parameter, algorithm);
    if (type != V_ASN1_SEQUENCE) {
        return 0;
    }
    auto const* const sequence = static_cast<ASN1_STRING const*>(parameter);
    auto const unpack = [sequence](ASN1_ITEM const* item) {
        return ASN1_item_unpack(sequence, item);
    };
    switch (OBJ_obj2nid(object)) {
        case NID_pbes2: {
            std::unique_ptr<PBE2PARAM, Freeing<&PBE2PARAM_free>> const pbe2(
                static_cast<PBE2PARAM*>(unpack(ASN1_ITEM_rptr(PBE2PARAM))));
            return pbe2 ? iterationsOf(pbe2->keyfunc) : 0;
        }
        case NID_id_pbkdf2: {
            std::unique_ptr<PBKDF2PARAM, Freeing<&PBKDF2PARAM_free>> const pbkdf2(
                static_cast<PBKDF2PARAM*>(unpack(ASN1_ITEM_rptr(PBKDF2PARAM))));
            return pbkdf2 ? countOf(pbkdf2->iter) : 0;
        }
        case NID_id_scrypt: {
            std::unique_ptr<SCRYPT_PARAMS, Freeing<&SCRYPT_PARAMS_free>> const scrypt(
                static_cast<SCRYPT_PARAMS*>(unpack(ASN1_ITEM_rptr(SCRYPT_PARAMS))));
            return scrypt ? product({scrypt->costParameter, scrypt->blockSize,
                                     scrypt->parallelizationParameter})
                          : 0;
        }
        default: {
            std::unique_ptr<PBEPARAM, Freeing<&PBEPARAM_free>> const pbe(
                static_cast<PBEPARAM*>(unpack(ASN1_ITEM_rptr(PBEPARAM))));
            return pbe ? countOf(pbe->iter) : 0;
        }
    }
}

// Adds up what a container would cost, before anything in it is opened.
class CostCheck {
  public:
    bool TooCostly(PKCS12 const* pkcs12, std::string const& pin) {
        ASN1_INTEGER const* count = nullptr;
        PKCS12_get0_mac(nullptr, nullptr, nullptr, &count, pkcs12);
        // Absent: one.
        add(count != nullptr ? countOf(count) : 1);
        SafesPtr const safes(PKCS12_unpack_authsafes(pkcs12));
        for (int i = 0; safes && !too_costly_ && i < sk_PKCS7_num(safes.get()); ++i) {
            addSafe(sk_PKCS7_value(safes.get(), i), pin);
        }
        return too_costly_;
    }

  private:
    static void freeSafes(STACK_OF(PKCS7) * safes) { sk_PKCS7_pop_free(safes, PKCS7_free); }
    static void freeBags(STACK_OF(PKCS12_SAFEBAG) * bags) {
        sk_PKCS12_SAFEBAG_pop_free(bags, PKCS12_SAFEBAG_free);
    }
    using SafesPtr = std::unique_ptr<STACK_OF(PKCS7), Freeing<&freeSafes>>;
    using BagsPtr = std::unique_ptr<STACK_OF(PKCS12_SAFEBAG), Freeing<&freeBags>>;
    static constexpr int kMaxNesting = 8;

    void add(long iterations) {
        sum_ += iterations;
        too_costly_ = too_costly_ || iterations < 0 || iterations > kMaxPkcs12Iterations ||
                      sum_ > 4 * kMaxPkcs12Iterations;
    }
    void addSafe(PKCS7* safe, std::string const& pin) {
        if (PKCS7_type_is_data(safe)) {
            addBags(BagsPtr(PKCS12_unpack_p7data(safe)).get(), 0);
        } else if (PKCS7_type_is_encrypted(safe) && safe->d.encrypted != nullptr) {
            add(iterationsOf(safe->d.encrypted->enc_data->algorithm));
            if (!too_costly_) {  // what is inside can demand more
                BagsPtr bags(
                    PKCS12_unpack_p7encdata(safe, pin.data(), static_cast<int>(pin.size())));
                if (!bags && pin.empty()) {  // the other form of no password
                    bags.reset(PKCS12_unpack_p7encdata(safe, nullptr, 0));
                }
                addBags(bags.get(), 0);
            }
        }
    }
    void addBags(STACK_OF(PKCS12_SAFEBAG) const* bags, int nesting) {
        for (int i = 0; bags != nullptr && !too_costly_ && i < sk_PKCS12_SAFEBAG_num(bags); ++i) {
            PKCS12_SAFEBAG const* const bag = sk_PKCS12_SAFEBAG_value(bags, i);
            int const kind = PKCS12_SAFEBAG_get_nid(bag);
            if (kind == NID_pkcs8ShroudedKeyBag) {
                X509_ALGOR const* algorithm = nullptr;
                X509_SIG_get0(PKCS12_SAFEBAG_get0_pkcs8(bag), &algorithm, nullptr);
                add(iterationsOf(algorithm));
            } else if (kind == NID_safeContentsBag) {
                too_costly_ = too_costly_ || nesting >= kMaxNesting;
                addBags(PKCS12_SAFEBAG_get0_safes(bag), nesting + 1);
            }
        }
    }

    long sum_ = 0;
    bool too_costly_ = false;
};

}  // namespace

bool Pkcs12TooCostly(PKCS12 const* pkcs12, std::string const& pin) {
    return CostCheck().TooCostly(pkcs12, pin);
}

}  // namespace zorvanelink::components::utils
