// peer_windows window|page
// Says READY with the milliseconds since START_NS (CLOCK_MONOTONIC), then waits to be ended. window: an empty window of
// a program that is linked to the web engine, painted. page: a web page of one editable block that answers its script.
#include <QApplication>
#include <QTimer>
#include <QWebEnginePage>
#include <QWebEngineView>
#include <cstdio>
#include <ctime>

namespace {

void tellReady()
{
    timespec now;
    clock_gettime(CLOCK_MONOTONIC, &now);
    const qint64 nanoseconds =
        now.tv_sec * 1'000'000'000LL + now.tv_nsec - qEnvironmentVariable("START_NS").toLongLong();
    std::printf("READY %.3f\n", double(nanoseconds) / 1e6);
    std::fflush(stdout);
}

class Window : public QWidget {
protected:
    void paintEvent(QPaintEvent *) override
    {
        if (!std::exchange(m_isPainted, true))
            QTimer::singleShot(0, tellReady);
    }

private:
    bool m_isPainted = false;
};

QString page()
{
    return QStringLiteral(
        "<!doctype html><meta charset=utf-8><style>body{font:16px serif;margin:2em}</style>"
        "<div id=t contenteditable><p>A first paragraph.</p><h2>Head</h2><p>Text</p></div><script>"
        "const t=document.getElementById('t');t.addEventListener('input',()=>{window.n=t.innerHTML.length});t.focus();"
        "</script>");
}

} // namespace

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    if (application.arguments().value(1) == u"window") {
        Window window;
        window.resize(1000, 700);
        window.show();
        return QApplication::exec();
    }
    QWebEngineView view;
    view.resize(1000, 700);
    QObject::connect(&view, &QWebEngineView::loadFinished, &view, [&view] {
        view.page()->runJavaScript(
            QStringLiteral("document.body.innerHTML.length"), [](const QVariant &) { tellReady(); });
    });
    view.setHtml(page());
    view.show();
    return QApplication::exec();
}
