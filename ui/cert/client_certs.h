// Client certificates as the rest of the program uses them: choosing one, managing the store, and
// the list that the service sends. GUI thread.
#pragma once

#include <QObject>
#include <optional>
#include <string>
#include <vector>

#include "core/clmsg_document.h"
#include "ui/config/config.h"
#include "ui/widgets/prompts.h"

namespace zorvanelink::ui {

// Runs the dialog of imported certificates. False when cancelled; on OK the target is the chosen
// record, or an empty one when none was selected. The target's isTls says what may be imported.
bool SelectClientCert(CertInfo& target, Config& config, Prompts& prompts, QWidget* parent);
void ManageClientCerts(Config& config, Prompts& prompts, QWidget* parent);
// Runs the dialog of the certificates that gateways are trusted by.
void ManageTrustedCerts(Prompts& prompts, QWidget* parent);
bool HasTrustedCerts();

// The road to the certificates that the service lists: whoever owns the link answers
// SendCertRequest, and each list that comes is given out by RecvCertInfo.
class CertListRoad : public QObject {
    Q_OBJECT

  public:
    using QObject::QObject;

  Q_SIGNALS:
    void SendCertRequest(bool gm);
    void RecvCertInfo(std::vector<zorvanelink::CertInfo> const& list);
};

// Runs the choice among the kinds of TLS certificate. False when cancelled; on OK the target is
// the chosen record and its certType the kind.
bool SelectTlsCert(CertInfo& target, CertListRoad& road, Config& config, Prompts& prompts,
                   QWidget* parent);

// The certificates of a "certRespond" reply, those that cannot be read left out; none, with a line
// in the log, for a reply that is no such list.
std::optional<std::vector<CertInfo>> ReadCertRespond(core::CLMsgDocument const& message);

}  // namespace zorvanelink::ui
