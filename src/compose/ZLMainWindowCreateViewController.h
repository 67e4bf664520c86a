#pragma once

#include "app/ComposeScreen.h"
#include "compose/ComposeButtons.h"
#include "compose/DeleteFlow.h"
#include "compose/LinkFlow.h"
#include "compose/MediaInsertion.h"
#include "compose/PublishFlow.h"
#include "compose/SaveFlow.h"
#include "compose/UploadOutcome.h"

/// The screen on which one post is written: logic over the page, the view and the host.
///
/// A post comes on the screen blank, by newPost(), or from its row, by loadPost(). What is typed goes into the document
/// of its file at once; a blank post gets that file at the first sign of work. Save and Publish ask the page for the
/// form that goes to the blog and hand the post to the service; the outcome comes back as a notification, and the
/// overlay covers the screen until it does.
class ZLMainWindowCreateViewController : public QObject, public ComposeScreen {
    Q_OBJECT
public:
    ZLMainWindowCreateViewController(
        ComposeHost &host, ComposePage &page, ComposeView &view, Prompts &prompts, QObject *parent = nullptr);
    ~ZLMainWindowCreateViewController() override;

    /// The post list, which follows what is typed.
    void setRowUpdates(RowUpdates *rows) { m_screen.setRowUpdates(rows); }

    // for the post list and the main window
    void loadPost(const LocalPostPtr &row);
    void loadLocalPost(const LocalPostPtr &row);
    void loadLocalPostAndDoAction(const LocalPostPtr &row, int action); ///< of AwaitingAction
    void doActionForCurrentPost(int action);
    void cleanEditorForNewPost();
    void makeTitleBecomeFirstResponder();
    /// False for a blank post with nothing in it: there is no need for another.
    QCoro::Task<bool> canCreateNewPost();
    bool canSaveCurrentPost() const;
    bool isUploadingCurrentPost() const;
    void cleanUndoStack();
    void hidePopupWindows();
    void didPressedSaveButton();
    void didPressedPublishButton();
    void didPressedDeleteButton();
    void insertMedia();
    void execCommand(const QString &command);
    void addLinkToCurrentSelection();
    /// The program is about to end: done when what was typed so far is in its document. As slow as the page.
    QCoro::Task<void> commitEditing();
    /// Writes what is unsaved, of every open document.
    void saveDocuments();

    // ComposeScreen
    PostPtr currentPost() const override { return m_screen.post(); }
    DocumentPtr currentDocument() const override { return m_screen.currentDocument(); }
    void updatePreferencesForNewPost() override;
    void newPost() override;
    void setIsNewPostNotInList(bool value) override { m_screen.setIsNewPostNotInList(value); }
    void reloadCurrentPostAfterSyncingEngine(int engine) override;
    void didSendBodyData(const PostPtr &post, float progress) override;

Q_SIGNALS:
    void didLoadedPost(const PostPtr &post); ///< it has come on the screen

private:
    void observeView();
    void observePage();
    void observeScreen();
    void observeNotifications();

    QCoro::Task<void> load(LocalPostPtr row, int action);
    QCoro::Task<void> reload(LocalPostPtr row);
    void loadPostFromDocument(ComposePage::Loading loading);
    void takePostFromDocument();
    void loadTokens();
    void loadContent(ComposePage::Loading loading);
    void showNotice();
    void loadBlankPage(ComposePage::Loading loading);

    bool promoteIfBlank();
    void titleDidChange();
    void setPostContent(const QString &html, int generation);
    bool isChangedContent(const QString &html) const;
    void updateTaxonomiesAtLocalFile();

    void updateActionsEnabled();

    ComposeHost &m_host;
    ComposePage &m_page;
    ComposeView &m_view;
    Prompts &m_prompts;
    PostOnScreen m_screen;
    UploadOverlay m_overlay;
    ComposeButtons m_buttons;
    ComposeParts m_parts;
    SaveFlow m_save;
    PublishFlow m_publish;
    DeleteFlow m_delete;
    MediaInsertion m_media;
    LinkFlow m_links;
    UploadOutcome m_outcome;
};
