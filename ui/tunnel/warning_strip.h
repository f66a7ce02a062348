// A strip that says what is wrong with a connection that is up.
#pragma once

#include <QFrame>
#include <QLabel>

namespace zorvanelink::ui {

class WarningStrip : public QFrame {
    Q_OBJECT

  public:
    explicit WarningStrip(QWidget* parent = nullptr);

    void SetText(QString const& text);  // empty hides the strip
    QString Text() const;

  private:
    QLabel* text_;
};

}  // namespace zorvanelink::ui
