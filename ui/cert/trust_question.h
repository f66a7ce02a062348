// Asks whether certificates are to be trusted, with all that tells a true one from a false one.
// GUI thread.
#pragma once

#include "ui/cert/trusted_certs.h"
#include "ui/widgets/zvl_dialog.h"

namespace zorvanelink::ui {

// exec() answers QDialog::Accepted only when Yes was pressed; Enter takes No.
class TrustQuestion : public ZVLDialog {
    Q_OBJECT

  public:
    TrustQuestion(std::vector<TrustedCerts::Held> const& certs, QWidget* parent);

  private:
    QWidget* buildCert(TrustedCerts::Held const& held);
};

}  // namespace zorvanelink::ui
