#pragma once

#include "app/ComposeScreen.h"
#include "compose/ConflictFlow.h"
#include "compose/DeleteFlow.h"
#include "compose/LinkFlow.h"
#include "compose/MediaInsertion.h"
#include "compose/PostNotice.h"
#include "compose/SendFlow.h"
#include "compose/UploadOverlay.h"

#include <QScopeGuard>

/// The screen on which one post is written: logic over the page, the view and the host.
///
/// A post comes on the screen blank, by newPost(), or from its row, by loadPost(). What is typed goes into the document
/// of its file at once; a blank post gets that file at the first sign of work. Every button, key and menu comes by
/// doActionForCurrentPost(), which alone decides whether it may: one thing at a time, what actions() allow, and nothing
/// before a conflict is answered. The overlay covers the screen as long as the post is on its way.
class ZLMainWindowCreateViewController : public QObject, public ComposeScreen {
    Q_OBJECT
public:
    ZLMainWindowCreateViewController(
        ComposeHost &host, ComposePage &page, ComposeView &view, Prompts &prompts, QObject *parent = nullptr);
    ~ZLMainWindowCreateViewController() override;

    /// The post list, which follows what is typed.
    void setRowUpdates(RowUpdates *rows) { m_screen.setRowUpdates(rows); }

    // for the post list and the main window
    void loadPost(const LocalPostPtr &row, PostAction action = PostAction::None);
    QCoro::Task<void> doActionForCurrentPost(PostAction action);
    /// What the buttons and menus offer now.
    PostActions actions() const;
    void makeTitleBecomeFirstResponder();
    /// False for a blank post with nothing in it: there is no need for another.
    QCoro::Task<bool> canCreateNewPost();
    bool isUploadingCurrentPost() const { return m_overlay.isShowing(); }
    void cleanUndoStack();
    void hidePopupWindows();
    void execCommand(const QString &command);
    void addLinkToCurrentSelection();
    void insertMedia();
    /// The program is about to end: done when what was typed so far is in its document. As slow as the page.
    QCoro::Task<void> commitEditing();
    /// Writes what is unsaved, of every open document.
    void saveDocuments();

    // ComposeScreen
    PostPtr currentPost() const override { return m_screen.post(); }
    DocumentPtr currentDocument() const override { return m_screen.currentDocument(); }
    void updatePreferencesForNewPost() override;
    void newPost() override;
    void reloadCurrentPostAfterSyncingEngine(SyncEngine engine) override;

Q_SIGNALS:
    void didLoadedPost(const PostPtr &post); ///< it has come on the screen
    void actionsDidChange();

private:
    /// Marks a flow as under way for as long as the guard lives.
    auto busy() const
    {
        *m_isBusy = true;
        return qScopeGuard([isBusy = m_isBusy] { *isBusy = false; });
    }
    void observeView();
    void observePage();
    void observeDocument();
    void observeNotifications();
    void observeFlows();

    QCoro::Task<void> load(LocalPostPtr row, PostAction action);
    void readAgain();
    void show(ComposePage::Loading loading);
    void loadContent(ComposePage::Loading loading);
    void updateState();
    void showNotice(const PostNotice &notice);
    void showOverlay(Upload *upload);

    QCoro::Task<void> perform(PostAction action);
    QCoro::Task<void> revertToBlogVersion();
    QCoro::Task<bool> isReported();
    QCoro::Task<bool> mayGiveUpChanges(QString question, QString button);
    QCoro::Task<void> takeBlogVersion();
    QCoro::Task<void> publishAsNewPost();
    /// Runs a flow that changes the text, unless another is under way or the text cannot be changed now.
    template <typename Flow>
    QCoro::Task<void> editBy(Flow flow);
    bool mayBegin(PostAction action) const;
    void didEndUpload(const UploadOutcome &outcome);
    QCoro::Task<void> sendWithNewLogin();
    void didUpdatePost(const UpdatedPostInfo &info);

    ComposeHost &m_host;
    ComposePage &m_page;
    ComposeView &m_view;
    Prompts &m_prompts;
    PostOnScreen m_screen;
    UploadOverlay m_overlay;
    SendFlow m_send;
    ConflictFlow m_conflict;
    DeleteFlow m_delete;
    MediaInsertion m_media;
    LinkFlow m_links;
    PostNotice m_notice;
    PostPtr m_blogVersion; ///< of the post on the screen, where the blog has made another text of it
    bool m_awaitsOutcome = false; ///< the blog has the post, and its file is about to say so
    std::shared_ptr<bool> m_isBusy = std::make_shared<bool>(false); ///< a flow is under way, which may outlive this
};
