// A PKCS#11 module between a test and SoftHSM, which counts no tries and is never unplugged.
#pragma once

struct TokenControls {
    int tries = 3;  // wrong PINs that are still taken
    int logins = 0;
    int sessions = 0;  // open
    bool gone = false;
    bool refusesRaw = false;
    bool asksEachTime = false;  // for the PIN, before each signature
};

// In the module, to be looked up there.
inline constexpr char kTokenControls[] = "zvl_token_controls";
