#include "app/BlogNames.h"

#include "app/BlogAddress.h"

#include <QRegularExpression>

namespace {

constexpr int mostBytes = 255; // of a file name
constexpr int mostOfHost = 60;

/// What names the folder, roughly: a file system may not tell the cases apart.
QString folded(const QString &name)
{
    return ZLFileManager::folderNameForAlias(name).toCaseFolded();
}

/// The name with `suffix`, with as much of the name as a folder can be called.
QString fitting(QString name, const QString &suffix)
{
    while (name.toUtf8().size() + suffix.toUtf8().size() > mostBytes)
        name.chop(name.back().isLowSurrogate() ? 2 : 1);
    return name + suffix;
}

bool isTaken(const QString &name, const AccountPtr &account, const QList<AccountPtr> &accounts)
{
    return std::any_of(accounts.begin(), accounts.end(),
        [&](const AccountPtr &other) { return other != account && folded(other->alias()) == folded(name); });
}

} // namespace

QString BlogNames::oneLine(const QString &name)
{
    static const QRegularExpression unseen(
        u"[\\p{Cc}\\x{061C}\\x{200E}\\x{200F}\\x{202A}-\\x{202E}\\x{2066}-\\x{2069}]"_qs);
    return QString(name).replace(unseen, u" "_qs).simplified();
}

QString BlogNames::freeName(const QString &wanted, const AccountPtr &account, const QList<AccountPtr> &accounts)
{
    QString name = fitting(wanted, {});
    const QString host = BlogAddress::host(account->url).left(mostOfHost);
    for (int number = 1; isTaken(name, account, accounts); ++number)
        name = fitting(wanted, number == 1 ? u" (%1)"_qs.arg(host) : u" (%1, %2)"_qs.arg(host).arg(number));
    return name;
}

bool BlogNames::separate(const QList<AccountPtr> &accounts)
{
    bool isChanged = false;
    for (qsizetype index = 0; index < accounts.size(); ++index) {
        const AccountPtr &account = accounts[index];
        const QString name = freeName(account->alias(), account, accounts.first(index));
        if (name == account->alias())
            continue;
        account->blog_name = name;
        isChanged = true;
    }
    return isChanged;
}
