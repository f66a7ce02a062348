// Where a window or dialog of the gallery stands, with all that it works on.
#pragma once

#include <memory>
#include <vector>

#include "tools/gallery/sample_window.h"
#include "tools/support/no_prompts.h"
#include "ui/cert/client_certs.h"
#include "ui/config/config.h"
#include "ui/widgets/input_dialog.h"

namespace zorvanelink::gallery {

class Stage {
  public:
    // With `behind` dialogs stand over the main window, otherwise alone.
    explicit Stage(bool behind);
    ~Stage();

    // The main window, made at the first call.
    SampleWindow& Main(SampleWindow::Content content = SampleWindow::Content::kCards,
                       bool linked = true);
    // What dialogs are made for: the main window, or null.
    QWidget* Owner();

    // Makes a dialog of that kind, over the owner, and shows it.
    template <class Dialog, class... Args>
    Dialog& Show(Args&&... args) {
        auto made = std::make_unique<Dialog>(std::forward<Args>(args)..., Owner());
        Dialog& dialog = *made;
        Keep(std::move(made));
        return dialog;
    }
    // The box that was asked for last.
    void ShowBox(ui::BoxRequest const& request);
    // The prompt for a secret that was asked for last.
    ui::InputDialog& ShowSecret(ui::SecretRequest const& request);
    void Keep(std::unique_ptr<QWidget> widget);  // shows it
    void Lean(QWidget& popup);                   // a menu of one of the windows
    void Settle();
    // The pointer is on it, however many others it is on.
    static void Hover(QWidget& widget);

    // What stands, the last one on top.
    std::vector<QWidget*> const& Shown() const { return shown_; }

    ui::Config config;  // of dialogs; the main window has its own
    test::NoPrompts prompts;
    CertInfo target;
    ui::CertListRoad road;

  private:
    bool const behind_;
    std::unique_ptr<SampleWindow> main_;
    std::vector<std::unique_ptr<QWidget>> kept_;
    std::vector<QWidget*> shown_;
};

struct Row {
    char const* name;  // of the picture
    void (*set)(Stage& stage);
};

// Every window and dialog of the program in the states worth looking at: what the gallery renders,
// and what the tests walk that hold for all of them. A new dialog gets a row.
std::vector<Row> AllRows();

std::vector<Row> WindowRows();
std::vector<Row> AuthRows();
std::vector<Row> CertRows();
std::vector<Row> EditorRows();
std::vector<Row> PointerRows();

}  // namespace zorvanelink::gallery
