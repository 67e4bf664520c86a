#include "AppFixture.h"

namespace {

/// The pages of one host, by address.
struct Pages : FakeHost {
    FakeAnswer answer(const FakeRequest &request) override
    {
        if (request.operation == QNetworkAccessManager::GetOperation)
            asked.append(request.request.url().toString());
        return pages.value(request.request.url().toString(), FakeAnswer{404});
    }
    QMap<QString, FakeAnswer> pages;
    QStringList asked;
};

const QByteArray picture = "\x89PNG picture";

} // namespace

class FaviconTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void asksTheBlogItself_data()
    {
        using Map = QMap<QString, FakeAnswer>;
        const TestTable<Map, bool, QStringList> row({"pages", "isFound", "asked"});
        const QString first = u"http://site.test/blog/?favicon=1"_qs, second = u"http://site.test/favicon.ico"_qs;
        const QString icon = u"http://site.test/uploads/icon.png"_qs, far = u"http://far.test/icon.png"_qs;
        row("at once", {{first, {200, picture}}}, true, {first});
        row("sent on", {{first, {.status = 302, .location = icon}}, {icon, {200, picture}}}, true, {first, icon});
        row("the old place", {{second, {200, picture}}}, true, {first, second});
        row("not to another host", {{first, {.status = 302, .location = far}}}, false, {first, second});
        row("in a circle", {{first, {.status = 302, .location = first}}}, false, {first, first, first, first, second});
        row("pages instead of pictures", {{first, {200, "<html>sorry"}}, {second, {200, "<svg/>"}}}, false,
            {first, second});
        row("too large", {{first, {200, picture + QByteArray(2'000'000, ' ')}}}, false, {first, second});
    }

    void asksTheBlogItself()
    {
        using Map = QMap<QString, FakeAnswer>;
        QFETCH(Map, pages);
        QFETCH(bool, isFound);
        AppFixture fixture;
        Pages site, far;
        site.pages = pages;
        far.pages = {{u"http://far.test/icon.png"_qs, {200, picture}}};
        fixture.network.addHost(u"site.test"_qs, site);
        fixture.network.addHost(u"far.test"_qs, far);
        fixture.seedAccount(u"Blog"_qs, u"http://site.test/blog"_qs, QString());
        fixture.launch();
        const QString path = fixture.files.faviconPathWithBlogName(u"Blog"_qs);
        QTRY_VERIFY(QFile::exists(path));
        QTEST(site.asked, "asked");
        QCOMPARE(far.asked, QStringList());
        QCOMPARE(contentsOf(path) == picture, isFound);
        QVERIFY(contentsOf(path).startsWith("\x89PNG")); // the built-in one, so that nobody is asked again
        if (isFound)
            QCOMPARE(fixture.selector.items.first().imagePath, path);
    }
};

static const RegisteredTest<FaviconTest> registered;

#include "FaviconTest.moc"
