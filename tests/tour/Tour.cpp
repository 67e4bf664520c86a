#include "Tour.h"

#include "support/Files.h"

#include <QElapsedTimer>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRandomGenerator>
#include <QWidget>
#include <cstdio>

Tour::Tour(const TourOptions &options, TourScreen &screen, const QString &dataHome)
    : m_options(options)
    , m_screen(screen)
    , m_blog(options.url, options.user, options.password)
    , m_dataHome(dataHome)
    , m_stamp(QString::number(QRandomGenerator::global()->bounded(100000, 999999)))
{
}

QStringList Tour::allSteps()
{
    return {"connect", "list", "open-all", "new", "image", "update", "draft", "delete", "conflict", "private",
        "two-blogs", "offline"};
}

bool Tour::run()
{
    QDir().mkpath(m_options.out);
    bool allHeld = true;
    for (const QString &step : m_options.steps) {
        QElapsedTimer clock;
        clock.start();
        const QString failure = failureOf(step);
        const qint64 milliseconds = clock.elapsed();
        const QString picture = m_screen.screenshot(step);
        QJsonObject line{{"step", step}, {"ok", failure.isEmpty()}, {"ms", milliseconds}, {"screenshot", picture}};
        if (!failure.isEmpty())
            line.insert("detail", failure);
        std::puts(QJsonDocument(line).toJson(QJsonDocument::Compact).constData());
        std::fflush(stdout);
        allHeld = allHeld && failure.isEmpty();
        // Without a connected blog nothing else can hold.
        if (step == "connect" && !failure.isEmpty())
            break;
    }
    return allHeld;
}

QString Tour::failureOf(const QString &step)
{
    static const QHash<QString, void (Tour::*)()> steps = {{"connect", &Tour::connectBlog}, {"list", &Tour::checkList},
        {"open-all", &Tour::openAll}, {"new", &Tour::writeNew}, {"image", &Tour::publishPicture},
        {"update", &Tour::updateBlockPost}, {"draft", &Tour::saveDraft}, {"delete", &Tour::deletePost},
        {"conflict", &Tour::answerConflicts}, {"private", &Tour::updatePrivate}, {"two-blogs", &Tour::useTwoBlogs},
        {"offline", &Tour::publishOffline}};
    if (!steps.contains(step))
        return "there is no step of this name; known are " + allSteps().join(", ");
    try {
        (this->*steps.value(step))();
        return {};
    } catch (const TourFailure &failure) {
        return QString::fromStdString(failure.what());
    }
}

QString Tour::title(const QString &words) const
{
    return words + ' ' + m_stamp;
}

QString Tour::postFile(const QString &id) const
{
    for (const QString &blog : QDir(m_dataHome + "/zalmo/accounts").entryList(QDir::Dirs | QDir::NoDotAndDotDot))
        if (const QString file = m_dataHome + "/zalmo/accounts/" + blog + "/posts/p" + id + "/post.zalmo";
            QFile::exists(file))
            return file;
    return {};
}

void Tour::checkFileInStep(const XMLRPCValue &post, const QString &status)
{
    const QString id = post[u"post_id"].string();
    m_screen.waitFor("the file of post " + id, [&] { return !postFile(id).isNull(); });
    m_screen.waitFor("the file of post " + id + " to be in step with the blog", [&] {
        const QString text = contentsOf(postFile(id));
        return text.contains("<id>" + id + "</id><status>" + status + "</status>")
            && text.contains("<file_info><status></status>");
    });
}
