#pragma once

#include "support/ServedBlog.h"

#include <QRandomGenerator>
#include <QTimer>

/// A pretended blog that answers late, wrongly or not at all from time to time.
class UnsteadyBlog : public ServedBlog {
public:
    UnsteadyBlog(const QString &title, quint32 seed)
        : m_random(seed)
    {
        blog().title = title;
        blog().now = thisSecond().addSecs(-3600);
    }

    /// The blog's time goes on with the world's, so that its dates compare with those of the writer, and in seconds.
    static QDateTime thisSecond() { return QDateTime::fromSecsSinceEpoch(QDateTime::currentSecsSinceEpoch(), Qt::UTC); }
    /// A calm blog answers every call at once and well; what waited when it became calm is let go of.
    void setCalm(bool calm)
    {
        m_isCalm = calm;
        if (calm)
            closeConnections();
    }

protected:
    void respond(QTcpSocket *socket, const FakeRequest &request) override
    {
        const Mood mood = nextMood();
        if (mood == Mood::Unheard)
            return socket->abort();
        blog().now = std::max(blog().now, thisSecond());
        FakeAnswer answer;
        if (mood == Mood::ServerError)
            answer = {.status = 500, .body = "<h1>Out of order</h1>"};
        else
            answer = blog().answer(request);
        if (mood == Mood::Broken) // done, but nobody hears of it
            return socket->abort();
        if (mood == Mood::Silent)
            return;
        if (mood == Mood::Garbled)
            answer.body = "<html><body>Warning: something in line 12</body></html>";
        if (mood == Mood::Cut)
            answer.body.truncate(int(m_random.bounded(2)) * answer.body.size() / 2); // to half of it, or to nothing
        const int delay = mood == Mood::Late ? int(m_random.bounded(4000)) : 0; // ms
        QTimer::singleShot(delay, socket, [socket, answer] { send(socket, answer); });
    }

private:
    enum class Mood { Good, Late, Unheard, Broken, Silent, Garbled, Cut, ServerError };
    Mood nextMood()
    {
        if (m_isCalm || m_random.bounded(100) < 65)
            return Mood::Good;
        static constexpr Mood bad[] = {Mood::Late, Mood::Late, Mood::Late, Mood::Unheard, Mood::Broken, Mood::Silent,
            Mood::Garbled, Mood::Cut, Mood::Cut, Mood::ServerError};
        return bad[m_random.bounded(int(std::size(bad)))];
    }

    QRandomGenerator m_random;
    bool m_isCalm = true;
};
