// SPDX-License-Identifier: MIT
// A minimal program with a window and a menu: the baseline for start-up time and memory.
#include <QApplication>
#include <QMainWindow>
#include <QMenuBar>

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    QMainWindow window;
    window.resize(800, 600);
    window.menuBar()->addMenu(QStringLiteral("&File"))->addAction(QStringLiteral("E&xit"), &window, &QWidget::close);
    window.show();
    return QApplication::exec();
}
