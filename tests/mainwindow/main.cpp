#include "mainwindow/ZLProgram.h"
#include "support/Files.h"
#include "support/TestClasses.h"

#include <QApplication>
#include <QTemporaryDir>

/// The offscreen platform's own screen is smaller than the window.
static void useLaptopScreen(const QTemporaryDir &folder)
{
    const QString file = folder.filePath("screen.json");
    writeFile(file, R"({"screens": [{"name": "laptop", "x": 0, "y": 0, "width": 1440, "height": 900, "logicalDpi": 96,
        "logicalBaseDpi": 96, "dpr": 1}]})");
    qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + file.toUtf8());
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
