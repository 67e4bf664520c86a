#include "WindowFixture.h"
#include "widgets/ZLSheetHost.h"

#include <QApplication>
#include <QLineEdit>

namespace {

class SheetFixture : public WindowFixture {
public:
    explicit SheetFixture(bool withBlog = false)
    {
        if (withBlog)
            seedPosts({});
        reachability.reachable = !withBlog;
        launch();
        show();
    }

    QString attached() const
    {
        const ZLSheet *sheet = window->sheets().attachedSheet();
        return sheet ? sheet->objectName() : u"-"_qs;
    }
    void press(int key) { QTest::keyClick(QApplication::focusWidget(), Qt::Key(key)); }
    void type(const QString &field, const QString &text)
    {
        QVERIFY(find<QLineEdit>(field));
        QTRY_VERIFY(find<QLineEdit>(field)->hasFocus());
        QTest::keyClicks(find<QLineEdit>(field), text);
    }
};

} // namespace

class SheetsTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void connectsABlogByKeyboard()
    {
        SheetFixture f;
        f.app->showMainApplicationWindow();
        QCOMPARE(f.attached(), u"introSheet"_qs);
        f.type(u"blogURLField"_qs, u"not an address"_qs);
        f.press(Qt::Key_Return);
        QCOMPARE(f.attached(), u"introSheet"_qs); // without a word
        f.find<QLineEdit>(u"blogURLField"_qs)->setText(f.blog.url());
        f.press(Qt::Key_Return);
        QCOMPARE(f.attached(), u"loginSheet"_qs);

        f.type(u"usernameField"_qs, f.blog.user);
        f.press(Qt::Key_Tab);
        QCOMPARE(f.find<QLineEdit>(u"passwordField"_qs)->echoMode(), QLineEdit::Password);
        f.press(Qt::Key_Return); // without a password
        QCOMPARE(f.attached(), u"loginErrorSheet"_qs);
        QCOMPARE(f.find<QLineEdit>(u"usernameField"_qs)->text(), f.blog.user);
        f.type(u"passwordField"_qs, f.blog.password);
        f.press(Qt::Key_Return);
        QTRY_COMPARE(f.attached(), u"blogIsConnectedSheet"_qs);
        QTRY_COMPARE(f.attached(), u"getStartedPanel"_qs);
        f.press(Qt::Key_Return);
        QCOMPARE(f.attached(), u"-"_qs);
        QCOMPARE(f.app->getBlogName(), f.blog.title);
        f.app->newAccount();
        QCOMPARE(f.find<QLineEdit>(u"blogURLField"_qs)->text(), QString());
    }

    void cancelsAnIntroOnlyWhenThereIsABlog()
    {
        SheetFixture alone;
        alone.app->newAccount();
        alone.press(Qt::Key_Escape);
        QCOMPARE(alone.attached(), u"introSheet"_qs);

        SheetFixture f(true);
        f.app->newAccount();
        f.press(Qt::Key_Escape);
        QCOMPARE(f.attached(), u"-"_qs);
        QVERIFY(!f.prompts().isShowingIntroWindow());
    }

    void returnInThePasswordFieldIsANewConnection()
    {
        SheetFixture f(true);
        f.prompts().showLoginSheet(f.app->wordpressService(), f.blog.user, u"Ada"_qs);
        QCOMPARE(f.attached(), u"loginSheet"_qs);
        f.type(u"passwordField"_qs, f.blog.password);
        f.press(Qt::Key_Return);
        QTRY_COMPARE(f.app->numberOfConnectedAccounts(), 2);
    }

    void givesUpConnecting()
    {
        SheetFixture f;
        f.blog.answerLate(u"wp.getOptions"_qs);
        f.app->connectToBlogURL(f.blog.url());
        f.app->didEntryUsernameAndPassword(f.blog.user, f.blog.password);
        QTRY_COMPARE(f.attached(), u"connectingSheet"_qs);
        f.press(Qt::Key_Return); // a second Return changes nothing
        QCOMPARE(f.attached(), u"connectingSheet"_qs);
        f.press(Qt::Key_Escape);
        QCOMPARE(f.attached(), u"introSheet"_qs);
    }

    void answersAlerts_data()
    {
        const TestTable<QStringList, int, QList<int>, int> row({"buttons", "defaultButton", "keys", "answer"});
        const QStringList cancel{u"Ok"_qs, u"Cancel"_qs};
        row("return", cancel, 0, QList<int>{Qt::Key_Return}, 0);
        row("return where cancel is the default", cancel, 1, QList<int>{Qt::Key_Return}, 1);
        row("escape is cancel", cancel, 0, QList<int>{Qt::Key_Escape}, 1);
        row("escape without cancel", {u"Ok"_qs, u"Need Help?"_qs}, 0, QList<int>{Qt::Key_Escape}, 0);
        row("tab to the second", cancel, 0, QList<int>{Qt::Key_Tab, Qt::Key_Return}, 1);
        row("tab around", cancel, 0, QList<int>{Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Space}, 0);
        row("the window goes", cancel, 0, QList<int>{}, -1);
    }

    void answersAlerts()
    {
        QFETCH(QStringList, buttons);
        QFETCH(int, defaultButton);
        QFETCH(QList<int>, keys);
        SheetFixture f(true);
        int answer = -2;
        f.prompts().ask(u"Message"_qs, u"Text"_qs, buttons, defaultButton).then([&answer](int index) {
            answer = index;
        });
        for (const int key : keys)
            f.press(key);
        if (keys.isEmpty()) {
            QTRY_VERIFY(!f.app->wordpressService()->isSyncing()); // the controller talks to the window
            f.window.reset();
        }
        QTRY_VERIFY(answer != -2);
        QTEST(answer, "answer");
    }

    void showsAlertsBeforeSheets()
    {
        SheetFixture f(true);
        f.prompts().alert(u"First"_qs);
        f.prompts().showIntro();
        f.prompts().alert(u"Second"_qs);
        f.prompts().alert(u"First"_qs); // the same again, as from several requests of one sync
        QStringList said;
        for (int turn = 0; turn < 5 && !f.textOf(u"alertMessage"_qs).isNull(); ++turn) {
            said.append(f.textOf(u"alertMessage"_qs));
            f.press(Qt::Key_Return);
        }
        QCOMPARE(said, QStringList({u"First"_qs, u"Second"_qs}));
        QCOMPARE(f.attached(), u"introSheet"_qs);
    }

    void keepsTheButtonOfALongAlert()
    {
        SheetFixture f(true);
        f.window->resize(f.window->minimumSize());
        f.prompts().alert(u"A fault. "_qs.repeated(2000));
        const QWidget *button = QApplication::focusWidget();
        const QRect place(button->mapTo(f.window.get(), QPoint()), button->size());
        QVERIFY(f.window->rect().contains(place));
        QVERIFY(place.height() >= button->fontMetrics().height());
        QVERIFY(f.textOf(u"alertMessage"_qs).endsWith(u'…'));
    }

    void keepsTheFocusInside()
    {
        SheetFixture f(true);
        auto *search = f.find<QLineEdit>(u"searchPostsField"_qs);
        search->setFocus();
        f.prompts().showLoginSheet(nullptr, QString(), u"blog.test"_qs);
        const ZLSheet *sheet = f.window->sheets().attachedSheet();
        for (int turn = 0; turn < 5; ++turn) {
            QVERIFY(sheet->isAncestorOf(QApplication::focusWidget()));
            f.press(Qt::Key_Tab);
        }
        search->setFocus();
        QVERIFY(sheet->isAncestorOf(QApplication::focusWidget()));
        f.prompts().closeLoginSheet();
        QVERIFY(search->hasFocus());
    }
};

static const RegisteredTest<SheetsTest> registered;

#include "SheetsTest.moc"
