// The title bar of the main window and of dialogs: 44 pixels, drags its window.
#pragma once

#include <QFrame>
#include <QLabel>
#include <QToolButton>

#include "ui/widgets/elided_label.h"
#include "ui/widgets/window_mover.h"

namespace zorvanelink::ui {

class TitleBar : public QFrame {
    Q_OBJECT

  public:
    enum class Kind { kWindow, kDialog };
    static constexpr int kHeight = 44;  // pixels, as the stylesheets have it

    // kWindow: icon, title, more, minimise and close. kDialog: title and close.
    explicit TitleBar(Kind kind, QWidget* parent = nullptr);

    void SetTitle(QString const& title);
    QString Title() const;
    // A second line below the title; to be set before the bar is first shown.
    void SetSubtitle(QString const& text);

    // The window's buttons, named btn_main_more_, btn_main_min_ and btn_main_close_; a dialog has
    // only the last, named btn_close_.
    QToolButton* MoreButton() const { return more_; }
    QToolButton* MinButton() const { return min_; }
    QToolButton* CloseButton() const { return close_; }

  Q_SIGNALS:
    // A double click on the bar of a window.
    void MaximiseWanted();

  protected:
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

  private:
    QToolButton* addButton(char const* name, QString const& icon, QString const& accessibleName);

    QLabel* title_ = nullptr;
    ElidedLabel* subtitle_ = nullptr;
    QToolButton* more_ = nullptr;
    QToolButton* min_ = nullptr;
    QToolButton* close_ = nullptr;
    Kind const kind_;
    WindowMover mover_;
};

}  // namespace zorvanelink::ui
