#include "editor/ZLEditorPage.h"

#include "editor/EditorView.h"

#include <QClipboard>
#include <QCoroFuture>
#include <QGuiApplication>
#include <QWidget>

namespace {
QVariantMap toVariant(const BodyPiece &piece)
{
    QVariantMap map{
        {QStringLiteral("lead"), piece.lead},
        {QStringLiteral("core"), piece.core},
        {QStringLiteral("tail"), piece.tail},
    };
    if (piece.html != piece.core)
        map.insert(QStringLiteral("html"), piece.html);
    return map;
}

QVariantMap toVariant(const EditorBody &body)
{
    QVariantList pieces;
    for (const BodyPiece &piece : body.pieces)
        pieces << toVariant(piece);
    QVariantMap localImages;
    for (auto image = body.localImages.cbegin(); image != body.localImages.cend(); ++image)
        localImages.insert(image.key(), image.value());
    return {
        {QStringLiteral("pieces"), pieces},
        {QStringLiteral("localImages"), localImages},
        {QStringLiteral("isBlockEditor"), body.isBlockEditor},
        {QStringLiteral("isTooLarge"), body.isTooLarge},
        {QStringLiteral("mark"), body.mark},
        {QStringLiteral("kept"), body.kept},
    };
}

SelectionStyle styleFromVariant(const QVariantMap &map)
{
    SelectionStyle style;
    style.bold = map.value(QStringLiteral("bold")).toBool();
    style.italic = map.value(QStringLiteral("italic")).toBool();
    style.underline = map.value(QStringLiteral("underline")).toBool();
    style.strikethrough = map.value(QStringLiteral("strikethrough")).toBool();
    style.orderedList = map.value(QStringLiteral("orderedList")).toBool();
    style.unorderedList = map.value(QStringLiteral("unorderedList")).toBool();
    style.link = map.value(QStringLiteral("link")).toBool();
    return style;
}

/// An address as post content has it: local files are named by "file://localhost".
QString contentAddress(const QUrl &url)
{
    if (url.scheme() == u"file")
        return QStringLiteral("file://localhost") + url.path(QUrl::FullyEncoded);
    return url.toString(QUrl::FullyEncoded);
}
} // namespace

ZLEditorPage::ZLEditorPage(QObject *parent)
    : ComposePage(parent)
    , m_bridge(*this)
{
    m_watch.setInterval(250);
    connect(&m_watch, &QTimer::timeout, this, &ZLEditorPage::watchLoading);
}

void ZLEditorPage::setView(EditorView *view)
{
    m_view = view;
    if (view)
        view->setBlogURL(m_blogURL);
}

void ZLEditorPage::loadHTMLContent(const EditorBody &body, int owner, Loading loading)
{
    const bool isUpdate = loading == Loading::SamePost && (!m_waitingContent || m_waitingContent->isUpdate);
    m_waitingContent = Content{body, owner, isUpdate};
    if (m_ready && !m_loading)
        applyContent();
    else if (!m_ready && m_view)
        m_view->loadIfGivenUp();
}

void ZLEditorPage::applyContent()
{
    m_contentOnItsWay = *std::exchange(m_waitingContent, std::nullopt);
    m_loading = true;
    m_calls.hold();
    const EditorBody &body = m_contentOnItsWay.body;
    if (m_view)
        m_view->allowLocalImages(body.localImages.keys());
    QVariantMap content = toVariant(body);
    content.insert(QStringLiteral("isSamePost"), m_contentOnItsWay.isUpdate);
    content.insert(QStringLiteral("isTooLarge"), body.isTooLarge || m_contentOnItsWay.failures >= mostFailures);
    m_processorTime = m_view ? m_view->processorTime() : std::chrono::milliseconds();
    m_watch.start();
    m_calls.callNow(Function::loadHTMLContent, {content}, longestWait)
        .then(this, [this](const EditorCalls::Answer &answer) {
            if (answer)
                contentArrived();
            else if (m_loading && m_view)
                contentHangs();
        });
}

void ZLEditorPage::watchLoading()
{
    if (!m_loading || !m_view)
        m_watch.stop();
    else if (m_view->processorTime() - m_processorTime > loadLimit)
        contentHangs();
}

/// What the page still shows belongs to nobody. A new page gets the content as its source.
void ZLEditorPage::contentHangs()
{
    m_watch.stop();
    m_contentOnItsWay.failures = mostFailures;
    m_view->endHungProcess();
}

void ZLEditorPage::contentArrived()
{
    if (!m_loading)
        return;
    m_loading = false;
    m_owner = std::exchange(m_contentOnItsWay, {}).owner;
    if (m_waitingContent)
        return applyContent();
    m_calls.release();
}

QCoro::Task<std::optional<QString>> ZLEditorPage::textOf(QFuture<EditorCalls::Answer> future)
{
    const EditorCalls::Answer answer = co_await future;
    if (!answer || answer->typeId() != QMetaType::QString)
        co_return std::nullopt;
    co_return answer->toString();
}

QCoro::Task<std::optional<QString>> ZLEditorPage::getBodyContent()
{
    return textOf(m_calls.call(Function::getBodyContent));
}

