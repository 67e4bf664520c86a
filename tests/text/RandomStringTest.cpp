#include "text/RandomString.h"
#include "support/TestClasses.h"

#include <QRegularExpression>

class RandomStringTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void isAnother()
    {
        const QString one = genRandString(8);
        QVERIFY(QRegularExpression(u"^[a-zA-Z0-9]{8}$"_qs).match(one).hasMatch());
        QVERIFY(genRandString(8) != one);
    }
};

static const RegisteredTest<RandomStringTest> registered;
#include "RandomStringTest.moc"
