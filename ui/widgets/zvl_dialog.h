// The frame of every dialog: frameless, own title bar, modal, dimmed while something stands in
// front of it. GUI thread.
#pragma once

#include <QDialog>
#include <QVBoxLayout>

#include "ui/widgets/dim_cover.h"
#include "ui/widgets/title_bar.h"

namespace zorvanelink::ui {

class Prompts;

// Fill Body(); setWindowTitle sets the title bar. Escape and the close button reject. Opens centred
// on its parent's window. Carries the stylesheet "dialog".
class ZVLDialog : public QDialog {
    Q_OBJECT

  public:
    // `prompts` is for those that call ShowCriticalBox.
    explicit ZVLDialog(QWidget* parent = nullptr, Prompts* prompts = nullptr);

    // The area below the title bar, without a layout of its own and without margins.
    QWidget* Body() const { return body_; }

    void ToBack();
    void ToFront();
    // A critical box over `parent`.
    int ShowCriticalBox(QWidget* parent, QString const& title, QString const& text,
                        QString const& button);

    void setVisible(bool visible) override;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

    QVBoxLayout* FrameLayout() const { return frame_; }
    QFrame* Panel() const { return panel_; }
    // Sizes the dialog and puts it over its owner. Called once before it is first shown, with all
    // styles in force.
    virtual void Place();
    bool Placed() const { return placed_; }

  private:
    Prompts* prompts_;
    QVBoxLayout* frame_;
    QFrame* panel_;
    TitleBar* titleBar_;
    QWidget* body_;
    DimCover* cover_ = nullptr;
    bool placed_ = false;
};

}  // namespace zorvanelink::ui
