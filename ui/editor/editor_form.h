// The connection editor's widgets and where they stand; no behaviour. GUI thread.
#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "ui/widgets/zvl_dialog.h"

namespace zorvanelink::ui {

// Owned by the dialog: the tabs are its head, the fields its body, the buttons its foot.
struct EditorForm {
    explicit EditorForm(ZVLDialog& dialog);

    // The credential section goes between the connection's fields and the advanced section.
    void InsertCredentials(QWidget* section);
    void SetTabOrder(QList<QWidget*> const& credentials) const;
    // Which way the arrow of the advanced section points.
    void SetArrow(bool open) const;

    QWidget* tabs;
    QPushButton* pushButton_tls;
    QPushButton* pushButton_gmssl;

    QLineEdit* profile_name_;
    QLineEdit* server_;
    QLineEdit* port_;
    QCheckBox* checkbox_keep_auth_type_;
    QPushButton* btn_icon_advanced_config_;

    QWidget* advanced;
    QCheckBox* verfy_server_cert_checkbox_;
    QLabel* trustWarning;  // its link is "folder"
    QCheckBox* optimal_channel_checkbox_;
    QComboBox* comboBox_spa_mode_;
    QWidget* spaPortCell;  // the field with its label
    QLineEdit* lineEdit_spa_port_;
    QComboBox* comboBox_comm_optim_mode;
    QCheckBox* gateway_detect_checkbox_;
    QWidget* gatewayCell;
    QComboBox* perfer_gateway_combobox_;

    QWidget* foot;
    QPushButton* cannel_connect_button_;
    QPushButton* add_connect_button_;
    QPushButton* save_button_;

  private:
    QPushButton* addTab(char const* name, QString const& text);
    void buildTabs(QWidget* dialog);
    void buildFields(QWidget* content);
    void buildAdvanced(QWidget* content);
    void buildTrustWarning();
    void buildModes();
    void buildFoot(QWidget* dialog);
    QWidget* cell(QWidget* field, char const* name, QString const& text, char const* hint);
    QCheckBox* addSwitch(char const* name, QString const& text, char const* hint);

    QVBoxLayout* column_ = nullptr;  // of the fields
    QGridLayout* rows_ = nullptr;    // of the advanced section
};

}  // namespace zorvanelink::ui
