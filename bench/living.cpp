// bench_living terms    a service takes 10,000 categories: the longest time that its thread is not free
// bench_living sync     100 changed posts come down while a post of 100 kB is on the screen: the same of the program
// bench_living open     from the click on another post of 100 kB until the page shows and answers it
// bench_living markup   the web engine sets the same mark-up in a bare page
//
// The pretended blog that answers is a process of its own (bench_living serve), so that its work is not counted.
#include "bench.h"

#include "compose/ComposePage.h"
#include "mainwindow/ComposeArea.h"
#include "mainwindow/ZLMainWindow.h"
#include "mainwindow/ZLProgram.h"
#include "support/ServedBlog.h"
#include "support/TestEnvironment.h"
#include "tour/TourScreen.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QTest>
#include <QTimer>
#include <QWebEngineView>

namespace {

constexpr int patienceMs = 60'000;
constexpr int openings = 20;

/// A body of the block editor of about 100 kB, in some 250 paragraphs.
QString longBody(const QString &mark)
{
    QString body;
    for (int n = 0; body.size() < 100'000; ++n)
        body += u"<!-- wp:paragraph -->\n<p>%1 %2 with <strong>bold</strong> and <em>italic</em>. %3</p>\n"
                u"<!-- /wp:paragraph -->\n\n"_qs.arg(mark)
                    .arg(n)
                    .arg(u"The quick brown fox jumps over the lazy dog and rests. "_qs.repeated(5));
    return body;
}

/// Serves a blog with as many posts and pages as one round asks for, two of the posts long, and 10,000 categories;
/// GET /change changes all of them.
class Blog : public ServedBlog {
public:
    Blog()
    {
        for (int n = 0; n < 98; ++n)
            blog().addPost(u"Short %1"_qs.arg(n), u"<p>Words</p>"_qs, n < 50 ? u"page"_qs : u"post"_qs);
        for (const QString &mark : {u"First"_qs, u"Second"_qs})
            blog().addPost(mark + u" long post"_qs, longBody(mark));
        for (int n = 0; n < 10'000; ++n)
            blog().addTerm(u"category"_qs, u"Category %1"_qs.arg(n));
    }

protected:
    void respond(QTcpSocket *socket, const FakeRequest &request) override
    {
        if (request.request.url().path() != u"/change")
            return ServedBlog::respond(socket, request);
        blog().now = QDateTime::currentDateTimeUtc();
        for (FakeBlog::Post &post : blog().posts) {
            post.content += u"<p>More</p>"_qs;
            post.modified = blog().now;
        }
        send(socket, {});
    }
};

int serve(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    Blog blog;
    std::printf("%s\n", qPrintable(blog.url()));
    std::fflush(stdout);
    return QCoreApplication::exec();
}

/// The blog's process, which ends with this one.
class BlogProcess {
public:
    BlogProcess()
    {
        m_process.start(QCoreApplication::applicationFilePath(), {u"serve"_qs});
        if (!m_process.waitForStarted() || !m_process.waitForReadyRead())
            qFatal("no blog");
        url = QString::fromUtf8(m_process.readLine()).trimmed();
    }
    ~BlogProcess()
    {
        m_process.kill();
        m_process.waitForFinished();
    }
    void change()
    {
        QNetworkAccessManager network;
        const std::unique_ptr<QNetworkReply> reply(network.get(QNetworkRequest(QUrl(url + u"/change"_qs))));
        if (!QTest::qWaitFor([&reply] { return reply->isFinished(); }, patienceMs))
            qFatal("the blog does not answer");
    }

    QString url;

private:
    QProcess m_process;
};

/// The longest time in which this thread's event loop did not come round.
class LoopWatch : public QObject {
public:
    LoopWatch()
    {
        m_beat.setTimerType(Qt::PreciseTimer);
        connect(&m_beat, &QTimer::timeout, this, [this] {
            m_longest = std::max(m_longest, double(m_since.nsecsElapsed()) / 1e6 - 1);
            m_since.restart();
        });
        m_since.start();
        m_beat.start(1);
    }
    double longest() const { return m_longest; }

private:
    QTimer m_beat;
    QElapsedTimer m_since;
    double m_longest = 0;
};

int terms()
{
    BlogProcess blog;
    TestEnvironment environment;
    ZLServiceEnvironment services = environment.serviceEnvironment();
    QNetworkAccessManager network;
    XMLRPCConnectionManager connections(network);
    ZLServiceEnvironment real{connections, services.keychain, services.files, services.notifications, services.clock,
        services.documents, services.context};
    const AccountPtr account = environment.addAccount(u"ada"_qs, u"secret"_qs, blog.url, u"Blog"_qs);
    const auto service = std::make_shared<ZLWordpressService>(account, real);
    const LoopWatch watch;
    service->syncBlogTaxonomies();
    if (!QTest::qWaitFor([&] { return account->taxonomies.size() >= 10'000; }, patienceMs))
        return 1;
    QTest::qWait(1000); // what is written afterwards counts as well
    bench::report("terms", watch.longest());
    return 0;
}

/// The program, connected to the blog, with its first round behind it.
class Running {
public:
    explicit Running(const QString &url)
        : screen(m_program.window(), QString())
    {
        m_program.start();
        screen.expectAlert(u"keychain"_qs);
        screen.type(u"blogURLField"_qs, url);
        screen.press(Qt::Key_Return);
        screen.type(u"usernameField"_qs, u"ada"_qs);
        screen.type(u"passwordField"_qs, u"secret"_qs);
        screen.press(Qt::Key_Return);
        screen.waitFor(
            u"the blog"_qs, [this] { return screen.isVisible(u"blogIsConnectedSheet"_qs); }, patienceMs);
        screen.click(u"getStartedDoneButton"_qs);
        screen.waitFor(
            u"the posts"_qs, [this] { return screen.rowTitles().size() >= 100; }, patienceMs);
        rest();
    }
    ZLMainWindowCreateViewController &controller() { return m_program.window().composeArea().controller(); }
    void rest()
    {
        screen.waitFor(
            u"the sync to end"_qs, [this] { return !screen.isVisible(u"syncBar"_qs); }, patienceMs);
        QTest::qWait(1500);
    }

private:
    ZLProgram m_program;

public:
    TourScreen screen;
};

int syncPosts()
{
    BlogProcess blog;
    Running program(blog.url);
    program.screen.clickRow(u"First long post"_qs);
    program.screen.waitForPage(u"First 100"_qs);
    blog.change();
    program.rest();
    const LoopWatch watch;
    program.screen.shortcut(u"F5"_qs);
    program.screen.waitFor(u"the sync"_qs, [&program] { return program.screen.isVisible(u"syncBar"_qs); });
    program.rest();
    const double longest = watch.longest();
    program.screen.waitForPage(u"More"_qs); // so the round did bring what changed
    bench::report("sync", longest);
    return 0;
}

int open()
{
    BlogProcess blog;
    Running program(blog.url);
    auto *page = program.screen.window().findChild<ComposePage *>();
    std::vector<double> times;
    for (int n = 0; n <= openings; ++n) {
        const QString mark = n % 2 ? u"First"_qs : u"Second"_qs;
        const bench::Clock::time_point start = bench::Clock::now();
        // Asked earlier, the page would report the post before.
        QEventLoop loaded;
        QObject::connect(
            &program.controller(), &ZLMainWindowCreateViewController::didLoadedPost, &loaded, &QEventLoop::quit);
        program.screen.clickRow(mark + u" long post"_qs);
        loaded.exec();
        for (bool isThere = false; !isThere;) {
            QEventLoop answered;
            page->getBodyContent().then([&](const std::optional<QString> &content) {
                isThere = content && content->contains(mark + u" 100"_qs);
                answered.quit();
            });
            answered.exec();
        }
        if (n > 0)
            times.push_back(bench::millisecondsSince(start));
        QTest::qWait(1200); // its file is looked at, its picture painted
    }
    bench::report("open", bench::median(times));
    return 0;
}

int markup()
{
    QWebEngineView view;
    view.resize(1000, 800);
    view.show();
    QEventLoop loop;
    QObject::connect(&view, &QWebEngineView::loadFinished, &loop, &QEventLoop::quit);
    view.setHtml(u"<!doctype html><meta charset=utf-8><div id=content contenteditable></div>"_qs);
    loop.exec();
    std::vector<double> times;
    for (int n = 0; n <= openings; ++n) {
        QString body = longBody(n % 2 ? u"First"_qs : u"Second"_qs);
        body.replace(u'\n', u"\\n"_qs).replace(u'\'', u"\\'"_qs);
        const bench::Clock::time_point start = bench::Clock::now();
        // Reading the height makes the engine lay out what it was given.
        view.page()->runJavaScript(
            u"const c = document.getElementById('content'); c.innerHTML = '%1'; c.offsetHeight"_qs.arg(body).replace(
                u"const c"_qs, u"var c"_qs),
            [&loop](const QVariant &) { loop.quit(); });
        loop.exec();
        if (n > 0)
            times.push_back(bench::millisecondsSince(start));
        QTest::qWait(1200);
    }
    bench::report("markup", bench::median(times));
    return 0;
}

} // namespace

int main(int argc, char **argv)
{
    const QByteArray what = argc > 1 ? argv[1] : "";
    if (what == "serve")
        return serve(argc, argv);
    const QTemporaryDir home;
    for (const char *name : {"HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_CONFIG_HOME"})
        qputenv(name, home.path().toUtf8());
    ZLProgram::prepare();
    QApplication application(argc, argv);
    try {
        return what == "terms" ? terms() : what == "sync" ? syncPosts() : what == "open" ? open() : markup();
    } catch (const TourFailure &failure) {
        std::fprintf(stderr, "%s\n", failure.what());
        return 1;
    }
}
