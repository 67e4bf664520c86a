#include "WindowFixture.h"
#include "mainwindow/ConnectionSheets.h"
#include "widgets/ZLSheetHost.h"

#include <QApplication>
#include <QLabel>
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
        QTRY_VERIFY(f.find<QLineEdit>(u"blogURLField"_qs) && f.find<QLineEdit>(u"blogURLField"_qs)->hasSelectedText());
        QCOMPARE(f.attached(), u"introSheet"_qs); // without a word
        f.find<QLineEdit>(u"blogURLField"_qs)->setText(f.blog.url());
        f.press(Qt::Key_Return);
        QTRY_COMPARE(f.attached(), u"loginSheet"_qs);

        f.type(u"usernameField"_qs, f.blog.user);
        f.press(Qt::Key_Return);
        QVERIFY(f.find<QLineEdit>(u"passwordField"_qs)->hasFocus());
        QCOMPARE(f.find<QLineEdit>(u"passwordField"_qs)->echoMode(), QLineEdit::Password);
        f.press(Qt::Key_Return); // without a password
        QTRY_COMPARE(f.attached(), u"loginErrorSheet"_qs);
        QCOMPARE(f.find<QLineEdit>(u"usernameField"_qs)->text(), f.blog.user);
        f.type(u"passwordField"_qs, f.blog.password);
        f.press(Qt::Key_Return);
        QTRY_COMPARE(f.attached(), u"blogIsConnectedSheet"_qs);
        QTRY_COMPARE(f.attached(), u"getStartedPanel"_qs);
        f.press(Qt::Key_Return);
        QCOMPARE(f.attached(), u"-"_qs);
        QCOMPARE(f.app->currentBlog().blogName(), f.blog.title);
        f.app->connection().newAccount();
        QCOMPARE(f.find<QLineEdit>(u"blogURLField"_qs)->text(), QString());
    }

    void cancelsAnIntroOnlyWhenThereIsABlog()
    {
        SheetFixture alone;
        alone.app->connection().newAccount();
        alone.press(Qt::Key_Escape);
        QCOMPARE(alone.attached(), u"introSheet"_qs);

        SheetFixture f(true);
        f.app->connection().newAccount();
        f.press(Qt::Key_Escape);
        QCOMPARE(f.attached(), u"-"_qs);
    }

    /// By Return in either field and by the button, for the blog of the sheet and no other.
    void logsInAgain_data()
    {
        QTest::addColumn<QString>("from");
        QTest::newRow("return in the password field") << u"passwordField"_qs;
        QTest::newRow("return in the user name field") << u"usernameField"_qs;
    }

    void logsInAgain()
    {
        QFETCH(QString, from);
        SheetFixture f(true);
        const AccountPtr account = f.app->currentBlog().selectedAccount();
        f.app->logins().askForLogin(account);
        QCOMPARE(f.attached(), u"loginSheet"_qs);
        f.type(u"passwordField"_qs, u"wrong"_qs);
        f.press(Qt::Key_Return);
        QTRY_COMPARE(f.attached(), u"loginErrorSheet"_qs);
        f.type(u"passwordField"_qs, f.blog.password); // in place of what was refused
        f.find<QLineEdit>(from)->setFocus();
        f.press(Qt::Key_Return);
        QTRY_COMPARE(f.attached(), u"-"_qs);
        QCOMPARE(f.app->currentBlog().wordpressService()->password, f.blog.password);
        QCOMPARE(f.app->currentBlog().accounts(), QList<AccountPtr>{account});
    }

    /// Whatever name a blog gives itself.
    void showsWhichHostGetsThePassword()
    {
        const QString name = u"B\nb.example \u2029\u202E"_qs + u"more "_qs.repeated(90);
        using Question = LoginQuestion;
        for (const auto reason : {Question::Wanted, Question::StoredRefused, Question::TypedRefused}) {
            const ZLWordpressLoginWindow sheet({name, u"b."_qs.repeated(60) + u"a.example"_qs, {}, {}, reason});
            QStringList lines;
            for (const QLabel *label : sheet.findChildren<QLabel *>(QString(), Qt::FindDirectChildrenOnly))
                lines += label->text().split(u'\n');
            QCOMPARE(lines.size(), reason == Question::Wanted ? 3 : 4); // with the heading
            QCOMPARE(lines.contains(u"The stored password was refused"), reason == Question::StoredRefused);
            QVERIFY(lines.at(lines.size() - 2).endsWith(u"b.a.example"));
            QVERIFY(lines.last().startsWith(u"B b.example more more") && lines.last().endsWith(u'…'));
        }
    }

    /// One that comes later takes neither the front nor the keys.
    void showsSheetsInTurn()
    {
        SheetFixture f;
        QStringList typed;
        for (const QString &host : {u"b.example"_qs, u"a.example"_qs})
            f.prompts().askForLogin({QString(), host, u"ada"_qs, {}}).then([&](const std::optional<Login> &login) {
                typed.append(login ? host + u' ' + login->password : QString());
            });
        for (const QString &password : {u"for b"_qs, u"for a"_qs}) {
            f.type(u"passwordField"_qs, password);
            f.press(Qt::Key_Return);
        }
        QTRY_COMPARE(typed, QStringList({u"b.example for b"_qs, u"a.example for a"_qs}));
    }

    void givesUpConnecting()
    {
        SheetFixture f;
        f.blog.answerLate(u"system.listMethods"_qs);
        f.app->connection().connectToBlogURL(f.blog.url());
        QTRY_COMPARE(f.attached(), u"connectingSheet"_qs);
        f.press(Qt::Key_Return); // a second Return changes nothing
        QCOMPARE(f.attached(), u"connectingSheet"_qs);
        f.press(Qt::Key_Escape);
        QTRY_COMPARE(f.attached(), u"introSheet"_qs);
        QCOMPARE(f.find<QLineEdit>(u"blogURLField"_qs)->text(), f.blog.url());
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
            QTRY_VERIFY(!f.app->currentBlog().wordpressService()->isSyncing()); // the controller talks to the window
            f.window.reset();
        }
        QTRY_VERIFY(answer != -2);
        QTEST(answer, "answer");
    }

    void asksAboutAConflict_data()
    {
        const TestTable<bool, QList<int>, ConflictAnswer> row({"blogIsThere", "keys", "answer"});
        row("return", true, {Qt::Key_Return}, ConflictAnswer::ChooseLocal);
        row("the other one", true, {Qt::Key_Right, Qt::Key_Return}, ConflictAnswer::ChooseRemote);
        row("there and back", true, {Qt::Key_Right, Qt::Key_Left, Qt::Key_Return}, ConflictAnswer::ChooseLocal);
        row("keep both", true, {Qt::Key_Right, Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Return},
            ConflictAnswer::KeepBothRemote);
        row("not now", true, {Qt::Key_Right, Qt::Key_Escape}, ConflictAnswer::NotNow);
        row("only one is there", false, {Qt::Key_Right, Qt::Key_Return}, ConflictAnswer::ChooseLocal);
        row("the window goes", true, {}, ConflictAnswer::NotNow);
    }

    void asksAboutAConflict()
    {
        QFETCH(bool, blogIsThere);
        QFETCH(QList<int>, keys);
        SheetFixture f(true);
        ConflictSides sides;
        sides.local = {true, QDateTime::currentDateTimeUtc(), "Mine", {"One"}, {"One"}};
        sides.remote = {blogIsThere, {}, "<b>Theirs</b>", {"Two"}, {}};
        std::optional<ConflictAnswer> answer;
        f.prompts().askAboutConflict(sides).then([&answer](ConflictAnswer given) { answer = given; });
        QCOMPARE(f.attached(), "conflictSheet");
        for (const int key : keys)
            f.press(key);
        if (keys.isEmpty()) {
            QTRY_VERIFY(!f.app->currentBlog().wordpressService()->isSyncing()); // the controller talks to the window
            f.window.reset();
        }
        QTRY_VERIFY(answer);
        QTEST(*answer, "answer");
    }

    void showsAlertsBeforeSheets()
    {
        SheetFixture f(true);
        f.prompts().alert(u"First"_qs);
        f.prompts().askForBlogURL({}, true);
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
        const auto asking = f.prompts().askForLogin({QString(), u"blog.test"_qs, {}, {}});
        const ZLSheet *sheet = f.window->sheets().attachedSheet();
        for (int turn = 0; turn < 5; ++turn) {
            QVERIFY(sheet->isAncestorOf(QApplication::focusWidget()));
            f.press(Qt::Key_Tab);
        }
        search->setFocus();
        QVERIFY(sheet->isAncestorOf(QApplication::focusWidget()));
        f.press(Qt::Key_Escape);
        QTRY_VERIFY(!f.window->sheets().attachedSheet());
        QVERIFY(search->hasFocus());
    }
};

static const RegisteredTest<SheetsTest> registered;

#include "SheetsTest.moc"
