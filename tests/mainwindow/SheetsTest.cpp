#include "WindowFixture.h"
#include "mainwindow/ConnectionSheets.h"
#include "widgets/ZLSheetHost.h"

#include <QApplication>
#include <QLineEdit>

namespace {

struct SheetFixture : WindowFixture {
    explicit SheetFixture(bool withBlog = false)
    {
        if (withBlog)
            seedPosts({});
        reachability.reachable = !withBlog;
        show();
    }

    QString attached() const
    {
        const ZLSheet *sheet = window->sheets().attachedSheet();
        return sheet ? sheet->objectName() : "-";
    }
    void press(int key) { QTest::keyClick(QApplication::focusWidget(), Qt::Key(key)); }
    QLineEdit *field(const QString &name) const { return find<QLineEdit>(name); }
    void type(const QString &name, const QString &text)
    {
        QTRY_VERIFY(field(name) && field(name)->hasFocus());
        QTest::keyClicks(field(name), text);
    }
    /// Presses the keys; without any, the window goes.
    void answer(const QList<int> &keys)
    {
        for (const int key : keys)
            press(key);
        if (keys.isEmpty()) {
            QTRY_VERIFY(!app->currentBlog().wordpressService()->isSyncing()); // the controller talks to the window
            window.reset();
        }
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
        QCOMPARE(f.attached(), "introSheet");
        f.press(Qt::Key_Escape); // without any blog there is no way round
        f.type("blogURLField", "not an address");
        f.press(Qt::Key_Return);
        QTRY_VERIFY(f.field("blogURLField") && f.field("blogURLField")->hasSelectedText());
        QCOMPARE(f.attached(), "introSheet"); // without a word
        f.field("blogURLField")->setText(f.blog.url());
        f.press(Qt::Key_Return);
        QTRY_COMPARE(f.attached(), "loginSheet");

        f.type("usernameField", f.blog.user);
        f.press(Qt::Key_Return);
        QVERIFY(f.field("passwordField")->hasFocus());
        QCOMPARE(f.field("passwordField")->echoMode(), QLineEdit::Password);
        f.type("passwordField", "wrong");
        f.press(Qt::Key_Return);
        QTRY_COMPARE(f.attached(), "loginErrorSheet");
        QCOMPARE(f.field("usernameField")->text(), f.blog.user);
        f.type("passwordField", f.blog.password); // in place of what was refused
        f.field("usernameField")->setFocus();
        f.press(Qt::Key_Return);
        QTRY_COMPARE(f.attached(), "getStartedPanel");
        f.press(Qt::Key_Return);
        QCOMPARE(f.attached(), "-");
        f.app->connection().newAccount();
        QCOMPARE(f.field("blogURLField")->text(), QString());
        f.press(Qt::Key_Escape);
        QCOMPARE(f.attached(), "-");
    }

    /// Whatever name a blog gives itself.
    void showsWhichHostGetsThePassword()
    {
        const QString name = "B\nb.example \u2029\u202E" + QString("more ").repeated(90);
        using Question = LoginQuestion;
        for (const auto reason : {Question::Wanted, Question::StoredRefused, Question::TypedRefused}) {
            const ZLWordpressLoginWindow sheet({name, QString("b.").repeated(60) + "a.example", {}, {}, reason});
            QStringList lines;
            for (const QLabel *label : sheet.findChildren<QLabel *>(QString(), Qt::FindDirectChildrenOnly))
                lines += label->text().split(u'\n');
            QCOMPARE(lines.size(), reason == Question::Wanted ? 3 : 4); // with the heading
            QCOMPARE(lines.contains("The stored password was refused"), reason == Question::StoredRefused);
            QVERIFY(lines.at(lines.size() - 2).endsWith(u"b.a.example"));
            QVERIFY(lines.last().startsWith(u"B b.example more more") && lines.last().endsWith(u'…'));
        }
    }

    /// One that comes later takes neither the front nor the keys.
    void showsSheetsInTurn()
    {
        SheetFixture f;
        QStringList typed;
        for (const QString host : {"b.example", "a.example"})
            f.prompts()
                .askForLogin({QString(), host, "ada", {}})
                .then([&typed, host](const std::optional<Login> &login) {
                    typed.append(login ? host + u' ' + login->password : QString());
                });
        for (const QString password : {"for b", "for a"}) {
            f.type("passwordField", password);
            f.press(Qt::Key_Return);
        }
        QTRY_COMPARE(typed, QStringList({"b.example for b", "a.example for a"}));
    }

