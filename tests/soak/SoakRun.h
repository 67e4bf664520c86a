#pragma once

#include "UnsteadyBlog.h"
#include "model/PostFile.h"
#include "support/Files.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <cstdio>

/// Starts the program again and again on one home, kills it in the middle of its work, and looks each time whether
/// every post file is whole and every word that stood on the screen four seconds before is still somewhere.
class SoakRun {
public:
    SoakRun(const QString &program, quint32 seed)
        : m_program(program)
        , m_random(seed)
        , m_first("The Harbour", seed + 1)
        , m_second("The Harbour", seed + 2) // the same name, on purpose
    {
        for (UnsteadyBlog *blog : {&m_first, &m_second})
            for (int number = 1; number <= 8; ++number)
                blog->blog().addPost(
                    "Stored " + QString::number(number), "<p>What the blog has.</p>\n\nAnd more of it.");
    }

    /// Uses and kills the program for that long, then lets it come to rest. True when nothing was lost or left over.
    bool run(int seconds)
    {
        QElapsedTimer clock;
        for (clock.start(); clock.elapsed() < seconds * 1000 && m_failures < enoughFailures;)
            useAndKill(m_random.bounded(9000, 30000));
        const bool isAtRest = comeToRest();
        std::printf("%d starts, %d words, %d changes on the blogs, %d failures\n", m_starts, m_words, m_remoteChanges,
            m_failures);
        return isAtRest && m_failures == 0;
    }

private:
    /// What a kill may cost at most: the pause before an autosave, and its upper limit while typing goes on.
    static constexpr int mayBeLostMs = 4000;
    static constexpr int secondsToRest = 60;
    static constexpr int enoughFailures = 10; ///< what comes then says nothing new

    void useAndKill(int milliseconds)
    {
        QProcess process;
        start(process, "write");
        QElapsedTimer clock;
        for (clock.start(); clock.elapsed() < milliseconds && process.state() == QProcess::Running;) {
            QTest::qWait(50);
            listen(process);
            if (m_random.bounded(100) < 1)
                changeSomethingOnABlog();
        }
        if (process.state() != QProcess::Running)
            complain("the program ended by itself, code " + QString::number(process.exitCode()));
        const QDateTime killed = QDateTime::currentDateTimeUtc();
        process.kill();
        process.waitForFinished();
        listen(process);
        check(killed.addMSecs(-mayBeLostMs), "after start " + QString::number(m_starts));
    }
    bool comeToRest()
    {
        QProcess process;
        start(process, "rest");
        const bool ended = QTest::qWaitFor(
            [&] {
                listen(process);
                return process.state() == QProcess::NotRunning;
            },
            (secondsToRest + 30) * 1000);
        if (!ended)
            process.kill();
        if (!ended || process.exitCode() != 0)
            complain(ended ? "something still waits" : "the program does not end");
        check(QDateTime::currentDateTimeUtc(), "at rest");
        return ended && process.exitCode() == 0;
    }
    void start(QProcess &process, const QString &mode)
    {
        m_unread.clear();
        setCalm(true);
        process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        process.start(m_program,
            {"--writer", mode, "--home", m_home.path(), "--seed", QString::number(m_random.bounded(1u << 30)),
                "--blogs", m_first.url() + ',' + m_second.url()});
        if (!process.waitForStarted())
            qFatal("the program does not start");
        ++m_starts;
    }
    void setCalm(bool calm)
    {
        m_first.setCalm(calm);
        m_second.setCalm(calm);
    }
    void listen(QProcess &process)
    {
        m_unread += process.readAllStandardOutput();
        for (qsizetype end; (end = m_unread.indexOf('\n')) >= 0; m_unread.remove(0, end + 1)) {
            const QList<QByteArray> words = m_unread.first(end).split(' ');
            const QString word = QString::fromUtf8(words.value(1));
            if (words.first() == "seen") {
                m_seen.insert(word, QDateTime::currentDateTimeUtc());
                ++m_words;
            } else if (words.first() == "forfeit") {
                m_seen.remove(word);
            } else if (words.first() == "writing") {
                setCalm(false);
            } else {
                std::printf("program: %s\n", m_unread.first(end).constData());
            }
        }
    }
    void changeSomethingOnABlog()
    {
        FakeBlog &blog = m_random.bounded(2) ? m_first.blog() : m_second.blog();
        const QStringList ids = blog.posts.keys();
        FakeBlog::Post &post = blog.posts[ids[m_random.bounded(int(ids.size()))]];
        post.content += "<p>Somebody else wrote " + QString::number(++m_remoteChanges) + "</p>";
        post.modified = std::max(UnsteadyBlog::thisSecond(), post.modified.addSecs(1));
    }
    void check(const QDateTime &until, const QString &when)
    {
        const QString accounts = m_home.path() + "/data/zalmo/accounts";
        for (const QString &file : filesBelow(accounts))
            if (file.endsWith(".zalmo") && !PostFile::fromData(contentsOf(accounts + '/' + file)).isWhole)
                complain(when + ": damaged: " + file);
        const QByteArray all = everythingKept();
        for (const QString &word : m_seen.keys()) {
            if (m_seen[word] > until) {
                m_seen.remove(word); // within what a kill may cost: not asked for again
            } else if (!all.contains(word.toUtf8())) {
                complain(when + ": lost: " + word);
                m_seen.remove(word);
            }
        }
    }
    void complain(const QString &what)
    {
        ++m_failures;
        std::printf("%s\n", qPrintable(what));
        std::fflush(stdout);
    }
    QByteArray everythingKept() const
    {
        QByteArray all;
        const QString accounts = m_home.path() + "/data/zalmo/accounts";
        for (const QString &file : filesBelow(accounts))
            if (file.endsWith(".zalmo"))
                all += contentsOf(accounts + '/' + file);
        for (const UnsteadyBlog *blog : {&m_first, &m_second})
            for (const FakeBlog::Post &post : const_cast<UnsteadyBlog *>(blog)->blog().posts)
                all += post.title.toUtf8() + post.content.toUtf8();
        return all;
    }

    QString m_program;
    QRandomGenerator m_random;
    QTemporaryDir m_home;
    UnsteadyBlog m_first, m_second;
    QHash<QString, QDateTime> m_seen; ///< when each word stood on the screen
    QByteArray m_unread;
    int m_starts = 0;
    int m_words = 0;
    int m_remoteChanges = 0;
    int m_failures = 0;
};
