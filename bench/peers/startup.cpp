// startup core|widget|web|web-page     says READY with the milliseconds since START_NS (CLOCK_MONOTONIC), then waits to
// be ended
#include <QApplication>
#include <QTimer>
#ifndef PLAIN // PLAIN: not linked against the web engine
#include <QWebEnginePage>
#include <QWebEngineView>
#endif
#include <QWidget>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>

static void ready()
{
    timespec t;
    clock_gettime(CLOCK_MONOTONIC, &t);
    const long long from = std::atoll(std::getenv("START_NS") ? std::getenv("START_NS") : "0");
    std::printf("READY %.3f\n", (t.tv_sec * 1000000000LL + t.tv_nsec - from) / 1e6);
    std::fflush(stdout);
}

// ready when the first paint has been delivered
struct Window : QWidget {
    bool told = false;
    void paintEvent(QPaintEvent *) override
    {
        if (!told)
            QTimer::singleShot(0, ready);
        told = true;
    }
};

#ifndef PLAIN
// an editor page of the plainest kind: one editable block and a toolbar's worth of script
static const char PAGE[] = R"(<!doctype html><meta charset=utf-8><style>body{font:16px serif;margin:2em}</style>
<div id=t contenteditable><p>A first paragraph.</p><h2>Head</h2><p>Text</p></div><script>
const t=document.getElementById('t');t.addEventListener('input',()=>{window.n=t.innerHTML.length});t.focus();</script>)";
#endif

int main(int argc, char **argv)
{
    const char *what = argc > 1 ? argv[1] : "widget";
    if (!std::strcmp(what, "core")) {
        QCoreApplication app(argc, argv);
        QTimer::singleShot(0, ready);
        return app.exec();
    }
    QApplication app(argc, argv);
    if (!std::strcmp(what, "widget")) {
        Window w;
        w.resize(1000, 700);
        w.show();
        return app.exec();
    }
#ifdef PLAIN
    return 2;
#else
    QWebEngineView v;
    v.resize(1000, 700);
    QObject::connect(&v, &QWebEngineView::loadFinished, [&](bool) {
        // an answer from the page's script, so that the page is really there
        v.page()->runJavaScript(QStringLiteral("document.body.innerHTML.length"), [](const QVariant &) { ready(); });
    });
    if (!std::strcmp(what, "web"))
        v.setUrl(QUrl(QStringLiteral("about:blank")));
    else
        v.setHtml(QString::fromUtf8(PAGE));
    v.show();
    return app.exec();
#endif
}
