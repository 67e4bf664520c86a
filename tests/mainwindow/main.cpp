#include "mainwindow/ZLProgram.h"
#include "support/TestClasses.h"

#include <QApplication>

int main(int argc, char **argv)
{
    ZLProgram::prepare();
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    return runTests(argc, argv);
}
