// Addresses of the tunnel: one row a value, rows without a value hidden.
#pragma once

#include <QFormLayout>
#include <QString>
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
    QWidget* panel_;
    QFormLayout* form_;
};

}  // namespace zorvanelink::ui
