#pragma once

#include "UnsteadyBlog.h"

#include <QDateTime>
#include <QHash>
#include <QProcess>
#include <QTemporaryDir>

/// Starts the program again and again on one home, kills it in the middle of its work, and looks each time whether
/// every post file is whole and every word that stood on the screen four seconds before is still somewhere.
class SoakRun {
public:
    SoakRun(const QString &program, quint32 seed);

    /// Uses and kills the program for that long, then lets it come to rest. True when nothing was lost or left over.
    bool run(int seconds);

private:
    void useAndKill(int milliseconds);
    bool comeToRest();
    void start(QProcess &process, const QString &mode);
    void setCalm(bool calm);
    void listen(QProcess &process);
    void changeSomethingOnABlog();
    void check(const QDateTime &until, const QString &when);
    void complain(const QString &what);
    QByteArray everythingKept() const;

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
