#include "PageFixture.h"

#include "wordpress/ContentConversion.h"

#include <QCoroTask>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>

namespace {
QString quoted(const QString &text)
{
    return QString::fromUtf8(QJsonDocument(QJsonArray{text}).toJson(QJsonDocument::Compact)) + u"[0]"_qs;
}

/// Selects the first occurrence of a text that lies in one text node.
const QString selectScript = uR"((() => {
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
} // namespace

PageFixture::PageFixture()
    : files(home.filePath(u"data"_qs), home.filePath(u"cache"_qs))
{
}

bool PageFixture::start()
{
    view = std::make_unique<ZLEditorWebView>(page, files.cacheFolder());
    QObject::connect(&page, &ComposePage::setPostContent, &page, [this](const QString &html) { reports << html; });
    view->resize(900, 700);
    view->show();
    return QTest::qWaitFor([this] { return page.isReady(); }, 30'000);
}

void PageFixture::load(const QString &stored)
{
    beginToLoad(stored);
    body();
    reports.clear();
}

void PageFixture::beginToLoad(const QString &stored, int owner, ComposePage::Loading loading)
{
    page.loadHTMLContent(ContentConversion::postContentForZalmoEditor(stored, files), owner, loading);
}

void PageFixture::loadAgain(const QString &stored)
{
    beginToLoad(stored, 1, ComposePage::Loading::SamePost);
    body();
}

QString PageFixture::body()
{
    const std::optional<QString> text = QCoro::waitFor(page.getBodyContent());
    return text.value_or(QString());
}

QVariant PageFixture::evaluate(const QString &script)
{
    std::optional<QVariant> answer;
    view->page()->runJavaScript(script, 0, [&answer](const QVariant &value) { answer = value; });
    [[maybe_unused]] const bool answered = QTest::qWaitFor([&answer] { return answer.has_value(); }, 10'000);
    return answer.value_or(QVariant());
}

void PageFixture::select(const QString &text)
{
    QVERIFY2(evaluate(selectScript.arg(quoted(text)).arg(0).arg(text.size())).toBool(), qPrintable(text));
}

void PageFixture::putCursorBehind(const QString &text)
{
    QVERIFY2(evaluate(selectScript.arg(quoted(text)).arg(text.size()).arg(text.size())).toBool(), qPrintable(text));
}

void PageFixture::type(const QString &text)
{
    typeOn(text);
    body(); // comes behind the keys
}

void PageFixture::press(Qt::Key key, Qt::KeyboardModifiers modifiers, int times)
{
    view->setFocus();
    for (int n = 0; n < times; ++n)
        QTest::keyClick(view->focusProxy(), key, modifiers);
    body();
}

void PageFixture::typeOn(const QString &text)
{
    view->setFocus();
    QTest::keyClicks(view->focusProxy(), text);
}

QString PageFixture::copyPicture(const QString &name)
{
    QImage image(4, 3, QImage::Format_RGB32);
    image.fill(Qt::darkCyan);
    const QString path = files.cacheFolder() + QLatin1Char('/') + name;
    [[maybe_unused]] const bool saved = image.save(path, "PNG");
    return u"file://localhost"_qs + QUrl::fromLocalFile(path).path(QUrl::FullyEncoded);
}
