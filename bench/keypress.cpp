// bench_keypress [ours|bare]   from a key press in a post of 100 kB to the report that reaches the program, 95th
// percentile
//
// "ours" is the editor page, which reports the whole body in the blog's form. "bare" is an editable page with the same
// text and no script but a listener that says that there was input. Without an argument both run, one after the other.
#include "bench.h"

#include "editor/ZLEditorPage.h"
#include "engine/EditorScheme.h"
#include "engine/ZLEditorWebView.h"
#include "text/BodyPieces.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QKeyEvent>
#include <QTemporaryDir>
#include <QTimer>
#include <QWebChannel>
#include <QWebEnginePage>
#include <QWebEngineProfile>

namespace {
constexpr int warmUpKeys = 20;
constexpr int measuredKeys = 200;
constexpr int keyLimitMs = 5000;

/// A body of the block editor of about 100 kB, in some 250 paragraphs.
QString makeBody()
{
    QString body;
    for (int n = 0; body.size() < 100'000; ++n) {
        body +=
            QStringLiteral("<!-- wp:paragraph -->\n<p>Paragraph %1 with <strong>bold</strong>, <em>italic</em> and a "
                           "<a href=\"https://example.com/%1\">link</a>. ")
                .arg(n);
        body += QStringLiteral("The quick brown fox jumps over the lazy dog and rests. ").repeated(5);
        body += QStringLiteral("</p>\n<!-- /wp:paragraph -->\n\n");
    }
    return body;
}

EditorBody asEditorBody(const QString &stored)
{
    EditorBody body;
    body.isBlockEditor = true;
    body.pieces = BodyPieces::split(stored);
    for (BodyPiece &piece : body.pieces)
        piece.html = piece.core;
    return body;
}

/// Ends the event loop when it is told, or when it takes too long.
class Wait {
public:
    bool operator()()
    {
        m_done = m_early;
        QTimer limit;
        limit.setSingleShot(true);
        QObject::connect(&limit, &QTimer::timeout, &m_loop, &QEventLoop::quit);
        limit.start(keyLimitMs * 6);
        if (!m_done)
            m_loop.exec();
        m_early = false;
        return m_done;
    }
    void tell()
    {
        m_early = m_done = true;
        m_loop.quit();
    }

private:
    QEventLoop m_loop;
    bool m_done = false;
    bool m_early = false;
};

void sendKey(QWebEngineView &view, int n)
{
    const QChar letter = QChar(u'a' + n % 26);
    for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent event(type, letter.toUpper().unicode(), Qt::NoModifier, letter);
        QCoreApplication::sendEvent(view.focusProxy(), &event);
    }
}

/// Types in the middle of the text and prints the 95th percentile of the times until `wait` is told.
int measure(const char *name, QWebEngineView &view, Wait &wait)
{
    const QString place = QStringLiteral("(() => { const c = document.getElementById('content'); c.focus(); const p = "
                                         "c.querySelectorAll('p')[Math.floor(c.querySelectorAll('p').length / 2)]; "
                                         "getSelection().collapse(p.firstChild, 9); })()");
    Wait placed;
    view.setFocus();
    view.page()->runJavaScript(place, 0, [&placed](const QVariant &) { placed.tell(); });
    if (!placed())
        return 1;
    std::vector<double> times;
    for (int n = 0; n < warmUpKeys + measuredKeys; ++n) {
        QElapsedTimer timer;
        timer.start();
        sendKey(view, n);
        if (!wait())
            return 1;
        if (n >= warmUpKeys)
            times.push_back(double(timer.nsecsElapsed()) / 1e6);
        // A person does not type faster than this, and the page has its pause to paint.
        Wait pause;
        QTimer::singleShot(25, [&pause] { pause.tell(); });
        pause();
    }
    std::sort(times.begin(), times.end());
    bench::report(name, times[times.size() * 95 / 100]);
    return 0;
}

int ours(const QString &stored)
{
    QTemporaryDir cache;
    ZLEditorPage page;
    ZLEditorWebView view(page, cache.path());
    view.resize(1000, 800);
    view.show();
    Wait wait;
    QObject::connect(&page, &ComposePage::ready, &page, [&wait] { wait.tell(); });
    if (!wait())
        return 1;
    page.loadHTMLContent(asEditorBody(stored), 1, ComposePage::Loading::NewPost);
    page.getBodyContent().then([&wait](const std::optional<QString> &) { wait.tell(); });
    if (!wait())
        return 1;
    QObject::connect(&page, &ComposePage::setPostContent, &page, [&wait](const QString &) { wait.tell(); });
    return measure("ours", view, wait);
}

/// What the bare page's listener calls.
class Listener : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;
    Q_INVOKABLE void input() { Q_EMIT happened(); }
    Q_INVOKABLE void ready() { Q_EMIT isReady(); }
Q_SIGNALS:
    void happened();
    void isReady();
};

int bare(const QString &stored)
{
    QFile channelScript(QStringLiteral(":/qtwebchannel/qwebchannel.js"));
    if (!channelScript.open(QIODevice::ReadOnly))
        return 1;
    QWebEngineProfile profile;
    QWebChannel channel;
    Listener listener;
    channel.registerObject(QStringLiteral("listener"), &listener);
    QWebEngineView view;
    auto *page = new QWebEnginePage(&profile, &view);
    page->setWebChannel(&channel);
    view.setPage(page);
    view.resize(1000, 800);
    view.show();
    Wait wait;
    QObject::connect(&listener, &Listener::isReady, &view, [&wait] { wait.tell(); });
    QObject::connect(page, &QWebEnginePage::loadFinished, page, [&](bool) {
        page->runJavaScript(QString::fromUtf8(channelScript.readAll())
            + QStringLiteral(";new QWebChannel(qt.webChannelTransport, channel => { const {listener} = channel.objects;"
                             "document.addEventListener('input', () => listener.input()); listener.ready(); });"));
    });
    page->setHtml(
        QStringLiteral("<!doctype html><meta charset=utf-8><div id=content contenteditable>%1</div>").arg(stored));
    if (!wait())
        return 1;
    QObject::connect(&listener, &Listener::happened, &view, [&wait] { wait.tell(); });
    return measure("bare", view, wait);
}
} // namespace

int main(int argc, char **argv)
{
    EditorScheme::registerScheme();
    QApplication application(argc, argv);
    const QString which = application.arguments().value(1);
    const QString body = makeBody();
    int failures = 0;
    if (which != u"ours")
        failures += bare(body);
    if (which != u"bare")
        failures += ours(body);
    return failures;
}

#include "keypress.moc"
