// zalmo-tour: the real program, in this process and with a private home, taken through its main job on a real blog.
#include "Tour.h"
#include "mainwindow/ZLMainWindow.h"
#include "mainwindow/ZLProgram.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QTemporaryDir>
#include <QTest>
#include <cstdio>
#include <thread>

namespace {

/// Ends the process when a step hangs so badly that its own limit is not looked at any more.
void startWatchdog(std::chrono::seconds limit)
{
    std::thread([limit] {
        std::this_thread::sleep_for(limit);
        std::fputs("{\"step\":\"watchdog\",\"ok\":false,\"detail\":\"the tour hangs\"}\n", stdout);
        std::fflush(stdout);
        std::_Exit(3);
    }).detach();
}

void usePrivateHome(const QString &home)
{
    for (const auto &[name, folder] : {std::pair("HOME", ""), std::pair("XDG_DATA_HOME", "/data"),
             std::pair("XDG_CACHE_HOME", "/cache"), std::pair("XDG_CONFIG_HOME", "/config")})
        qputenv(name, (home + folder).toUtf8());
}

TourOptions parsed(const QStringList &arguments)
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

} // namespace

int main(int argc, char **argv)
{
    startWatchdog(std::chrono::seconds(540));
    const QTemporaryDir home;
    usePrivateHome(home.path());
    ZLProgram::prepare();
    QApplication application(argc, argv);
    const TourOptions options = parsed(application.arguments());
    bool held = false;
    {
        ZLProgram program;
        program.start();
        TourScreen screen(program.window(), options.out);
        held = Tour(options, screen, home.path() + "/data").run();
    }
    return held ? 0 : 1;
}
