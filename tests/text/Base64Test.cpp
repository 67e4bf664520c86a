#include "text/Base64.h"
#include "support/TestClasses.h"

#include <QTest>

class Base64Test : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void encodes_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QByteArray>("text");
        QTest::newRow("48 bytes fill a line") << QByteArray(48, 'a') << QByteArray("YWFh").repeated(16);
        QTest::newRow("49 bytes") << QByteArray(49, 'a') << QByteArray("YWFh").repeated(16) + "\r\nYQ==";
        QTest::newRow("two full lines") << QByteArray(96, 'a')
                                        << QByteArray("YWFh").repeated(16) + "\r\n" + QByteArray("YWFh").repeated(16);
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
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("without padding") << QByteArray("Zm9vZg") << QByteArray("foof");
        QTest::newRow("three characters at the end") << QByteArray("Zm8") << QByteArray("fo");
        QTest::newRow("a single leftover is dropped") << QByteArray("Zm9vZ") << QByteArray("foo");
        QTest::newRow("foreign characters between") << QByteArray(" Z\nm-9\xc3\xbcv ") << QByteArray("foo");
        QTest::newRow("padding in the middle") << QByteArray("Zg==Zg==") << Base64::decoded("ZgZg");
        QTest::newRow("only rubbish") << QByteArray("\x00=!*", 4) << QByteArray();
    }
    void decodesLooseText()
    {
        QFETCH(QByteArray, text);
        QFETCH(QByteArray, bytes);
        QCOMPARE(Base64::decoded(text), bytes);
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
