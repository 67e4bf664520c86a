#pragma once

#include "editor/ZLEditorPage.h"
#include "engine/ZLEditorWebView.h"
#include "platform/ZLFileManager.h"
#include "support/TestClasses.h"
#include "wordpress/ContentConversion.h"

#include <QCoroTask>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QTemporaryDir>

/// A block as the block editor stores it; the name may have attributes behind it.
inline QString block(const QString &name, const QString &content)
{
    return u"<!-- wp:%1 -->\n%2\n<!-- /wp:%3 -->"_qs.arg(name, content, name.section(u' ', 0, 0));
}

inline QString paragraph(const QString &text)
{
    return block("paragraph", "<p>" + text + "</p>");
}

/// Selects the first occurrence of a text that lies in one text node.
inline const QString selectScript = uR"((() => {
    const content = document.getElementById('content');
    const walker = document.createTreeWalker(content, NodeFilter.SHOW_TEXT);
    while (walker.nextNode()) {
        const at = walker.currentNode.data.indexOf(%1);
        if (at < 0)
            continue;
        content.focus();
        getSelection().setBaseAndExtent(walker.currentNode, at + %2, walker.currentNode, at + %3);
        return true;
    }
    return false;
})())"_qs;

/// The editor page in the real engine, with what a test does to it.
class PageFixture {
public:
    [[nodiscard]] bool start()
    {
        view = std::make_unique<ZLEditorWebView>(page, files.cacheFolder());
        QObject::connect(&page, &ComposePage::setPostContent, &page, [this](const QString &html) { reports << html; });
        view->resize(900, 700);
        view->show();
        return QTest::qWaitFor([this] { return page.isReady(); }, 30'000);
    }

    /// Loads a body as the compose screen does, and waits until it is there.
    void load(const QString &stored)
    {
        beginToLoad(stored);
        body();
        reports.clear();
    }
    void loadAgain(const QString &stored) ///< as another text of the same post
    {
        beginToLoad(stored, 1, ComposePage::Loading::SamePost);
        body();
    }
    /// The same without a wait.
    void beginToLoad(const QString &stored, int owner = 1, ComposePage::Loading loading = ComposePage::Loading::NewPost)
    {
        page.loadHTMLContent(ContentConversion::postContentForZalmoEditor(stored, files), owner, loading);
    }
    /// The answer of getBodyContent; null when there is none.
    QString body() { return QCoro::waitFor(page.getBodyContent()).value_or(QString()); }
    QVariant evaluate(const QString &script) ///< in the page's own world
    {
        std::optional<QVariant> answer;
        view->page()->runJavaScript(script, 0, [&answer](const QVariant &value) { answer = value; });
        [[maybe_unused]] const bool answered = QTest::qWaitFor([&answer] { return answer.has_value(); }, 10'000);
        return answer.value_or(QVariant());
    }
    void select(const QString &text) { select(text, 0); } ///< its first occurrence in the text of the page
    void putCursorBehind(const QString &text) { select(text, text.size()); }
    void type(const QString &text) ///< real key events, which the page has had on return
    {
        typeOn(text);
        body(); // comes behind the keys
    }
    void typeOn(const QString &text) ///< the same without a wait
    {
        view->setFocus();
        QTest::keyClicks(view->focusProxy(), text);
    }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier, int times = 1)
    {
        view->setFocus();
        for (int n = 0; n < times; ++n)
            QTest::keyClick(view->focusProxy(), key, modifiers);
        body();
    }
    QString copyPicture(const QString &name) ///< into the cache folder; its file:// address as content has it
    {
        QImage image(4, 3, QImage::Format_RGB32);
        image.fill(Qt::darkCyan);
        const QString path = files.cacheFolder() + '/' + name;
        [[maybe_unused]] const bool saved = image.save(path, "PNG");
        return "file://localhost" + QUrl::fromLocalFile(path).path(QUrl::FullyEncoded);
    }

    QTemporaryDir home;
    ZLFileManager files{home.filePath("data"), home.filePath("cache")};
    ZLEditorPage page;
    std::unique_ptr<ZLEditorWebView> view;
    QStringList reports;

private:
    void select(const QString &text, qsizetype from)
    {
        const QString quoted = QJsonDocument(QJsonArray{text}).toJson(QJsonDocument::Compact) + "[0]";
        QVERIFY2(evaluate(selectScript.arg(quoted).arg(from).arg(text.size())).toBool(), qPrintable(text));
    }
};
