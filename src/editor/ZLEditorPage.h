#pragma once

#include "compose/ComposePage.h"
#include "editor/EditorCalls.h"
#include "editor/ZLEditorWebViewBridge.h"

#include <QPointer>
#include <functional>

class ZLEditorWebView;

/// The editor page as the compose controller drives it. It stands before the web engine does: the view takes it when it
/// is made, and until the page is ready the newest content to load is kept.
///
/// Loading has two steps, the evaluation in the isolated world and the content itself. Until the page confirms it,
/// other calls wait, and reports are still about the content that was there before.
class ZLEditorPage : public ComposePage, private ZLEditorWebViewBridgeDelegate {
    Q_OBJECT
public:
    explicit ZLEditorPage(QObject *parent = nullptr);

    void loadHTMLContent(const EditorBody &body, int owner) override;
    QCoro::Task<std::optional<QString>> getBodyContent() override;
    QCoro::Task<std::optional<QString>> getRawContent() override;
    void addImage(const ImageInfo &image) override;
    void execCommand(const QString &command) override;
    void addLinkMarkToCurrentSelection() override;
    void addLinkToSelection(const QString &url, const QString &tooltip, bool newWindow) override;
    void removeLinkMarkForCurrentSelection() override;
    void hidePopupWindows() override;
    void focus() override;
    void cleanUndoStack() override;

    bool isReady() const { return m_ready; }
    /// "_self" or "_blank" for the link around a new picture; the default is "_blank".
    void setTargetForLinkImage(std::function<QString()> target) { m_targetForLinkImage = std::move(target); }

    // for the view
    void setView(ZLEditorWebView *view);
    void pageIsGone(); ///< its process ended; the view loads it anew
    void pageIsGivenUp(); ///< its process ended too often
    void setTheme(const QVariantMap &colors);
    EditorCalls &calls() { return m_calls; }
    ZLEditorWebViewBridge &bridge() { return m_bridge; }

private:
    static constexpr int nobody = -1;

    void jqueryReadyFired() override;
    void setPostContent(const QString &html) override;
    void selectionChanged(const QString &text, const QPoint &location) override;
    void selectionWasUnselected(const QString &text) override;
    void openAddLinkPopover(const QString &url, const QString &tooltip, bool newWindow) override;
    bool editorIsMainWindow() override;
    QString targetForLinkImage() override;

    struct Content {
        EditorBody body;
        int owner = nobody;
    };
    void applyContent();
    void sendContent();
    void contentArrived();
    static QCoro::Task<std::optional<QString>> textOf(QFuture<EditorCalls::Answer> answer);

    EditorCalls m_calls;
    ZLEditorWebViewBridge m_bridge;
    QPointer<ZLEditorWebView> m_view;
    std::optional<Content> m_waitingContent; ///< not yet on its way to the page
    Content m_contentOnItsWay; ///< while loading
    int m_owner = nobody; ///< of the content that is in the page
    bool m_ready = false;
    bool m_wasReady = false;
    bool m_loading = false;
    QString m_selectedText;
    SelectionStyle m_style;
    QVariantMap m_theme;
    std::function<QString()> m_targetForLinkImage;
};
