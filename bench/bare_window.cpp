// What the toolkit costs before a program has done anything: an empty window of the same size.

#include <QApplication>
#include <QMainWindow>

int main(int argc, char* argv[]) {
    const QApplication application(argc, argv);
    QMainWindow window;
    window.setWindowTitle(QStringLiteral("Bare window"));
    window.resize(900, 560);
    window.show();
    return QApplication::exec();
}
