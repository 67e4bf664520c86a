#pragma once

#include "compose/ComposePage.h"
#include "editor/EditorCalls.h"
#include "editor/ZLEditorWebViewBridge.h"

#include <QTimer>
#include <functional>

class EditorView;

/// The editor page as the compose controller drives it. It stands before the web engine does: the view takes it when it
/// is made, and until the page is ready the newest content to load is kept.
///
/// Until the page confirms that a content is there, other calls wait, and reports are still about the one before. A
/// content that is too much for the page is shown as its source.
class ZLEditorPage : public ComposePage, private ZLEditorWebViewBridgeDelegate {
    Q_OBJECT
public:
    explicit ZLEditorPage(QObject *parent = nullptr);

    void loadHTMLContent(const EditorBody &body, int owner, Loading loading) override;
    QCoro::Task<std::optional<QString>> getBodyContent() override;
    QCoro::Task<std::optional<QString>> getRawContent() override;
    void addImage(const ImageInfo &image) override;
    void execCommand(const QString &command) override;
    QCoro::Task<std::optional<PageLink>> addLinkMarkToCurrentSelection() override;
    void addLinkToSelection(const QString &url, const QString &tooltip, bool newWindow) override;
    void removeLink() override;
    void removeLinkMarkForCurrentSelection() override;
    void hidePopupWindows() override;
    void focus() override;
    void cleanUndoStack() override;
    void setBlogURL(const QUrl &url) override;

    bool isReady() const { return m_ready; }
    /// "_self" or "_blank" for the link around a new picture; the default is "_blank".
    void setTargetForLinkImage(std::function<QString()> target) { m_targetForLinkImage = std::move(target); }

    // for the view
    void setView(EditorView *view);
    EditorView *view() const { return m_view; }
    void pageIsGone(); ///< its process ended; the view loads it anew
    void pageIsGivenUp(); ///< its process ended too often
    void setTheme(const QVariantMap &colors);
    EditorCalls &calls() { return m_calls; }
    ZLEditorWebViewBridge &bridge() { return m_bridge; }

private:
    using Function = EditorCalls::Function;
    static constexpr int nobody = -1;
    static constexpr int mostFailures = 2; ///< to show a content; then it is shown as its source
    static constexpr std::chrono::milliseconds loadLimit{3500}; ///< of processor time, however busy the machine is
    static constexpr std::chrono::milliseconds longestWait{30'000};

    void jqueryReadyFired() override;
    void setPostContent(const QString &html) override;
    void selectionChanged(const QString &text, const QPoint &location) override;
    void selectionWasUnselected(const QString &text) override;
    void selectionStyleChanged(const QVariantMap &style) override;
    void openAddLinkPopover(const QString &url, const QString &tooltip, bool newWindow) override;
    void leaveForTitle() override;
    void leaveForTokens() override;
    void pastePicture() override;
    QString targetForLinkImage() override;

    struct Content {
        EditorBody body;
        int owner = nobody;
        bool isUpdate = false; ///< of the post that the page has
        int failures = 0;
    };
    void applyContent();
    void watchLoading();
    void contentHangs();
    void contentArrived();
    static QCoro::Task<std::optional<QString>> textOf(QFuture<EditorCalls::Answer> answer);
    static QCoro::Task<std::optional<PageLink>> linkOf(QFuture<EditorCalls::Answer> answer);

    EditorCalls m_calls;
    ZLEditorWebViewBridge m_bridge;
    EditorView *m_view = nullptr;
    std::optional<Content> m_waitingContent; ///< not yet on its way to the page
    Content m_contentOnItsWay; ///< while loading
    int m_owner = nobody; ///< of the content that is in the page
    bool m_ready = false;
    bool m_wasReady = false;
    bool m_loading = false;
    QTimer m_watch; ///< while loading
    std::chrono::milliseconds m_processorTime{}; ///< of the page before
    QString m_selectedText;
    SelectionStyle m_style;
    QVariantMap m_theme;
    QUrl m_blogURL;
    std::function<QString()> m_targetForLinkImage;
};