QCoro::Task<std::optional<QString>> ZLEditorPage::getRawContent()
{
    return textOf(m_calls.call(Function::getRawContent));
}

void ZLEditorPage::addImage(const ImageInfo &image)
{
    if (m_view)
        m_view->allowLocalImages({image.thumbUrl.toString(), image.linkTo.toString()});
    // The script contract has the text "(null)" for a missing link.
    const QString link = image.linkTo.isEmpty() ? QStringLiteral("(null)") : contentAddress(image.linkTo);
    m_calls.call(Function::addImage,
        {contentAddress(image.thumbUrl), link, image.altText, image.caption, image.tooltip,
            image.featuredUrl.isEmpty() ? 0 : 1});
}

void ZLEditorPage::execCommand(const QString &command)
{
    m_calls.call(Function::execCommand, {command});
}

QCoro::Task<std::optional<PageLink>> ZLEditorPage::addLinkMarkToCurrentSelection()
{
    return linkOf(m_calls.call(Function::addLinkMarkToCurrentSelection));
}

QCoro::Task<std::optional<PageLink>> ZLEditorPage::linkOf(QFuture<EditorCalls::Answer> future)
{
    const EditorCalls::Answer answer = co_await future;
    if (!answer || answer->typeId() != QMetaType::QVariantMap)
        co_return std::nullopt;
    const QVariantMap map = answer->toMap();
    co_return PageLink{
        map.value(QStringLiteral("url")).toString(),
        map.value(QStringLiteral("tooltip")).toString(),
        map.value(QStringLiteral("text")).toString(),
        map.value(QStringLiteral("newWindow")).toBool(),
        map.value(QStringLiteral("isLink")).toBool(),
    };
}

void ZLEditorPage::addLinkToSelection(const QString &url, const QString &tooltip, bool newWindow)
{
    m_calls.call(Function::addLinkToSelection, {url, tooltip, newWindow});
}

void ZLEditorPage::removeLink()
{
    m_calls.call(Function::removeLink);
}

void ZLEditorPage::removeLinkMarkForCurrentSelection()
{
    m_calls.call(Function::removeLinkMarkForCurrentSelection);
}

void ZLEditorPage::hidePopupWindows()
{
    m_calls.call(Function::removeCurrentSelections);
}

void ZLEditorPage::focus()
{
    if (m_view)
        m_view->widget()->setFocus();
    m_calls.call(Function::focusContent);
}

void ZLEditorPage::cleanUndoStack()
{
    m_calls.call(Function::cleanUndoStack);
}

void ZLEditorPage::setBlogURL(const QUrl &url)
{
    m_blogURL = url;
    if (m_view)
        m_view->setBlogURL(url);
}

void ZLEditorPage::setTheme(const QVariantMap &colors)
{
    m_theme = colors;
    if (m_ready)
        m_calls.callNow(Function::setTheme, {m_theme});
}

void ZLEditorPage::pageIsGone()
{
    m_ready = false;
    m_owner = nobody;
    // What had not arrived is loaded into the next page, unless there is something newer.
    if (std::exchange(m_loading, false) && !m_waitingContent) {
        m_waitingContent = std::exchange(m_contentOnItsWay, {});
        ++m_waitingContent->failures;
    }
    m_calls.close();
}

void ZLEditorPage::pageIsGivenUp()
{
    Q_EMIT gaveUp();
}

void ZLEditorPage::jqueryReadyFired()
{
    m_ready = true;
    m_loading = false;
    m_calls.open();
    m_calls.callNow(Function::setTheme, {m_theme});
    const bool first = !std::exchange(m_wasReady, true);
    if (m_waitingContent)
        applyContent();
    if (first)
        Q_EMIT ready();
    else
        Q_EMIT crashed();
}

void ZLEditorPage::setPostContent(const QString &html)
{
    if (m_owner != nobody)
        Q_EMIT ComposePage::setPostContent(html, m_owner);
}

void ZLEditorPage::selectionChanged(const QString &text, const QPoint &)
{
    m_selectedText = text;
    Q_EMIT ComposePage::selectionChanged(m_selectedText, m_style);
}

void ZLEditorPage::selectionWasUnselected(const QString &)
{
    m_selectedText.clear();
    Q_EMIT ComposePage::selectionChanged(m_selectedText, m_style);
}

void ZLEditorPage::selectionStyleChanged(const QVariantMap &style)
{
    m_style = styleFromVariant(style);
    Q_EMIT ComposePage::selectionChanged(m_selectedText, m_style);
}

void ZLEditorPage::leaveForTitle()
{
    Q_EMIT focusTitleRequested();
    m_calls.focusDidLeave();
}

void ZLEditorPage::leaveForTokens()
{
    Q_EMIT focusTokensRequested();
    m_calls.focusDidLeave();
}

void ZLEditorPage::pastePicture()
{
    if (m_view)
        m_view->offerPictures(QGuiApplication::clipboard()->mimeData());
}

void ZLEditorPage::openAddLinkPopover(const QString &url, const QString &tooltip, bool newWindow)
{
    Q_EMIT openAddLink(url, tooltip, newWindow);
}

QString ZLEditorPage::targetForLinkImage()
{
    return m_targetForLinkImage ? m_targetForLinkImage() : QStringLiteral("_blank");
}