    void givesUpConnecting()
    {
        SheetFixture f;
        f.blog.answerLate("system.listMethods");
        f.app->connection().connectToBlogURL(f.blog.url());
        QTRY_COMPARE(f.attached(), "connectingSheet");
        f.press(Qt::Key_Return); // a second Return changes nothing
        QCOMPARE(f.attached(), "connectingSheet");
        f.press(Qt::Key_Escape);
        QTRY_COMPARE(f.attached(), "introSheet");
        QCOMPARE(f.field("blogURLField")->text(), f.blog.url());
    }

    void answersAlerts_data()
    {
        const TestTable<QStringList, int, QList<int>, int> row; // buttons, the default one, keys, answer
        const QStringList cancel{"Ok", "Cancel"};
        row("return", cancel, 0, QList<int>{Qt::Key_Return}, 0);
        row("return where cancel is the default", cancel, 1, QList<int>{Qt::Key_Return}, 1);
        row("escape is cancel", cancel, 0, QList<int>{Qt::Key_Escape}, 1);
        row("escape without cancel", {"Ok", "Need Help?"}, 0, QList<int>{Qt::Key_Escape}, 0);
        row("tab to the second", cancel, 0, QList<int>{Qt::Key_Tab, Qt::Key_Return}, 1);
        row("tab around", cancel, 0, QList<int>{Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Space}, 0);
        row("the window goes", cancel, 0, QList<int>{}, -1);
    }

    void answersAlerts()
    {
        const auto [buttons, defaultButton, keys, answer] = testRow<QStringList, int, QList<int>, int>();
        SheetFixture f(true);
        std::optional<int> given;
        f.prompts().ask("Message", "Text", buttons, defaultButton).then([&given](int index) { given = index; });
        f.answer(keys);
        QTRY_VERIFY(given);
        QCOMPARE(*given, answer);
    }

    void asksAboutAConflict_data()
    {
        const TestTable<bool, QList<int>, ConflictAnswer> row; // whether the blog's version is there, keys, answer
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
        const auto [blogIsThere, keys, answer] = testRow<bool, QList<int>, ConflictAnswer>();
        SheetFixture f(true);
        ConflictSides sides;
        sides.local = {true, QDateTime::currentDateTimeUtc(), "Mine", {"One"}, {"One"}};
        sides.remote = {blogIsThere, {}, "<b>Theirs</b>", {"Two"}, {}};
        std::optional<ConflictAnswer> given;
        f.prompts().askAboutConflict(sides).then([&given](ConflictAnswer pressed) { given = pressed; });
        QCOMPARE(f.attached(), "conflictSheet");
        f.answer(keys);
        QTRY_VERIFY(given);
        QCOMPARE(*given, answer);
    }

    void showsAlertsBeforeSheets()
    {
        SheetFixture f(true);
        f.prompts().alert("First");
        f.prompts().askForBlogURL({}, true);
        f.prompts().alert("Second");
        f.prompts().alert("First"); // the same again, as from several requests of one sync
        QStringList said;
        for (int turn = 0; turn < 5 && !f.textOf("alertMessage").isNull(); ++turn) {
            said.append(f.textOf("alertMessage"));
            f.press(Qt::Key_Return);
        }
        QCOMPARE(said, QStringList({"First", "Second"}));
        QCOMPARE(f.attached(), "introSheet");
    }

    void keepsTheButtonOfALongAlert()
    {
        SheetFixture f(true);
        f.window->resize(f.window->minimumSize());
        f.prompts().alert(QString("A fault. ").repeated(2000));
        const QWidget *button = QApplication::focusWidget();
        QVERIFY(f.isInside(button));
        QVERIFY(button->height() >= button->fontMetrics().height());
        QVERIFY(f.textOf("alertMessage").endsWith(u'…'));
    }

    void keepsTheFocusInside()
    {
        SheetFixture f(true);
        auto *search = f.find<QLineEdit>("searchPostsField");
        search->setFocus();
        const auto asking = f.prompts().askForLogin({QString(), "blog.test", {}, {}});
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
