#pragma once

#include <QLocalServer>
#include <QLockFile>
#include <QObject>

/// One program for each data directory: two would write over each other's accounts and posts.
class SingleInstance : public QObject {
    Q_OBJECT
public:
    /// `folder` is the data directory, where the lock lies. Null: there is nothing to guard.
    explicit SingleInstance(const QString &folder, QObject *parent = nullptr);

    /// False: another program works there. It has been asked to come to the front. The lock of one that crashed does
    /// not count.
    bool acquire();

Q_SIGNALS:
    void wasAskedToComeToFront(); ///< by a program that could not acquire

private:
    void listen();
    void askOtherToComeToFront() const;

    bool m_isGuarding;
    QLockFile m_lock;
    QString m_socketPath;
    QLocalServer m_server;
};
