#include "ui/widgets/look.h"

namespace zorvanelink::ui {
namespace {

struct Row {
    Look look;
    char const* name;
    char const* lamp;
    char const* dot;
    char const* tray;
};

constexpr Row kRows[] = {
    {Look::kDisconnected, "disconnected", "lamp_disconnected", ":/assets/images/normal.png",
     ":/assets/images/disconnected.ico"},
    {Look::kConnecting, "connecting", "lamp_connecting", ":/assets/images/loading_small.gif",
     ":/assets/images/connecting.ico"},
    {Look::kReconnecting, "reconnecting", "lamp_reconnecting",
     ":/assets/images/lamp_reconnecting.png", ":/assets/images/reconnecting.ico"},
    {Look::kConnected, "connected", "lamp_connected", ":/assets/images/connectted.png",
     ":/assets/images/connected.ico"},
    {Look::kWarning, "warning", "lamp_warning", ":/assets/images/lamp_warning.png",
     ":/assets/images/warning.ico"},
    {Look::kFailed, "failed", "failed", ":/assets/images/failed.png", ":/assets/images/failed.ico"},
};

Row const& rowOf(Look look) {
    return kRows[static_cast<std::size_t>(look)];
}

}  // namespace

QString ShieldImage(Look look, bool large) {
    return QStringLiteral(":/assets/images/shield_%1%2.png")
        .arg(QLatin1String(rowOf(look).name), large ? QStringLiteral("_large") : QString());
}

char const* LampName(Look look) {
    return rowOf(look).lamp;
}

char const* DotImage(Look look) {
    return rowOf(look).dot;
}

char const* TrayImage(Look look) {
    return rowOf(look).tray;
}

}  // namespace zorvanelink::ui
