#include "UnsteadyBlog.h"

#include <QTimer>

namespace {
constexpr int longestDelayMs = 4000;
}

UnsteadyBlog::UnsteadyBlog(const QString &title, quint32 seed)
    : m_random(seed)
{
    blog().title = title;
    blog().now = thisSecond().addSecs(-3600);
}

void UnsteadyBlog::setCalm(bool calm)
{
    m_isCalm = calm;
    if (calm)
        closeConnections();
}

QDateTime UnsteadyBlog::thisSecond()
{
    return QDateTime::fromSecsSinceEpoch(QDateTime::currentSecsSinceEpoch(), Qt::UTC);
}

UnsteadyBlog::Mood UnsteadyBlog::nextMood()
{
    if (m_isCalm || m_random.bounded(100) < 65)
        return Mood::Good;
    static constexpr Mood bad[] = {Mood::Late, Mood::Late, Mood::Late, Mood::Unheard, Mood::Broken, Mood::Silent,
        Mood::Garbled, Mood::Empty, Mood::Cut, Mood::ServerError};
    return bad[m_random.bounded(int(std::size(bad)))];
}

void UnsteadyBlog::respond(QTcpSocket *socket, const FakeRequest &request)
{
    const Mood mood = nextMood();
    if (mood == Mood::Unheard)
        return socket->abort();
    blog().now = std::max(blog().now, thisSecond());
    FakeAnswer answer = mood == Mood::ServerError ? FakeAnswer{500, "<h1>Out of order</h1>"} : blog().answer(request);
    switch (mood) {
    case Mood::Broken: // done, but nobody hears of it
        return socket->abort();
    case Mood::Silent:
        return;
    case Mood::Garbled:
        answer.body = "<html><body>Warning: something in line 12</body></html>";
        break;
    case Mood::Empty:
        answer.body.clear();
        break;
    case Mood::Cut:
        answer.body.truncate(answer.body.size() / 2);
        break;
    default:
        break;
    }
    const int delay = mood == Mood::Late ? int(m_random.bounded(longestDelayMs)) : 0;
    QTimer::singleShot(delay, socket, [socket, answer] { send(socket, answer); });
}
