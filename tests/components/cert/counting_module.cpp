#include "tests/components/cert/counting_module.h"

#include <dlfcn.h>
#include <p11-kit/pkcs11.h>

extern "C" TokenControls zvl_token_controls;
TokenControls zvl_token_controls;

namespace {

CK_FUNCTION_LIST* g_below = nullptr;
TokenControls& g_token = zvl_token_controls;

CK_RV getTokenInfo(CK_SLOT_ID slot, CK_TOKEN_INFO* info) {
    CK_RV const result = g_below->C_GetTokenInfo(slot, info);
    info->flags |= g_token.tries < 3 ? CKF_USER_PIN_COUNT_LOW : 0;
    info->flags |= g_token.tries == 1 ? CKF_USER_PIN_FINAL_TRY : 0;
    info->flags |= g_token.tries == 0 ? CKF_USER_PIN_LOCKED : 0;
    return g_token.gone ? CKR_TOKEN_NOT_PRESENT : result;
}

CK_RV login(CK_SESSION_HANDLE session, CK_USER_TYPE user, unsigned char* pin, CK_ULONG length) {
    ++g_token.logins;
    if (g_token.tries == 0) {
        return CKR_PIN_LOCKED;
    }
    if (user == CKU_CONTEXT_SPECIFIC) {
        return g_token.asksEachTime && length > 0 ? CKR_OK : CKR_OPERATION_NOT_INITIALIZED;
    }
    CK_RV const result = g_below->C_Login(session, user, pin, length);
    g_token.tries -= result == CKR_PIN_INCORRECT ? 1 : 0;
    return result;
}

CK_RV getAttributes(CK_SESSION_HANDLE session, CK_OBJECT_HANDLE object, CK_ATTRIBUTE* attributes,
                    CK_ULONG count) {
    CK_RV const result = g_below->C_GetAttributeValue(session, object, attributes, count);
    if (attributes[0].type == CKA_ALWAYS_AUTHENTICATE && attributes[0].pValue != nullptr) {
        *static_cast<CK_BBOOL*>(attributes[0].pValue) = g_token.asksEachTime ? CK_TRUE : CK_FALSE;
    }
    return result;
}

CK_RV openSession(CK_SLOT_ID slot, CK_FLAGS flags, void* application, CK_NOTIFY notify,
                  CK_SESSION_HANDLE* session) {
    CK_RV const result = g_below->C_OpenSession(slot, flags, application, notify, session);
    g_token.sessions += result == CKR_OK ? 1 : 0;
    return result;
}

CK_RV closeSession(CK_SESSION_HANDLE session) {
    CK_RV const result = g_below->C_CloseSession(session);
    g_token.sessions -= result == CKR_OK ? 1 : 0;
    return result;
}

CK_RV signInit(CK_SESSION_HANDLE session, CK_MECHANISM* mechanism, CK_OBJECT_HANDLE key) {
    return g_token.refusesRaw && mechanism->mechanism == CKM_RSA_X_509
               ? CKR_MECHANISM_INVALID
               : g_below->C_SignInit(session, mechanism, key);
}

CK_RV sign(CK_SESSION_HANDLE session, unsigned char* data, CK_ULONG length,
           unsigned char* signature, CK_ULONG* signature_length) {
    return g_token.gone ? CKR_DEVICE_REMOVED
                        : g_below->C_Sign(session, data, length, signature, signature_length);
}

}  // namespace

CK_RV C_GetFunctionList(CK_FUNCTION_LIST** list) {
    static CK_FUNCTION_LIST functions;
    auto const get = reinterpret_cast<CK_C_GetFunctionList>(
        dlsym(dlopen(ZVL_SOFTHSM, RTLD_NOW), "C_GetFunctionList"));
    if (get == nullptr || get(&g_below) != CKR_OK) {
        return CKR_GENERAL_ERROR;
    }
    functions = *g_below;
    functions.C_GetTokenInfo = &getTokenInfo;
    functions.C_Login = &login;
    functions.C_GetAttributeValue = &getAttributes;
    functions.C_OpenSession = &openSession;
    functions.C_CloseSession = &closeSession;
    functions.C_SignInit = &signInit;
    functions.C_Sign = &sign;
    *list = &functions;
    return CKR_OK;
}
