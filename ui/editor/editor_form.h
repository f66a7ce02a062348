// The connection editor's widgets and where they stand; no behaviour. GUI thread.
#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QVBoxLayout>

namespace zorvanelink::ui {

// Owned by the dialog's body, as its children. From the top: the tabs, the fields, which scroll
// where a screen is too low for them, and the buttons.
struct EditorForm {
    explicit EditorForm(QWidget* body);

    // The credential section goes between the connection's fields and the advanced section.
    void InsertCredentials(QWidget* section);
    void SetTabOrder(QList<QWidget*> const& credentials) const;
    // Which way the arrow of the advanced section points.
    void SetArrow(bool open) const;
    // What the whole takes without scrolling, in pixels.
    int Height() const;

    QWidget* tabs;
    QPushButton* pushButton_tls;
    QPushButton* pushButton_gmssl;

    QScrollArea* scroll;
    QLineEdit* profile_name_;
    QLineEdit* server_;
    QLineEdit* port_;
    QCheckBox* checkbox_keep_auth_type_;
    QPushButton* btn_icon_advanced_config_;

    QWidget* advanced;
    QCheckBox* verfy_server_cert_checkbox_;
    QCheckBox* optimal_channel_checkbox_;
    QComboBox* comboBox_spa_mode_;
    QLabel* spaPortLabel;
    QLineEdit* lineEdit_spa_port_;
    QComboBox* comboBox_comm_optim_mode;
    QCheckBox* gateway_detect_checkbox_;
    QLabel* gatewayLabel;
    QComboBox* perfer_gateway_combobox_;

    QWidget* foot;
    QPushButton* cannel_connect_button_;
    QPushButton* add_connect_button_;

  private:
    QPushButton* addTab(char const* name, QString const& text);
    void buildTabs(QWidget* body);
    void buildFields(QWidget* body);
    void buildAdvanced(QWidget* content);
    void buildFoot(QWidget* body);
    QLabel* addRow(QWidget* field, char const* name, QString const& text);

    QVBoxLayout* column_ = nullptr;  // of the fields
    QGridLayout* rows_ = nullptr;    // of the advanced section
};

}  // namespace zorvanelink::ui
