// The frame of every dialog: frameless, own title bar, modal, dimmed while something stands in
// front of it. GUI thread.
#pragma once

#include <QDialog>
#include <QVBoxLayout>

#include "ui/widgets/dim_cover.h"
#include "ui/widgets/form_scroll.h"
#include "ui/widgets/title_bar.h"

namespace zorvanelink::ui {

class Prompts;

// Fill Body(), give SetFoot the buttons; setWindowTitle sets the title bar. Escape and the close
// button reject. Opens centred on its parent's window, as high as its contents want, and follows
// them; where the screen is too low the body scrolls and the foot stays. Carries the stylesheet
// "dialog".
class ZVLDialog : public QDialog {
    Q_OBJECT

  public:
    // `prompts` is for those that call ShowCriticalBox.
    explicit ZVLDialog(QWidget* parent = nullptr, Prompts* prompts = nullptr);

    static constexpr int kEdge = 1;  // pixels of the border, as the stylesheet has it

    // The area below the title bar, without a layout of its own and without margins.
    QWidget* Body() const { return body_; }
    // A second line of the title: whom or what the dialog is about.
    void SetSubtitle(QString const& text) { titleBar_->SetSubtitle(text); }
    // What stays in sight above and below the body. The foot's layout gets the dialog's margins.
    void SetHead(QWidget* head);
    void SetFoot(QWidget* foot);
    // Scrolls the body so that this one of its widgets can be seen.
    void Reveal(QWidget* widget) { scroll_->ensureWidgetVisible(widget); }

    void ToBack();
    void ToFront();
    // A critical box over `parent`.
    int ShowCriticalBox(QWidget* parent, QString const& title, QString const& text,
                        QString const& button);

    // Like deleteLater, but for the boxes over the dialog, which are closed: they stand on the
    // stack of who shows them, and the dialog goes when that has unwound.
    void DeleteBehindBoxes();

    void setVisible(bool visible) override;

  protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;
    // Page keys that nothing in the dialog wants move what does not fit.
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

    QVBoxLayout* FrameLayout() const { return frame_; }
    QFrame* Panel() const { return panel_; }
    // Sizes the dialog and puts it over its owner. Called once before it is first shown, with all
    // styles in force.
    virtual void Place();
    // Takes the height that the contents want, between the two below. The width stays once placed.
    virtual void Fit();
    virtual int MinHeight() const { return 0; }
    virtual int MaxHeight() const;
    // The owner's window if it is in sight.
    QWidget const* VisibleOwner() const;

  private:
    void giveShadow();
    void moveOntoScreen();

    Prompts* prompts_;
    QVBoxLayout* frame_;
    QFrame* panel_;
    TitleBar* titleBar_;
    QWidget* body_;
    FormScroll* scroll_;
    QWidget* head_ = nullptr;
    QWidget* foot_ = nullptr;
    DimCover* cover_ = nullptr;
    bool placed_ = false;
};

}  // namespace zorvanelink::ui
