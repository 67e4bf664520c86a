#include "text/Base64.h"
#include "support/TestClasses.h"

class Base64Test : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void encodesInLines()
    {
        QByteArray bytes;
        for (int length = 0; length < 300; ++length) {
            QByteArrayList lines; // of 48 bytes each
            for (int at = 0; at < length; at += 48)
                lines.append(bytes.mid(at, 48).toBase64());
            const QByteArray text = lines.join("\r\n");
            QCOMPARE(Base64::encoded(bytes), text);
            QCOMPARE(Base64::encodedLength(length), text.size());
            QCOMPARE(QByteArray::fromBase64(text), bytes);
            bytes.append(char(length * 37));
        }
    }

    void decodesLooseText()
    {
        QCOMPARE(Base64::decoded("Zm9vZg"), QByteArray("foof")); // without padding
        QCOMPARE(Base64::decoded("Zm8"), QByteArray("fo"));
        QCOMPARE(Base64::decoded("Zm9vZ"), QByteArray("foo")); // a single leftover is dropped
        QCOMPARE(Base64::decoded(" Z\nm-9\xc3\xbcv "), QByteArray("foo"));
        QCOMPARE(Base64::decoded("Zg==Zg=="), Base64::decoded("ZgZg"));
        QCOMPARE(Base64::decoded(QByteArray("\x00=!*", 4)), QByteArray());
    }
};

static const RegisteredTest<Base64Test> registered;
#include "Base64Test.moc"
