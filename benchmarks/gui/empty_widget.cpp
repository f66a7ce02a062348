// The least that a Qt program with a window can be, with all of Qt's defaults.
#include <QApplication>
#include <QWidget>

int main(int argc, char** argv) {
    QApplication const application(argc, argv);
    QWidget window;
    window.resize(960, 640);
    window.show();
    return QApplication::exec();
}
