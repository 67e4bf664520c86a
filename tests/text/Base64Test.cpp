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
};

static const RegisteredTest<Base64Test> registered;
#include "Base64Test.moc"
