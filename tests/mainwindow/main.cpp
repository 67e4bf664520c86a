#include "Tests.h"
#include "mainwindow/ZLProgram.h"

#include <QApplication>
#include <QTest>

int main(int argc, char **argv)
{
    ZLProgram::prepare();
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    PostListTest postList;
    ContextMenuTest contextMenu;
    MainWindowTest mainWindow;
    SheetsTest sheets;
    int failed = 0;
    for (QObject *test : std::initializer_list<QObject *>{&postList, &contextMenu, &mainWindow, &sheets})
        failed += QTest::qExec(test, argc, argv);
    return failed;
}
