// The status bar: state at the left, count of connections at the right. 32 pixels high.
#pragma once

#include <QFrame>
#include <QLabel>

#include "ui/widgets/spinner.h"

namespace zorvanelink::ui {

class StatusBarWidget : public QFrame {
    Q_OBJECT

  public:
    explicit StatusBarWidget(QWidget* parent = nullptr);

    // `icon` is a resource path such as ":/assets/images/normal.png"; the name of an animation
    // (".gif") stands for the spinner. An empty text clears the place.
    void SetStatus(QString const& text, QString const& icon);
    // What stands before and after a "丨" is shown in two places with a line between, or only what
    // stands after it.
    void SetCountText(QString const& text, bool countAlone = false);

    QString StatusText() const;
    QString StatusIcon() const { return icon_; }
    QString CountText() const { return countText_; }

  private:
    void tellChange();

    QString icon_;
    QString countText_;
    Spinner* spinner_;
    QLabel* image_;
    QLabel* text_;
    QLabel* place_;
    QFrame* divider_;
    QLabel* count_;
};

}  // namespace zorvanelink::ui
