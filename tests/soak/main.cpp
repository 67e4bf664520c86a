// zalmo-soak: random use of the real program on two unsteady blogs, with kills in the middle.
#include "RandomWriter.h"
#include "SoakRun.h"
#include "mainwindow/ZLMainWindow.h"
#include "mainwindow/ZLProgram.h"
#include "support/Files.h"

#include <QApplication>
#include <QCommandLineParser>
#include <cstdio>

namespace {

int runWriter(int argc, char **argv, const QCommandLineParser &options)
{
    usePrivateHome(options.value("home"));
    ZLProgram::prepare();
    QApplication application(argc, argv);
    ZLProgram program;
    if (!program.start())
        return 2;
    TourScreen screen(program.window(), options.value("home"));
    RandomWriter writer(program, screen, options.value("blogs").split(','), options.value("seed").toUInt());
    try {
        screen.activate();
        writer.connectBlogs();
    } catch (const TourFailure &failure) {
        std::printf("not connected: %s\n", failure.what());
    }
    if (options.value("writer") == "write")
        writer.write();
    const QString waiting = writer.settle(60);
    if (waiting.isEmpty())
        return 0;
    std::printf("still there: %s\n", qPrintable(waiting));
    return 1;
}

} // namespace

int main(int argc, char **argv)
{
    QCommandLineParser parser;
    parser.setApplicationDescription("Uses Zalmo at random on two unsteady blogs, kills it, and looks what is left.");
    parser.addHelpOption();
    parser.addOptions({{"seconds", "How long it goes on.", "N", "120"}, {"seed", "For the same run again.", "N", "1"},
        {"writer", "Of the run itself: \"write\" or \"rest\".", "MODE"}, {"home", "Of the run itself.", "DIR"},
        {"blogs", "Of the run itself.", "URLS"}});
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments.append(QString::fromLocal8Bit(argv[i]));
    parser.parse(arguments);
    if (parser.isSet("writer"))
        return runWriter(argc, argv, parser);
    QCoreApplication application(argc, argv);
    parser.process(application);
    return SoakRun(arguments.first(), parser.value("seed").toUInt()).run(parser.value("seconds").toInt()) ? 0 : 1;
}
