// Renders windows and dialogs in their states to PNG files.
// zvl_gallery FOLDER en|zh SCALE [NAME]
#include <QApplication>
#include <QImage>
#include <QPainter>
#include <QTranslator>
#include <cstdio>
#include <functional>

#include "app/environment/app_ctrl.h"
#include "tools/gallery/auth_states.h"
#include "tools/gallery/cert_states.h"
#include "tools/gallery/editor_states.h"
#include "tools/gallery/sample_window.h"
#include "tools/gallery/shell_states.h"
#include "ui/text/texts.h"
#include "ui/widgets/fonts.h"
#include "ui/widgets/input_dialog.h"
#include "ui/widgets/style.h"
#include "ui/widgets/zvl_message_box.h"

namespace zorvanelink::gallery {
namespace {

using common::MsgCode;
using ui::ConnectStatus;
using ui::GetTrMsg;
using ui::ZVLMessageBox;
using ui::ZVLMsgBoxType;

constexpr int kMargin = 32;  // of backdrop around a window

QString g_folder;
QString g_suffix;

void settle() {
    for (int i = 0; i < 3; ++i) {
        QApplication::sendPostedEvents();
        QApplication::processEvents();
    }
}

void drawShadow(QPainter& painter, QRect const& window) {
    painter.setPen(Qt::NoPen);
    for (int i = 20; i > 0; i -= 2) {
        QColor shade(Qt::black);
        shade.setAlphaF(0.012);
        painter.setBrush(shade);
        painter.drawRoundedRect(window.adjusted(-i, -i + 6, i, i + 6), 8 + i, 8 + i);
    }
}

// The window and what stands in front of it, the last on top, on a backdrop.
void save(QString const& name, QWidget& window, std::vector<QWidget*> const& fronts = {}) {
    settle();
    QRect area = window.geometry();
    for (QWidget* front : fronts) {
        // The offscreen platform's screen is smaller than some windows, so dialogs land askew.
        if (qobject_cast<QDialog*>(front) != nullptr) {
            front->move(window.geometry().center() - front->rect().center());
        }
        area = area.united(front->geometry());
    }
    qreal const ratio = qApp->devicePixelRatio();
    QImage image((area.size() + QSize(2 * kMargin, 2 * kMargin)) * ratio, QImage::Format_RGB32);
    image.setDevicePixelRatio(ratio);
    image.fill(QColor(Qt::lightGray).lighter(108));
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(QPoint(kMargin, kMargin) - area.topLeft());
    std::vector<QWidget*> shown{&window};
    shown.insert(shown.end(), fronts.begin(), fronts.end());
    for (QWidget* widget : shown) {
        drawShadow(painter, widget->geometry());
        widget->render(&painter, widget->pos(), {}, QWidget::DrawChildren);
    }
    painter.end();
    image.save(QStringLiteral("%1/%2%3.png").arg(g_folder, name, g_suffix));
}

void online() {
    SampleWindow sample;
    sample.GoTo(ConnectStatus::Connected, true);
    save(QStringLiteral("window-statistics"), sample.Window());
    sample.Tunnel().ShowTab(ui::TunnelView::kInterface);
    save(QStringLiteral("window-interface"), sample.Window());
    sample.Tunnel().ShowTab(ui::TunnelView::kRoute);
    sample.Tunnel().Routes().onRouteItemClicked(0);
    save(QStringLiteral("window-routes"), sample.Window());
}

void windows() {
    save(QStringLiteral("window-disconnected"), SampleWindow().Window());
    for (auto const& [status, name] : {std::pair(ConnectStatus::Connecting, "window-connecting"),
                                       {ConnectStatus::Reconnecting, "window-reconnecting"}}) {
        SampleWindow sample;
        sample.GoTo(status);
        save(QLatin1String(name), sample.Window());
    }
    online();
    save(QStringLiteral("window-guide"), SampleWindow(SampleWindow::Content::kFirstUse).Window());
    save(QStringLiteral("window-wait"),
         SampleWindow(SampleWindow::Content::kCards, false).Window());
}

void box(QString const& name, ZVLMsgBoxType kind, QString const& title, QString const& text,
         ZVLMessageBox::Buttons const& buttons, int preset = 0) {
    SampleWindow sample;
    ZVLMessageBox shown(&sample.Window(), kind, title, text, buttons);
    shown.SetDefaultButton(preset);
    shown.show();
    save(name, sample.Window(), {&shown});
}

void boxes() {
    QString const ok = GetTrMsg(MsgCode::UI_INFO_OK);
    QString const yes = GetTrMsg(MsgCode::UI_INFO_YES);
    QString const no = GetTrMsg(MsgCode::UI_INFO_NO);
    box(QStringLiteral("box-critical"), ZVLMsgBoxType::kCritical, GetTrMsg(MsgCode::UI_ERROR),
        GetTrMsg(MsgCode::UI_INFO_FAIL_EXPORT_LOG), {ok});
    box(QStringLiteral("box-information"), ZVLMsgBoxType::kInformation, GetTrMsg(MsgCode::UI_INFO),
        GetTrMsg(MsgCode::UI_INFO_FINISH_EXPORT_LOG), {ok});
    box(QStringLiteral("box-delete"), ZVLMsgBoxType::kWarning, GetTrMsg(MsgCode::UI_WARNING),
        GetTrMsg(MsgCode::UI_INFO_SURE_TO_DELETE_CONNECTION), {yes, no}, 1);
    box(QStringLiteral("box-update"), ZVLMsgBoxType::kInformation, GetTrMsg(MsgCode::UI_INFO),
        GetTrMsg(MsgCode::UPDATE_DETECTED),
        {GetTrMsg(MsgCode::UI_TR_UPDATE_NOW), GetTrMsg(MsgCode::UI_TR_UPDATE_NEXT),
         GetTrMsg(MsgCode::UI_TR_UPDATE_NEVER)});
    box(QStringLiteral("box-long"), ZVLMsgBoxType::kWarning, GetTrMsg(MsgCode::UI_WARNING),
        QStringLiteral("https://%1.example.com/").arg(QString(120, QLatin1Char('w'))) +
            QStringLiteral("#@@#") +
            GetTrMsg(MsgCode::UI_TR_VERITY_SERVER_CERTIFICATE_FAILED).repeated(8),
        {ok});
}

void dialogs() {
    SampleWindow sample;
    ui::InputDialog input(&sample.Window());
    input.setWindowTitle(GetTrMsg(MsgCode::UI_INFO_INPUT_PINCODE));
    input.setLabelText(GetTrMsg(MsgCode::UI_TR_PLEASE_INPUT_CERT_PWD));
    input.setLabel2Text(QStringLiteral("alice-chen.p12"));
    input.setPlaceholderText(GetTrMsg(MsgCode::UI_INFO_PLEASE_INPUT_PWD));
    input.setCheckBoxText(GetTrMsg(MsgCode::UI_INFO_REMEMBER_PWD));
    input.setRemember(true);
    input.show();
    save(QStringLiteral("dialog-input"), sample.Window(), {&input});
    ZVLMessageBox over(&input, ZVLMsgBoxType::kCritical, GetTrMsg(MsgCode::UI_ERROR),
                       GetTrMsg(MsgCode::UI_TR_ERR_PWD_LENGTH), {GetTrMsg(MsgCode::UI_INFO_OK)});
    over.show();
    save(QStringLiteral("dialog-input-dimmed"), input, {&over});
}

// States of dialogs, over a window in that state.
template <class States>
void over(SampleWindow& sample, States states) {
    states(
        [&sample](QString const& name, QWidget& dialog) { save(name, sample.Window(), {&dialog}); },
        &sample.Window());
}

void certificates() {
    SampleWindow sample;
    over(sample, CertStates);
}

void logins() {
    SampleWindow sample;
    sample.GoTo(ConnectStatus::Connecting);
    over(sample, AuthStates);
}

void editor() {
    SampleWindow sample;
    over(sample, EditorStates);
}

void installTranslators() {
    ui::InitAssets();
    if (!ui::IsChineseDisplayLangguage()) {
        return;
    }
    for (auto const* name : {":/translations/zh_Hans.qm", ":/translations/qt_zh_CN.qm"}) {
        auto* translator = new QTranslator(qApp);
        if (translator->load(QLatin1String(name))) {
            QCoreApplication::installTranslator(translator);
        }
    }
}

}  // namespace
}  // namespace zorvanelink::gallery

int main(int argc, char** argv) {
    using namespace zorvanelink;
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QApplication const application(argc, argv);
    QStringList const arguments = QApplication::arguments();
    if (arguments.size() < 4) {
        std::fputs("zvl_gallery FOLDER en|zh SCALE\n", stderr);
        return 2;
    }
    gallery::g_folder = arguments[1];
    gallery::g_suffix = QStringLiteral("-%1-%2x").arg(arguments[2], arguments[3]);
    bool const chinese = arguments[2] == QLatin1String("zh");
    ui::AppCtrl::Instance().language =
        chinese ? ui::SysLang::kSimplifiedChinese : ui::SysLang::kEnglish;
    gallery::installTranslators();
    ui::SetApplicationFont();
    ui::SetApplicationStyle();
    gallery::windows();
    gallery::boxes();
    gallery::dialogs();
    gallery::certificates();
    gallery::logins();
    gallery::ShellStates(gallery::save);
    gallery::editor();
    return 0;
}
