#include "editor/ZLComposeWidget.h"
#include "support/TestClasses.h"
#include "widgets/ZLAlertSheet.h"
#include "widgets/ZLSheetHost.h"
#include "widgets/ZLTextViewWithPlaceHolder.h"
#include "widgets/ZLTokenField.h"
#include "widgets/ZLTokenView.h"

#include <QAbstractItemView>
#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QCompleter>
#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QVBoxLayout>

/// The compose widget in a window, as a person uses it.
class ComposeWidgetTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        m_window = std::make_unique<QWidget>();
        m_widget = new ZLComposeWidget(m_window.get());
        auto *layout = new QVBoxLayout(m_window.get());
        layout->setContentsMargins({});
        layout->addWidget(m_widget);
        m_page = new QWidget;
        m_page->setFocusPolicy(Qt::StrongFocus);
        m_widget->setPageWidget(m_page);
        m_sheets = new ZLSheetHost(m_window.get());
        m_widget->setSheetHost(m_sheets);
        m_window->resize(900, 640);
        m_window->show();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    }

    void cleanup() { m_window.reset(); }

    void titleIsOneLineOfText()
    {
        ComposeView &view = m_widget->view();
        QSignalSpy began(&view, &ComposeView::titleDidBeginEditing), changed(&view, &ComposeView::titleDidChange);
        QSignalSpy wentOn(&view, &ComposeView::insertTabInTitle);
        view.setTitle("Set");
        view.focusTitle();
        QCOMPARE(changed.size() + began.size(), 0);
        title().selectAll();
        QTest::keyClicks(&title(), "A title");
        QTest::keyClick(&title(), Qt::Key_Return, Qt::ControlModifier); // the key of Publish
        QCOMPARE(wentOn.size(), 0);
        QTest::keyClick(&title(), Qt::Key_Return);
        QTest::keyClick(&title(), Qt::Key_Enter, Qt::KeypadModifier);
        QTest::keyClick(&title(), Qt::Key_Tab);
        QCOMPARE(wentOn.size(), 3);
        QCOMPARE(began.size(), 1);
        QApplication::clipboard()->setText("\nrefused");
        title().paste();
        QCOMPARE(view.title(), "A title");
        QApplication::clipboard()->setText(" of\nmany\nlines");
        title().paste();
        QCOMPARE(view.title(), "A title of many lines");
        m_page->setFocus();
        QCOMPARE(title().textCursor().position(), 0);

        const QString odd = QString("a\u00a0b\u2028c\r\nd\te");
        view.setTitle(odd);
        QCOMPARE(view.title(), odd); // as it was set
        QTest::keyClicks(&title(), "x");
        QCOMPARE(view.title().left(5), QString("xa\u00a0b\u2028"));
    }

    void showsTheBeginningOfATitleThatIsTooLong()
    {
        const QString longTitle = QString("&amp;<b>").repeated(600'000);
        QElapsedTimer clock;
        clock.start();
        m_widget->view().setTitle(longTitle);
        QCoreApplication::processEvents();
        QTest::keyClicks(&title(), "x");
        QCOMPARE(m_widget->view().title(), longTitle);
        QVERIFY2(clock.elapsed() < 3'000, qPrintable(QString::number(clock.elapsed())));
        m_widget->view().setTitle("Short");
        QTest::keyClicks(&title(), "y");
        QCOMPARE(m_widget->view().title(), "yShort");
    }

    void makesTokens_data()
    {
        const TestTable<QString, QStringList, QString> row; // what is typed, the tokens, and the text behind them
        row("comma", "News,#qt,more", QStringList({"News", "#qt", "more"}), "more");
        row("return", "News\n#qt\n", QStringList({"News", "#qt"}), "");
        row("tab", "News\t", QStringList({"News"}), "");
        row("blanks are no token", " , ,\n", {}, "");
        row("twice is once", "News,News,", QStringList({"News"}), "");
        row("a tag without a name", "#,", QStringList({"#"}), "");
        row("backspace", "News,#qt,x\b\b", QStringList({"News"}), "");
    }

    void makesTokens()
    {
        const auto [typed, tokens, rest] = testRow<QString, QStringList, QString>();
        QSignalSpy changed(&m_widget->view(), &ComposeView::tokensDidChange);
        editor().setFocus();
        for (const QChar character : typed) {
            const QString keys = "\n\t\b";
            const Qt::Key special[] = {Qt::Key_Return, Qt::Key_Tab, Qt::Key_Backspace};
            if (keys.contains(character))
                QTest::keyClick(&editor(), special[keys.indexOf(character)]);
            else
                QTest::keyClicks(&editor(), QString(character));
        }
        QCOMPARE(m_widget->view().tokens(), tokens);
        QCOMPARE(editor().text(), rest);
        QCOMPARE(changed.isEmpty(), typed == " , ,\n");
        m_widget->view().forgetTypedToken();
        m_widget->view().setTokens({"One"});
        QCOMPARE(m_widget->view().tokens(), QStringList("One"));
    }

    void walksThroughTokens()
    {
        m_widget->view().setTokens({"One", "Two", "Three"});
        const auto *chip = QAccessible::queryAccessibleInterface(field().findChild<ZLTokenView *>());
        QVERIFY(chip);
        QCOMPARE(chip->role(), QAccessible::Button);
        QCOMPARE(chip->text(QAccessible::Name), "One");
        editor().setFocus();
        QTest::keyClick(&editor(), Qt::Key_Left);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Left);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Delete);
        QCOMPARE(m_widget->view().tokens(), QStringList({"One", "Three"}));
        QVERIFY(editor().hasFocus());
        QTest::keyClick(&editor(), Qt::Key_Left);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return); // back to text
        QCOMPARE(editor().text(), "Three");
        QTest::keyClicks(&editor(), "Four,");
        QCOMPARE(m_widget->view().tokens(), QStringList({"One", "Four"}));
    }

    void completesTokens_data()
    {
        const TestTable<QList<int>, QString> row; // the keys, and the token that they make
        row("down, return", {Qt::Key_Down, Qt::Key_Return}, "#qtest");
        row("second", {Qt::Key_Down, Qt::Key_Down, Qt::Key_Enter}, "#qt6");
        row("down, tab", {Qt::Key_Down, Qt::Key_Tab}, "#qtest");
        row("escape", {Qt::Key_Down, Qt::Key_Escape, Qt::Key_Return}, "#qtest");
        row("none chosen", {Qt::Key_Return}, "#qt");
        row("comma", {Qt::Key_Comma}, "#qt");
    }

    void completesTokens()
    {
        const auto [keys, token] = testRow<QList<int>, QString>();
        QStringList asked;
        m_widget->setCompletions([&asked](const QString &text) {
            asked.append(text);
            return QStringList{"#qtest", "#qt6"};
        });
        QSignalSpy changes(&m_widget->view(), &ComposeView::tokensDidChange);
        editor().setFocus();
        QTest::keyClicks(&editor(), "#qt");
        QCOMPARE(asked, QStringList("#qt")); // and not for less
        QAbstractItemView *popup = editor().completer()->popup();
        QTRY_VERIFY(popup->isVisible());
        QVERIFY(!popup->currentIndex().isValid());
        QVERIFY(m_window->geometry().bottom() >= popup->geometry().bottom());
        for (const int key : keys) // they go to the popup while it is open
            QTest::keyClick(popup->isVisible() ? static_cast<QWidget *>(popup) : &editor(), Qt::Key(key));
        QTRY_COMPARE(changes.size(), 1);
        QCOMPARE(m_widget->view().tokens(), QStringList(token));
        QCOMPARE(editor().text(), "");
        QVERIFY(editor().hasFocus());
        QVERIFY(!popup->isVisible());
    }

    void coversThePostDuringAnUpload()
    {
        ComposeView &view = m_widget->view();
        view.focusTitle();
        view.showLoadingView("Publishing Article", "Preparing...", "Blog");
        auto *overlay = child("uploadOverlay");
        QVERIFY(overlay->isVisible());
        QCOMPARE(overlay->size(), m_widget->size());
        QVERIFY(!title().isEnabled());
        QTRY_VERIFY(overlay->hasFocus());
        QCOMPARE(overlay->accessibleDescription(), "Preparing...");
        QSignalSpy cancelled(&view, &ComposeView::didPressedCancelUpload);
        auto *hint = overlay->findChild<QLabel *>("typingHint");
        QCOMPARE(hint->text(), "");
        QTest::keyClicks(overlay, "typing on ");
        QVERIFY(hint->text().contains("not taken"));
        QTest::keyClick(overlay, Qt::Key_Return);
        QCOMPARE(cancelled.size(), 0);
        QTest::keyClick(overlay, Qt::Key_Escape);
        QTest::keyClick(overlay, Qt::Key_Tab);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
        QCOMPARE(cancelled.size(), 2);
        auto *alert = new ZLAlertSheet("It failed.", {}, {"OK"});
        m_sheets->beginSheet(alert);
        view.hideLoadingView();
        QVERIFY(title().isEnabled());
        QVERIFY(alert->isAncestorOf(QApplication::focusWidget()));
        m_sheets->endSheet(alert);
        QVERIFY(title().hasFocus());
        QTRY_VERIFY(!overlay->isVisible());
        // Who works elsewhere in the window stays there, from the start or later.
        auto *search = new QLineEdit(m_window.get());
        search->show();
        for (QWidget *before : {static_cast<QWidget *>(search), static_cast<QWidget *>(&title())}) {
            before->setFocus();
            view.showLoadingView("Publishing Article", "Preparing...", "Blog");
            QVERIFY(before == search ? search->hasFocus() : overlay->hasFocus());
            search->setFocus();
            view.hideLoadingView();
            QVERIFY(search->hasFocus());
        }
    }

    void asksBeforeDeleting()
    {
        ComposeView &view = m_widget->view();
        for (const auto &[button, index] :
            {std::pair("confirmDeleteButton", 1), std::pair("cancelDeleteButton", 0), std::pair("", 0)}) {
            QSignalSpy dismissed(&view, &ComposeView::alertViewDidDismissWithButtonIndex);
            view.showDeleteAlert("Deleting Post", "Title", "It goes.");
            QVERIFY(child("cancelDeleteButton")->hasFocus());
            if (*button)
                QTest::mouseClick(child(button), Qt::LeftButton);
            else
                QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
            QCOMPARE(dismissed.size(), 1);
            QCOMPARE(dismissed.first().first().toInt(), index);
            QTRY_VERIFY(!child("deleteAlert")->isVisible());
        }
    }

    void typesALink()
    {
        ComposeView &view = m_widget->view();
        QList<LinkAnswer> answers;
        const auto ask = [&](const PageLink &link) {
            view.askForLink(link).then([&answers](const LinkAnswer &answer) { answers.append(answer); });
        };
        ask({{}, {}, {}, true, false});
        auto *url = child<QLineEdit>("linkURLField");
        QTRY_VERIFY(url->hasFocus());
        QTest::keyClick(url, Qt::Key_Return); // nothing to link to yet
        QVERIFY(answers.isEmpty() && !child("removeLinkButton")->isVisible());
        QTest::keyClicks(url, "example.org");
        QTest::keyClicks(child<QLineEdit>("linkTooltipField"), "Tip");
        QTest::keyClick(url, Qt::Key_Return);
        QTRY_COMPARE(answers.size(), 1);
        QVERIFY(answers.first().deed == LinkAnswer::Done);
        QCOMPARE(answers.first().url, "example.org");
        QCOMPARE(answers.first().tooltip, "Tip");
        QVERIFY(answers.first().newWindow);
        QTRY_VERIFY(!url->isVisible());
        const PageLink there{"http://a.example", {}, "a", false, true};
        ask(there);
        QCOMPARE(url->text(), "http://a.example");
        QTest::keyClick(url, Qt::Key_Escape);
        QTRY_COMPARE(answers.size(), 2);
        QVERIFY(answers.last().deed == LinkAnswer::Cancel);
        ask(there);
        QTest::mouseClick(child("removeLinkButton"), Qt::LeftButton);
        QTRY_COMPARE(answers.size(), 3);
        QVERIFY(answers.last().deed == LinkAnswer::Remove);
    }

    void reflectsTheSelection()
    {
        QStringList commands;
        connect(&m_widget->view(), &ComposeView::didPressedFormatButton, this,
            [&commands](const QString &command) { commands.append(command); });
        SelectionStyle style;
        style.bold = style.orderedList = true;
        m_widget->view().setSelectionStyle(style);
        QStringList on;
        for (auto *button : m_widget->findChildren<QAbstractButton *>()) {
            if (!button->isCheckable())
                continue;
            if (button->isChecked())
                on.append(button->toolTip());
            button->click();
        }
        QCOMPARE(on, QStringList({"Bold (Ctrl+B)", "Numbered List (Ctrl+Shift+7)"}));
        QCOMPARE(commands,
            QStringList({"Bold", "Italic", "Underline", "Strikethrough", "InsertUnorderedList", "InsertOrderedList"}));
    }

private:
    ZLTextViewWithPlaceHolder &title() { return *m_widget->findChild<ZLTextViewWithPlaceHolder *>("titleField"); }
    ZLTokenField &field() { return *m_widget->findChild<ZLTokenField *>("tokenField"); }
    QLineEdit &editor() { return *field().findChild<QLineEdit *>(); }
    template <class T = QWidget>
    T *child(const char *name)
    {
        return m_window->findChild<T *>(QString::fromLatin1(name));
    }

    std::unique_ptr<QWidget> m_window;
    ZLComposeWidget *m_widget = nullptr;
    QWidget *m_page = nullptr;
    ZLSheetHost *m_sheets = nullptr;
};

QTEST_MAIN(ComposeWidgetTest)
#include "ComposeWidgetTest.moc"
