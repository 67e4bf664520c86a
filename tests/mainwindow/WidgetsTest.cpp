#include "WindowFixture.h"
#include "platform/ZLAtomicFile.h"
#include "widgets/ZLFavicon.h"
#include "widgets/ZLPlainText.h"
#include "widgets/ZLTextViewWithPlaceHolder.h"
#include "widgets/ZLTokenField.h"
#include "widgets/ZLTokenView.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTextDocument>
#include <QVBoxLayout>

namespace {

const QString trap = u"<img src=\"file:///dev/zero\"> &Ada"_qs;

/// What somebody reads who is shown this tool tip.
QString read(const QString &toolTip)
{
    if (!Qt::mightBeRichText(toolTip))
        return toolTip;
    QTextDocument document; // as the tool tip's own; nothing to be fetched may be left in it
    document.setHtml(toolTip);
    return toolTip.contains(u"<img") ? u"markup"_qs : document.toPlainText();
}

} // namespace

class WidgetsTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void readsNoMarkup_data()
    {
        const TestTable<QString> row({"text"});
        row("picture", trap);
        row("link", u"<a href=\"http://x.test\">Press</a>"_qs);
        row("entities", u"Fish &amp; chips"_qs);
        row("plain", u"Tom & Eve"_qs);
        row("long", u"word "_qs.repeated(40).trimmed());
    }

    void readsNoMarkup()
    {
        QFETCH(QString, text);
        QCOMPARE(read(ZLPlainText::toolTip(text)), text);
        const std::unique_ptr<QLabel> label(ZLPlainText::label(nullptr, text));
        QCOMPARE(label->textFormat(), Qt::PlainText);
        const ZLTokenView token(text);
        QCOMPARE(read(token.toolTip()), text);
        QCOMPARE(token.accessibleName(), text);
    }

    void drawsNoIconThatMayNameFiles()
    {
        QTemporaryDir folder;
        const QString path = folder.filePath(u"favicon.ico"_qs);
        const QByteArray drawing = "<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'><rect/></svg>";
        QVERIFY(ZLAtomicFile::write(path, drawing));
        QCOMPARE(ZLFavicon::icon(path).pixmap(16).toImage(), ZLFavicon::icon({}).pixmap(16).toImage());
    }

    void shortensWhatNobodyReads()
    {
        QCOMPARE(ZLPlainText::menuTitle(u"One\n&two\tthree"_qs), u"One &&two three"_qs);
        QVERIFY(ZLPlainText::menuTitle(QString(5'000'000, u'x')).size() < 100);
        QVERIFY(ZLPlainText::toolTip(QString(5'000'000, u'<')).size() < 5000);
    }

    /// The whole window with a blog, posts and terms whose names are markup: no widget has taken any of them for it.
    void showsHostileNamesAsTheyAre()
    {
        WindowFixture f;
        f.seedAccount(trap, f.blog.url());
        ZLWordpressPost post;
        post.title = trap;
        post.content = u"<p>Text</p>"_qs;
        post.taxonomies = {ZLTaxonomy{trap, u"category"_qs}};
        f.seedPost(trap, post);
        f.seedAccount(u"Other"_qs, f.blog.url());
        f.launch();
        f.show();
        f.list().selectRow(0);
        QTRY_VERIFY(f.window->findChild<ZLTokenView *>());
        f.prompts().alert(trap, trap);
        f.prompts().showConnecting(trap, [] {});
        f.prompts().showBlogIsConnectedSheet(trap);
        const std::unique_ptr<QMenu> menu(f.list().menuForRow(0));
        for (const QLabel *label : f.window->findChildren<QLabel *>())
            QVERIFY2(label->textFormat() == Qt::PlainText, qPrintable(label->text()));
        for (const QWidget *widget : f.window->findChildren<QWidget *>())
            QVERIFY2(read(widget->toolTip()) != u"markup", qPrintable(widget->toolTip()));
        for (const QAction *action : f.window->findChildren<QAction *>())
            QVERIFY2(!action->text().contains(trap), qPrintable(action->text())); // its "&" would be a keyboard mark
    }

    void takesNoMoreThanTwoRowsForTokens()
    {
        QWidget window;
        window.resize(500, 400);
        auto *column = new QVBoxLayout(&window);
        column->addWidget(new QLineEdit(&window)); // has the focus at first
        column->addStretch(1);
        auto *field = new ZLTokenField(u"terms"_qs, &window);
        column->addWidget(field);
        window.show();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        const int oneRow = field->height();
        QStringList tokens;
        for (int number = 0; number < 60; ++number)
            tokens.append(u"#term %1"_qs.arg(number));
        field->setTokens(tokens);
        QTRY_VERIFY(field->height() > oneRow);
        QVERIFY(field->height() < 3 * oneRow);
        QCOMPARE(field->tokens(), tokens);

        // What takes the focus comes into sight.
        const auto isInSight = [field](const QWidget *widget) {
            return field->rect().contains(QRect(widget->mapTo(field, QPoint()), widget->size()));
        };
        auto *editor = field->findChild<QLineEdit *>();
        QVERIFY(!isInSight(editor));
        field->setFocus();
        QTRY_VERIFY(isInSight(editor));
        field->setTokens({u"#one"_qs});
        QTRY_COMPARE(field->height(), oneRow);
    }

    void forgetsTheTermsOfTheLastPost()
    {
        ZLTokenField field(u"terms"_qs);
        auto *editor = field.findChild<QLineEdit *>();
        QTest::keyClicks(editor, u"secret"_qs);
        field.setTokens({u"#other"_qs});
        QCOMPARE(editor->text(), u"secret"_qs); // it may be the same post, as a sync brought it
        field.forgetTypedText();
        editor->undo();
        QCOMPARE(field.tokens(), QStringList{u"#other"_qs});
        QTest::keyClicks(editor, u"more,"_qs);
        editor->undo();
        QCOMPARE(field.tokens(), QStringList({u"#other"_qs, u"more"_qs}));
    }

    void makesATokenOfAChosenCompletion_data()
    {
        const TestTable<QList<int>, QStringList> row({"keys", "tokens"});
        row("down, return", {Qt::Key_Down, Qt::Key_Return}, {u"Travel"_qs});
        row("second", {Qt::Key_Down, Qt::Key_Down, Qt::Key_Enter}, {u"Traffic"_qs});
        row("down, tab", {Qt::Key_Down, Qt::Key_Tab}, {u"Travel"_qs});
        row("none chosen", {Qt::Key_Return}, {u"tra"_qs});
        row("escape", {Qt::Key_Down, Qt::Key_Escape, Qt::Key_Return}, {u"Travel"_qs});
    }

    void makesATokenOfAChosenCompletion()
    {
        QFETCH(QList<int>, keys);
        ZLTokenField field(u"terms"_qs);
        field.setCompletions([](const QString &) { return QStringList{u"Travel"_qs, u"Traffic"_qs}; });
        QSignalSpy changes(&field, &ZLTokenField::tokensDidChange);
        field.resize(600, field.sizeHint().height());
        field.show();
        QVERIFY(QTest::qWaitForWindowActive(&field));
        field.setFocus();
        field.findChild<QLineEdit *>()->clearFocus(); // a field that had the focus before
        field.setFocus();
        auto *editor = field.findChild<QLineEdit *>();
        QTest::keyClicks(editor, u"tra"_qs);
        const QAbstractItemView *popup = editor->completer()->popup();
        QTRY_VERIFY(popup->isVisible());
        QVERIFY(popup->width() < editor->width() / 2);
        for (const int key : keys) // they go to the popup while it is open
            QTest::keyClick(
                popup->isVisible() ? const_cast<QAbstractItemView *>(popup) : (QWidget *)editor, Qt::Key(key));
        QTRY_COMPARE(changes.size(), 1);
        QTEST(field.tokens(), "tokens");
        QCOMPARE(editor->text(), QString());
        QVERIFY(editor->hasFocus());
    }

    void goesOnToTheTextFromTheTitle_data()
    {
        const TestTable<int, int, int> row({"key", "modifiers", "times"});
        row("return", Qt::Key_Return, Qt::NoModifier, 1);
        row("enter", Qt::Key_Enter, Qt::KeypadModifier, 1);
        row("tab", Qt::Key_Tab, Qt::NoModifier, 1);
        row("the key of Publish", Qt::Key_Return, Qt::ControlModifier, 0);
    }

    void goesOnToTheTextFromTheTitle()
    {
        QFETCH(int, key);
        QFETCH(int, modifiers);
        ZLTextViewWithPlaceHolder title(u"Title"_qs);
        QSignalSpy moves(&title, &ZLTextViewWithPlaceHolder::insertTab);
        QTest::keyClick(&title, Qt::Key(key), Qt::KeyboardModifiers(modifiers));
        QTEST(int(moves.size()), "times");
        QCOMPARE(title.string(), QString());
    }

    void showsTheBeginningOfAnEndlessTitle()
    {
        ZLTextViewWithPlaceHolder title(u"Title"_qs);
        title.resize(600, 60);
        const QString endless(5'000'000, u'x');
        QElapsedTimer clock;
        clock.start();
        title.setString(endless);
        title.show();
        QVERIFY(QTest::qWaitForWindowExposed(&title));
        QTest::keyClicks(&title, u"y"_qs);
        QCOMPARE(title.string(), endless); // goes back as it is
        QVERIFY(clock.elapsed() < 2000);
        title.setString(u"Short"_qs);
        QTest::keyClicks(&title, u"y"_qs);
        QCOMPARE(title.string(), u"yShort"_qs);
    }
};

static const RegisteredTest<WidgetsTest> registered;

#include "WidgetsTest.moc"
