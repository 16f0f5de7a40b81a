// The floor of start_bench: a Qt Widgets program with nothing in it and nothing shown, up to the point where
// it could work.
#include <QApplication>
#include <QWidget>

#include <cstdio>

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    const QWidget window;
    QApplication::processEvents();
    std::fputs("ready\n", stdout);
    std::fflush(stdout);
    return 0;
}
