#include "platform/SingleInstance.h"

#include "platform/ZLLog.h"

#include <QLocalSocket>

SingleInstance::SingleInstance(const QString &folder, QObject *parent)
    : QObject(parent)
    , m_isGuarding(!folder.isNull())
    , m_lock(folder + QStringLiteral("/zalmo.lock"))
    , m_socketPath(folder + QStringLiteral("/zalmo.socket"))
{
    m_lock.setStaleLockTime(0); // however long the program runs
    m_server.setSocketOptions(QLocalServer::UserAccessOption);
    connect(&m_server, &QLocalServer::newConnection, this, [this] {
        while (QLocalSocket *caller = m_server.nextPendingConnection())
            delete caller; // that it called says all
        Q_EMIT wasAskedToComeToFront();
    });
}

bool SingleInstance::acquire()
{
    if (!m_isGuarding)
        return true;
    if (!m_lock.tryLock() && m_lock.error() == QLockFile::LockFailedError) {
        askOtherToComeToFront();
        return false;
    }
    // Where no lock can be written, nothing else can be either: that is said when something is to be saved.
    if (m_lock.isLocked())
        listen();
    return true;
}

void SingleInstance::listen()
{
    QLocalServer::removeServer(m_socketPath); // of a program that crashed
    if (!m_server.listen(m_socketPath))
        ZLLog(QStringLiteral("%1: %2").arg(m_socketPath, m_server.errorString()));
}

void SingleInstance::askOtherToComeToFront() const
{
    constexpr int patienceMs = 2000;
    QLocalSocket socket;
    socket.connectToServer(m_socketPath);
    if (!socket.waitForConnected(patienceMs))
        ZLLog(QStringLiteral("Zalmo is running already, and does not answer: %1").arg(socket.errorString()));
}
