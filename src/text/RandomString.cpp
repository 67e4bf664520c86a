#include "text/RandomString.h"

#include <QRandomGenerator>
#include <QUuid>

QString genRandString(int length)
{
    static constexpr char16_t alphabet[] = u"abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789";
    QString result(length, Qt::Uninitialized);
    for (QChar &c : result)
        c = alphabet[QRandomGenerator::global()->bounded(int(std::size(alphabet)) - 1)];
    return result;
}

QString stringByGeneratingUUID()
{
    return QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper();
}
