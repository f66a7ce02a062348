// Addresses of the tunnel: one row a value, rows without a value left out.
#pragma once

#include <QFrame>
#include <QLabel>
#include <QPushButton>
#include <QString>
#include <QVBoxLayout>
#include <QWidget>
#include <vector>

namespace zorvanelink::ui {

struct InterfaceRow {
    QString label;  // with its colon, as the catalogue has it
    QString value;
};
using InterfaceRows = std::vector<InterfaceRow>;

class InterfaceView : public QWidget {
    Q_OBJECT

  public:
    explicit InterfaceView(QWidget* parent = nullptr);

    void Set(InterfaceRows const& rows);
    void Clear();

  private:
    void addRow(InterfaceRow const& row, bool first, bool last);
    QPushButton* copyButton(QWidget* parent);

    QVBoxLayout* column_;
    QFrame* panel_ = nullptr;
    QLabel* note_;  // that there is none
    InterfaceRows shown_;
};

}  // namespace zorvanelink::ui
