#include "WindowFixture.h"
#include "support/Files.h"
#include "widgets/ZLFavicon.h"
#include "widgets/ZLPlainText.h"
#include "widgets/ZLTokenField.h"
#include "widgets/ZLTokenView.h"

#include <QLineEdit>
#include <QMenu>
#include <QTextDocument>
#include <QVBoxLayout>

namespace {

const QString trap = "<img src=\"file:///dev/zero\"> &Ada";

/// What somebody reads who is shown this tool tip.
QString read(const QString &toolTip)
{
    if (!Qt::mightBeRichText(toolTip))
        return toolTip;
    QTextDocument document; // as the tool tip's own; nothing to be fetched may be left in it
    document.setHtml(toolTip);
    return toolTip.contains(u"<img") ? "markup" : document.toPlainText();
}

} // namespace

class WidgetsTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void readsNoMarkup_data()
    {
        const TestTable<QString> row;
        row("picture", trap);
        row("link", "<a href=\"http://x.test\">Press</a>");
        row("entities", "Fish &amp; chips");
        row("plain", "Tom & Eve");
        row("long", QString("word ").repeated(40).trimmed());
    }

    void readsNoMarkup()
    {
        const auto [text] = testRow<QString>();
        QCOMPARE(read(ZLPlainText::toolTip(text)), text);
        const std::unique_ptr<QLabel> label(ZLPlainText::label(nullptr, text));
        QCOMPARE(label->textFormat(), Qt::PlainText);
        const ZLTokenView token(text);
        QCOMPARE(read(token.toolTip()), text);
        QCOMPARE(token.accessibleName(), text);
    }

    void drawsNoIconThatMayNameFiles()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath("favicon.ico");
        writeFile(path, "<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'><rect/></svg>");
        QCOMPARE(ZLFavicon::icon(path).pixmap(16).toImage(), ZLFavicon::icon({}).pixmap(16).toImage());
    }

    void shortensWhatNobodyReads()
    {
        QCOMPARE(ZLPlainText::menuTitle("One\n&two\tthree"), "One &&two three");
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
        post.content = "<p>Text</p>";
        post.taxonomies = {ZLTaxonomy{trap, "category"}};
        f.seedPost(trap, post);
        f.seedAccount("Other", f.blog.url());
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
        auto *field = new ZLTokenField("terms", &window);
        column->addWidget(field);
        window.show();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        const int oneRow = field->height();
        QStringList tokens;
        for (int number = 0; number < 60; ++number)
            tokens.append(u"#term %1"_qs.arg(number));
        field->setTokens(tokens);
        QTRY_VERIFY(field->height() > oneRow && field->height() < 3 * oneRow);

        // What takes the focus comes into sight.
        const auto *editor = field->findChild<QLineEdit *>();
        const auto isInSight = [=] { return field->rect().contains(editor->mapTo(field, editor->rect().center())); };
        QVERIFY(!isInSight());
        field->setFocus();
        QTRY_VERIFY(isInSight());
    }

    void forgetsTheTermsOfTheLastPost()
    {
        ZLTokenField field("terms");
        auto *editor = field.findChild<QLineEdit *>();
        QTest::keyClicks(editor, "secret");
        field.setTokens({"#other"});
        QCOMPARE(editor->text(), "secret"); // it may be the same post, as a sync brought it
        field.forgetTypedText();
        editor->undo();
        QCOMPARE(field.tokens(), QStringList{"#other"});
        QTest::keyClicks(editor, "more,");
        editor->undo();
        QCOMPARE(field.tokens(), QStringList({"#other", "more"}));
    }
};

static const RegisteredTest<WidgetsTest> registered;

#include "WidgetsTest.moc"
