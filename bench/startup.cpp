// bench_startup prepare POSTS           makes a home with one account and these posts (a folder with accounts/blog)
// bench_startup paint|list|editor ...   starts the program and says READY with the milliseconds since START_NS
#include "compose/ComposePage.h"
#include "mainwindow/ZLMainWindow.h"
#include "mainwindow/ZLProgram.h"
#include "store/ZLManagedObjectContext.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QTimer>
#include <cstdio>
#include <ctime>

namespace {

void ready()
{
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    const qint64 start = qEnvironmentVariable("START_NS").toLongLong();
    std::printf("READY %.3f\n", double(now.tv_sec * 1000000000LL + now.tv_nsec - start) / 1e6);
    std::fflush(stdout);
}

/// Says so when this widget has been painted, and `holds` is true by then.
class PaintWatch : public QObject {
public:
    PaintWatch(QWidget *widget, std::function<bool()> holds)
        : QObject(widget)
        , m_holds(std::move(holds))
    {
        widget->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::Paint && !m_said && m_holds()) {
            m_said = true;
            // Before what the program has put off until after its first paint.
            QCoreApplication::postEvent(this, new QEvent(QEvent::User), Qt::HighEventPriority);
        }
        return false;
    }
    void customEvent(QEvent *) override { ready(); }

private:
    std::function<bool()> m_holds;
    bool m_said = false;
};

int prepare(const QString &posts)
{
    const ZLFileManager files = ZLFileManager::forUser();
    if (!QFile::link(QDir(posts).absoluteFilePath("accounts"), files.applicationSupportDirectory() + "/accounts"))
        return 1;
    auto context = ZLManagedObjectContext::open(files.applicationFilesDirectory());
    if (!context)
        return 1;
    const AccountPtr account = (*context)->insertAccount();
    account->name = "writer";
    account->blog_name = "blog";
    account->url = "http://127.0.0.1:1"; // nobody answers there
    account->preferences = std::make_shared<AccountPreferences>();
    (*context)->insertSelectedAccount()->account = account; // as in every program that has one
    return (*context)->save() ? 0 : 1;
}

void watchEditor(QWidget &window)
{
    // The page is made after the first paint, so it has to be looked for.
    auto *timer = new QTimer(&window);
    QObject::connect(timer, &QTimer::timeout, [timer, &window] {
        auto *page = window.findChild<ComposePage *>();
        if (!page)
            return;
        timer->stop();
        page->getBodyContent().then([timer](const std::optional<QString> &answer) {
            if (answer)
                ready();
            else
                timer->start();
        });
    });
    timer->start(1);
}

} // namespace

int main(int argc, char **argv)
{
    ZLProgram::prepare();
    QApplication application(argc, argv);
    const QStringList arguments = application.arguments();
    const QString what = arguments.value(1);
    if (what == "prepare")
        return prepare(arguments.value(2));
    ZLProgram program;
    QWidget &window = program.window();
    if (what == "paint") {
        new PaintWatch(&window, [] { return true; });
    } else if (what == "list") {
        auto *list = window.findChild<QAbstractItemView *>("postList");
        new PaintWatch(list->viewport(), [list] { return list->model()->rowCount() >= 1000; });
    } else {
        watchEditor(window);
    }
    program.start();
    return application.exec();
}
