#pragma once

#include "TourBlog.h"
#include "support/Files.h"

#include <QDir>
#include <QElapsedTimer>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRandomGenerator>
#include <cstdio>

/// What the tour is given on its command line.
struct TourOptions {
    QUrl url;
    QString user;
    QString password;
    QString out;
    QStringList steps;
    QUrl second; ///< another blog, with the same name and user
    QString control; ///< the program that takes the first blog's web server away and starts it again,
    QString folder; ///< which knows it by this folder
};

/// A walk through the program's main job against a real blog. Each step drives the windows as a person would, then
/// looks at the blog and the disk by itself. What does not hold ends the step with a sentence.
class Tour {
public:
    Tour(const TourOptions &options, TourScreen &screen, const QString &dataHome)
        : m_options(options)
        , m_screen(screen)
        , m_blog(options.url, options.user, options.password)
        , m_accounts(dataHome + "/zalmo/accounts")
        , m_stamp(QString::number(QRandomGenerator::global()->bounded(100000, 999999)))
    {
    }

    static QStringList allSteps()
    {
        QStringList names;
        for (const auto &[name, step] : table())
            names.append(name);
        return names;
    }
    /// Runs the steps in order, prints a JSON line for each; true when all held.
    bool run()
    {
        QDir().mkpath(m_options.out);
        bool allHeld = true;
        for (const QString &step : m_options.steps) {
            QElapsedTimer clock;
            clock.start();
            const QString failure = failureOf(step);
            QJsonObject line{{"step", step}, {"ok", failure.isEmpty()}, {"ms", clock.elapsed()}};
            line.insert("screenshot", m_screen.screenshot(step));
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

private:
    void connectBlog();
    void checkList();
    void openAll();
    void writeNew();
    void publishPicture();
    void updateBlockPost();
    void saveDraft();
    void deletePost();
    void answerConflicts();
    void updatePrivate();
    void useTwoBlogs();
    void publishOffline();

    static QList<std::pair<QString, void (Tour::*)()>> table()
    {
        return {{"connect", &Tour::connectBlog}, {"list", &Tour::checkList}, {"open-all", &Tour::openAll},
            {"new", &Tour::writeNew}, {"image", &Tour::publishPicture}, {"update", &Tour::updateBlockPost},
            {"draft", &Tour::saveDraft}, {"delete", &Tour::deletePost}, {"conflict", &Tour::answerConflicts},
            {"private", &Tour::updatePrivate}, {"two-blogs", &Tour::useTwoBlogs}, {"offline", &Tour::publishOffline}};
    }
    /// Runs one step; its failure, or an empty text.
    QString failureOf(const QString &step)
    {
        try {
            for (const auto &[name, perform] : table())
                if (name == step)
                    return (this->*perform)(), QString();
            return "there is no step of this name; known are " + allSteps().join(", ");
        } catch (const TourFailure &failure) {
            return QString::fromStdString(failure.what());
        }
    }

    void connectTo(const QUrl &blog);
    void openPost(const QString &title, const QString &words); ///< and waits until the page shows the words
    void addWords(const QString &title, const QString &words);
    void copyToOtherBlog(const QString &title);
    void refreshList();
    void startNewPost();
    void writePost(const QString &title, const QString &text);
    void upload(const QString &button); ///< presses it, and waits for the end of the upload
    XMLRPCValue publishAndFind(const QString &title);
    void checkFileInStep(const XMLRPCValue &post, const QString &status)
    {
        const QString id = post[u"post_id"].string();
        m_screen.waitFor("the file of post " + id + " to be in step with the blog", [&] {
            const QString text = contentsOf(postFile(id));
            return text.contains("<id>" + id + "</id><status>" + status + "</status>")
                && text.contains("<file_info><status></status>");
        });
    }
    QStringList accountFolders() const { return QDir(m_accounts).entryList(QDir::Dirs | QDir::NoDotAndDotDot); }
    QString postFile(const QString &id) const
    {
        for (const QString &blog : accountFolders())
            if (const QString file = m_accounts + '/' + blog + "/posts/p" + id + "/post.zalmo"; QFile::exists(file))
                return file;
        return {};
    }
    QString title(const QString &words) const { return words + ' ' + m_stamp; }

    TourOptions m_options;
    TourScreen &m_screen;
    TourBlog m_blog;
    QString m_accounts; ///< the folder of what the program keeps of its blogs
    QString m_stamp; ///< tells this run's posts from those of an earlier one
    QString m_toDelete; ///< title of the post that the last step takes away
};
