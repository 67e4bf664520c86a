#include "mainwindow/ZLProgram.h"
#include "support/TestClasses.h"

#include <QApplication>
#include <QFile>
#include <QTemporaryDir>

/// The offscreen platform's own screen is smaller than the window.
static void useLaptopScreen(const QTemporaryDir &folder)
{
    QFile file(folder.filePath("screen.json"));
    if (!file.open(QIODevice::WriteOnly))
        return;
    file.write(R"({"screens": [{"name": "laptop", "x": 0, "y": 0, "width": 1440, "height": 900, "logicalDpi": 96,
        "logicalBaseDpi": 96, "dpr": 1}]})");
    qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + file.fileName().toUtf8());
}

int main(int argc, char **argv)
{
    const QTemporaryDir folder;
    useLaptopScreen(folder);
    ZLProgram::prepare();
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    return runTests(argc, argv);
}
