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
        QCOMPARE(Base64::decoded(text), bytes);
    }

    void decodesLooseText_data()
    {
        const TestTable<QByteArray, QByteArray> row({"text", "bytes"});
        row("without padding", "Zm9vZg", "foof");
        row("three characters at the end", "Zm8", "fo");
        row("a single leftover is dropped", "Zm9vZ", "foo");
        row("foreign characters between", " Z\nm-9\xc3\xbcv ", "foo");
        row("padding in the middle", "Zg==Zg==", Base64::decoded("ZgZg"));
        row("only rubbish", QByteArray("\x00=!*", 4), {});
    }
    void decodesLooseText()
    {
        QFETCH(QByteArray, text);
        QTEST(Base64::decoded(text), "bytes");
    }

    void agreesWithItselfAtAnyLength()
    {
        QByteArray bytes;
        for (int length = 0; length < 300; ++length) {
            const QByteArray text = Base64::encoded(bytes);
            QCOMPARE(QByteArray::fromBase64(text), bytes);
            QCOMPARE(Base64::decoded(text), bytes);
            bytes.append(char(length * 37));
        }
    }
};

static const RegisteredTest<Base64Test> registered;
#include "Base64Test.moc"
