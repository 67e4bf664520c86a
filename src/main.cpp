#include "mainwindow/ZLProgram.h"

#include <QApplication>

int main(int argc, char **argv)
{
    ZLProgram::prepare();
    QApplication application(argc, argv);
    ZLProgram program;
    return program.start() ? QApplication::exec() : 0;
}
