#pragma once

#include <QIODevice>

/// A body that can be read once. The network layer sends a POST again by itself when a kept connection is closed before
/// the answer, and the host may have carried it out already; what cannot be rewound, it cannot send again.
class OneTimeBody : public QIODevice {
    Q_OBJECT
public:
    explicit OneTimeBody(const QByteArray &bytes);

    bool isSequential() const override { return true; }
    bool seek(qint64) override { return false; }
    qint64 bytesAvailable() const override { return m_bytes.size() - m_read + QIODevice::bytesAvailable(); }

protected:
    qint64 readData(char *data, qint64 maximum) override;
    qint64 writeData(const char *, qint64) override { return -1; }

private:
    const QByteArray m_bytes;
    qint64 m_read = 0;
};
