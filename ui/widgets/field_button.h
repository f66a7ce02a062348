// A small button inside an edit field, at its right end.
#pragma once

#include <QLineEdit>
#include <QToolButton>

namespace zorvanelink::ui {

// Reached by Tab, unlike the actions that a field draws itself. The field's text keeps clear of it
// while it is shown.
class FieldButton : public QToolButton {
    Q_OBJECT

  public:
    // `icon` is a resource path.
    FieldButton(QLineEdit* field, QString const& icon, QString const& accessibleName);

    void SetImage(QString const& icon);
    void SetName(QString const& accessibleName);
    void SetShown(bool shown);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void place();

    QLineEdit* const field_;
};

}  // namespace zorvanelink::ui
