#include "text/Base64.h"
#include "support/TestClasses.h"

class Base64Test : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void encodes_data()
    {
        const TestTable<QByteArray, QByteArray> row({"bytes", "text"});
        row("48 bytes fill a line", QByteArray(48, 'a'), QByteArray("YWFh").repeated(16));
        row("49 bytes", QByteArray(49, 'a'), QByteArray("YWFh").repeated(16) + "\r\nYQ==");
        row("two full lines", QByteArray(96, 'a'),
            QByteArray("YWFh").repeated(16) + "\r\n" + QByteArray("YWFh").repeated(16));
    }
    void encodes()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QByteArray, text);
        QCOMPARE(Base64::encoded(bytes), text);
        QCOMPARE(Base64::encodedLength(bytes.size()), text.size());
    }

    void isReadBackAtAnyLength()
    {
        QByteArray bytes;
        for (int length = 0; length < 300; ++length) {
            const QByteArray text = Base64::encoded(bytes);
            QCOMPARE(QByteArray::fromBase64(text), bytes);
            bytes.append(char(length * 37));
        }
    }
};

static const RegisteredTest<Base64Test> registered;
#include "Base64Test.moc"
