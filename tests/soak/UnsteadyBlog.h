#pragma once

#include "support/ServedBlog.h"

#include <QRandomGenerator>

/// A pretended blog that answers late, wrongly or not at all from time to time.
class UnsteadyBlog : public ServedBlog {
public:
    UnsteadyBlog(const QString &title, quint32 seed);

    /// A calm blog answers every call at once and well; what waited when it became calm is let go of.
    void setCalm(bool calm);
    /// The blog's time goes on with the world's, so that its dates compare with those of the writer, and in seconds.
    static QDateTime thisSecond();

protected:
    void respond(QTcpSocket *socket, const FakeRequest &request) override;

private:
    enum class Mood { Good, Late, Unheard, Broken, Silent, Garbled, Empty, Cut, ServerError };
    Mood nextMood();

    QRandomGenerator m_random;
    bool m_isCalm = true;
};
