#include "support/FakeNetwork.h"

#include <QLocale>

/// A reply that comes on a later turn of the event loop, or when it is let go.
class FakeReply : public QNetworkReply {
public:
    FakeReply(const FakeRequest &asked, const FakeAnswer &answer, QObject *parent)
        : QNetworkReply(parent)
        , m_answer(answer)
        , m_sent(asked.body.size())
    {
        setRequest(asked.request);
        setUrl(asked.request.url());
        setOperation(asked.operation);
        open(QIODevice::ReadOnly);
        if (!answer.held)
            QMetaObject::invokeMethod(
                this, [this] { deliver(); }, Qt::QueuedConnection);
    }

    void deliver()
    {
        if (isFinished())
            return;
        if (m_sent > 0)
            Q_EMIT uploadProgress(m_sent, m_sent);
        if (m_answer.error != NoError)
            fail(m_answer.error);
        else
            succeed();
    }

    void abort() override
    {
        if (!isFinished())
            fail(OperationCanceledError);
    }

    qint64 bytesAvailable() const override { return m_arrived.size() + QNetworkReply::bytesAvailable(); }
    bool isSequential() const override { return true; }

protected:
    qint64 readData(char *data, qint64 maximum) override
    {
        const qint64 count = qMin(maximum, qint64(m_arrived.size()));
        std::copy_n(m_arrived.constData(), count, data);
        m_arrived.remove(0, count);
        return count;
    }

private:
    void fail(NetworkError error)
    {
        setError(error, u"pretended failure %1"_qs.arg(int(error)));
        setFinished(true);
        Q_EMIT errorOccurred(error);
        Q_EMIT finished();
    }

    void succeed()
    {
        setAttribute(QNetworkRequest::HttpStatusCodeAttribute, m_answer.status);
        setHeader(QNetworkRequest::ContentTypeHeader, "text/xml");
        if (m_answer.date.isValid())
            setRawHeader("Date",
                QLocale::c().toString(m_answer.date, QStringLiteral("ddd, dd MMM yyyy hh:mm:ss 'GMT'")).toLatin1());
        setHeader(QNetworkRequest::ContentLengthHeader, m_answer.body.size());
        if (!m_answer.location.isEmpty())
            setAttribute(QNetworkRequest::RedirectionTargetAttribute, QUrl(m_answer.location));
        m_arrived = m_answer.body;
        if (m_answer.status >= 400)
            setError(m_answer.status == 404 ? ContentNotFoundError : UnknownContentError, u"status"_qs);
        const QPointer<FakeReply> self(this); // whoever hears of the head may end the transfer
        Q_EMIT metaDataChanged();
        if (self && !m_arrived.isEmpty() && !isFinished())
            Q_EMIT downloadProgress(m_arrived.size(), m_arrived.size());
        if (self && !m_arrived.isEmpty() && !isFinished())
            Q_EMIT readyRead();
        if (!self || isFinished())
            return;
        setFinished(true);
        Q_EMIT finished();
    }

    FakeAnswer m_answer;
    QByteArray m_arrived;
    qint64 m_sent;
};

QNetworkReply *FakeNetwork::createRequest(Operation operation, const QNetworkRequest &request, QIODevice *outgoing)
{
    const FakeRequest asked{operation, request, outgoing ? outgoing->readAll() : QByteArray()};
    FakeHost *host = m_hosts.value(request.url().host());
    FakeAnswer answer;
    if (host)
        answer = host->answer(asked);
    else
        answer.error = QNetworkReply::HostNotFoundError;
    auto *reply = new FakeReply(asked, answer, this);
    if (answer.held)
        m_held.append(reply);
    return reply;
}

void FakeNetwork::release()
{
    for (const QPointer<FakeReply> &reply : std::exchange(m_held, {})) {
        if (reply)
            reply->deliver();
    }
}

int FakeNetwork::heldCount() const
{
    return int(
        std::count_if(m_held.begin(), m_held.end(), [](const auto &reply) { return reply && !reply->isFinished(); }));
}
