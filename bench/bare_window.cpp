// SPDX-License-Identifier: MIT
// The least that a program with a window and a menu can be: the floor of the program's start-up and memory.
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
