// The certificates that the service trusts gateways by: one file each in a folder of the client,
// which is the only store. The service reads it on its own whenever it connects. GUI thread.
#pragma once

#include <QString>
#include <vector>

#include "components/cert/server_cert.h"

namespace zorvanelink::ui {

class TrustedCerts {
  public:
    static constexpr std::size_t kMaxCertNum = 16;

    struct Held {
        QString path;
        components::utils::ServerCert cert;
    };

    // Files of the folder, whatever they are called and whatever is in them.
    static std::size_t Count();
    // Those that can be read, by file name.
    static std::vector<Held> List();

    static components::utils::ServerCertResult ReadCertFile(QString const& path, Held& held);

    // Puts the certificate, and nothing else of its file, into the folder, under its own name with
    // as many "_" behind it as it takes to be a new one. False, with nothing in the folder, when
    // that fails.
    static bool Store(Held const& held);
    // False when it stands there still.
    static bool Remove(components::utils::ServerCert const& cert);
};

}  // namespace zorvanelink::ui
