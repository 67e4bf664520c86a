// zalmo-tour: the real program, in this process and with a private home, taken through its main job on a real blog.
#include "Tour.h"
#include "mainwindow/ZLMainWindow.h"
#include "mainwindow/ZLProgram.h"
#include "support/Files.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QTemporaryDir>

static TourOptions parsed(const QStringList &arguments)
{
    QCommandLineParser parser;
    parser.setApplicationDescription("Takes Zalmo through its main job on a real WordPress blog.");
    parser.addHelpOption();
    parser.addOptions({{"url", "The blog's address.", "U"}, {"user", "A user who may publish.", "N"},
        {"password", "The user's password.", "P"}, {"out", "Folder for the screenshots.", "DIR", "build/tour"},
        {"second", "The address of another blog for the same user.", "U"},
        {"control", "The script that runs the demo blog.", "FILE"}, {"folder", "The demo blog's folder.", "DIR"},
        {"steps", "Comma-separated; default: " + Tour::allSteps().join(','), "S", Tour::allSteps().join(',')}});
    parser.process(arguments);
    const TourOptions options{QUrl(parser.value("url")), parser.value("user"), parser.value("password"),
        parser.value("out"), parser.value("steps").split(',', Qt::SkipEmptyParts), QUrl(parser.value("second")),
        parser.value("control"), parser.value("folder")};
    if (options.url.host().isEmpty() || options.user.isEmpty() || options.password.isEmpty())
        parser.showHelp(2);
    return options;
}

int main(int argc, char **argv)
{
    const QTemporaryDir home;
    usePrivateHome(home.path());
    ZLProgram::prepare();
    QApplication application(argc, argv);
    const TourOptions options = parsed(application.arguments());
    ZLProgram program;
    program.start();
    TourScreen screen(program.window(), options.out);
    return Tour(options, screen, home.path() + "/data").run() ? 0 : 1;
}
