#include "editor/ZLEditorWebViewBridge.h"

#include "platform/ZLLog.h"

ZLEditorWebViewBridge::ZLEditorWebViewBridge(ZLEditorWebViewBridgeDelegate &delegate, QObject *parent)
    : QObject(parent)
    , m_delegate(delegate)
{
}

void ZLEditorWebViewBridge::jqueryReadyFired()
{
    m_delegate.jqueryReadyFired();
}

void ZLEditorWebViewBridge::setPostContent_(const QString &html)
{
    m_delegate.setPostContent(html);
}

void ZLEditorWebViewBridge::selectionChangedWithText_X_Y_Bold_Italic_Underline_Strikethrough_(
    const QString &text, int x, int y, bool, bool, bool, bool)
{
    m_delegate.selectionChanged(text, {x, y});
}

void ZLEditorWebViewBridge::selectionWasUnselected_(const QString &text)
{
    m_delegate.selectionWasUnselected(text);
    ZLLog(QStringLiteral("last selection: %1").arg(text));
}

void ZLEditorWebViewBridge::selectionStyleChanged_(const QVariantMap &style)
{
    m_delegate.selectionStyleChanged(style);
}

void ZLEditorWebViewBridge::openAddLinkPopoverWithURL_Tooltip_OpenInNewTab_(
    const QString &url, const QString &tooltip, const QString &target)
{
    m_delegate.openAddLinkPopover(url, tooltip, target == u"_blank");
}

void ZLEditorWebViewBridge::leaveForTitle()
{
    m_delegate.leaveForTitle();
}

void ZLEditorWebViewBridge::leaveForTokens()
{
    m_delegate.leaveForTokens();
}

void ZLEditorWebViewBridge::pastePicture()
{
    m_delegate.pastePicture();
}

QString ZLEditorWebViewBridge::targetForLinkImage()
{
    return m_delegate.targetForLinkImage();
}
