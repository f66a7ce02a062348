// What the user may switch on and off; applied and saved together by OK. GUI thread.
#pragma once

#include <QCheckBox>
#include <vector>

#include "ui/config/config.h"
#include "ui/widgets/prompts.h"
#include "ui/widgets/zvl_dialog.h"

namespace zorvanelink::ui {

class SettingsDialog : public ZVLDialog {
    Q_OBJECT

  public:
    SettingsDialog(Config& config, Prompts& prompts, QWidget* parent = nullptr);

    // Stays open, with a box, when the entry for the start with the session cannot be written.
    void accept() override;

  private:
    void addSwitches(QVBoxLayout* column);
    QWidget* buildCertificates();
    bool applyAutostart();

    struct Switch {
        QCheckBox* box;
        bool Config::*member;
    };

    Config& config_;
    Prompts& prompts_;
    std::vector<Switch> switches_;
};

}  // namespace zorvanelink::ui
