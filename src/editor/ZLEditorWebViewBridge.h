#pragma once

#include <QObject>
#include <QPoint>
#include <QString>
#include <QVariantMap>

/// Whom the page's script reaches through `Bridge`.
class ZLEditorWebViewBridgeDelegate {
public:
    virtual ~ZLEditorWebViewBridgeDelegate() = default;
    virtual void jqueryReadyFired() = 0; ///< the page can be called
    virtual void setPostContent(const QString &html) = 0;
    virtual void selectionChanged(const QString &text, const QPoint &location) = 0;
    virtual void selectionWasUnselected(const QString &text) = 0;
    virtual void selectionStyleChanged(const QVariantMap &style) = 0;
    virtual void openAddLinkPopover(const QString &url, const QString &tooltip, bool newWindow) = 0;
    virtual void leaveForTitle() = 0;
    virtual void leaveForTokens() = 0;
    virtual void pastePicture() = 0; ///< the clipboard has a picture and no text
    virtual QString targetForLinkImage() = 0;
};

/// The road from the page to the program: the object that the page knows as `Bridge`. Its operations bear their script
/// names, where each colon of the operation's name is an underscore.
class ZLEditorWebViewBridge : public QObject {
    Q_OBJECT
public:
    explicit ZLEditorWebViewBridge(ZLEditorWebViewBridgeDelegate &delegate, QObject *parent = nullptr);

    Q_INVOKABLE void jqueryReadyFired();
    Q_INVOKABLE void setPostContent_(const QString &html);
    Q_INVOKABLE void selectionChangedWithText_X_Y_Bold_Italic_Underline_Strikethrough_(
        const QString &text, int x, int y, bool bold, bool italic, bool underline, bool strikethrough);
    Q_INVOKABLE void selectionWasUnselected_(const QString &text);
    Q_INVOKABLE void selectionStyleChanged_(const QVariantMap &style);
    Q_INVOKABLE void openAddLinkPopoverWithURL_Tooltip_OpenInNewTab_(
        const QString &url, const QString &tooltip, const QString &target);
    Q_INVOKABLE void leaveForTitle();
    Q_INVOKABLE void leaveForTokens();
    Q_INVOKABLE void pastePicture();
    Q_INVOKABLE QString targetForLinkImage();

private:
    ZLEditorWebViewBridgeDelegate &m_delegate;
};
