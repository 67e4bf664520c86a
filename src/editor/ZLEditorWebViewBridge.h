#pragma once

#include <QObject>
#include <QPoint>
#include <QString>

/// Whom the page's script reaches through `Bridge`.
class ZLEditorWebViewBridgeDelegate {
public:
    virtual ~ZLEditorWebViewBridgeDelegate() = default;
    virtual void jqueryReadyFired() { }
    virtual void setPostContent(const QString &) { }
    virtual void selectionChanged(const QString &, const QPoint &) { }
    virtual void selectionWasUnselected(const QString &) { }
    virtual void openAddLinkPopover(const QString &, const QString &, bool) { }
    virtual void resizeTitleView() { }
    virtual bool editorIsMainWindow() { return false; }
    virtual QString targetForLinkImage() { return {}; }
};

/// The object that the page knows as `Bridge`. Its operations bear their script names, where each colon of the
/// operation's name is an underscore.
class ZLEditorWebViewBridge : public QObject {
    Q_OBJECT
public:
    explicit ZLEditorWebViewBridge(ZLEditorWebViewBridgeDelegate &delegate, QObject *parent = nullptr);

    Q_INVOKABLE void jqueryReadyFired();
    Q_INVOKABLE void setPostContent_(const QString &html);
    Q_INVOKABLE void selectionChangedWithText_X_Y_(const QString &text, int x, int y);
    Q_INVOKABLE void selectionChangedWithText_X_Y_Bold_Italic_Underline_Strikethrough_(
        const QString &text, int x, int y, bool bold, bool italic, bool underline, bool strikethrough);
    Q_INVOKABLE void selectionWasUnselected_(const QString &text);
    Q_INVOKABLE void lastSelection_(const QString &text);
    Q_INVOKABLE void openAddLinkPopoverWithURL_Tooltip_OpenInNewTab_(
        const QString &url, const QString &tooltip, const QString &target);
    Q_INVOKABLE void resizeTitleView();
    Q_INVOKABLE void printText_(const QString &text);
    Q_INVOKABLE bool editorIsMainWindow();
    Q_INVOKABLE QString targetForLinkImage();

private:
    ZLEditorWebViewBridgeDelegate &m_delegate;
};
