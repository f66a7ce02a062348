// A profile, a store with one certificate, and the services of the credential dialogs.
#pragma once

#include <QtTest/QTest>

#include "components/utils/sensitive_value.h"
#include "tests/support/qt_helpers.h"
#include "tests/support/scripted_prompts.h"
#include "ui/auth/auth_type_dialog.h"
#include "ui/cert/tls_cert_dialog.h"
#include "ui/text/texts.h"

namespace zorvanelink::ui {

class AuthTest : public testing::Test {
  protected:
    using MsgCode = common::MsgCode;
    using Type = SupportedAuthType;

    AuthTest() {
        profile->name = "Head office";
        profile->userName = "alice";
        profile->fileCert = stored("Alice Chen", true);
    }

    CertInfo stored(char const* name, bool tls) {
        CertInfo cert;
        cert.commonName = cert.fingerprint = name;
        cert.isTls = tls;
        return config.clientCerts[name] = cert;
    }
    AuthConfigBase::Services services() { return {config, prompts, road}; }
    static std::string clear(std::string const& sensitive) {
        return components::utils::DecodeSensitiveValue(sensitive);
    }
    static std::string sensitive(char const* text) {
        return components::utils::EncodeSensitiveValue(text);
    }
    static void type(QLineEdit& field, QString const& text) {
        QApplication::setActiveWindow(field.window());
        field.setFocus();
        for (QChar const letter : text) {
            QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, QString(letter));
            QApplication::sendEvent(&field, &press);
        }
    }

    Config config;
    test::ScriptedPrompts prompts;
    CertListRoad road;
    std::shared_ptr<Profile> profile = std::make_shared<Profile>();
};

}  // namespace zorvanelink::ui
