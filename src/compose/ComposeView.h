#pragma once

#include "compose/ComposePage.h"
#include "compose/PostButtons.h"

#include <QCoroTask>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QUrl>

/// What the writer made of a link.
struct LinkAnswer {
    enum Deed { Cancel, Done, Remove };
    Deed deed = Cancel;
    QString url;
    QString tooltip;
    bool newWindow = false;
};

/// The fields and buttons of the compose screen, as its controller sees them. What the controller sets itself is not
/// reported back: titleDidChange() and tokensDidChange() speak of the user's doings only.
class ComposeView : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    virtual QString title() const = 0;
    virtual void setTitle(const QString &title) = 0;
    virtual QStringList tokens() const = 0;
    virtual void setTokens(const QStringList &tokens) = 0; ///< what is typed of the next one stays
    virtual void forgetTypedToken() = 0; ///< another post comes; undo does not bring it back
    virtual void setTokensShown(bool shown) = 0; ///< a page has none
    virtual void commitTokens() = 0; ///< text that is on its way to a token becomes one
    virtual void focusTitle() = 0;
    virtual void focusTokens() = 0;
    virtual void setButtons(const PostButtons &buttons) = 0;
    virtual void setActionsEnabled(bool enabled) = 0; ///< false while the screen has no blog to write for
    virtual void setSelectionStyle(const SelectionStyle &style) = 0;
    /// A quiet line about the post's state, with a button if `action` names one; an empty text hides it.
    /// Without an icon it is a warning.
    virtual void setNotice(const QString &text, const QString &action, const QString &icon) = 0;
    virtual void setSaveState(const QString &text) = 0; ///< whether the writing is on this computer's disk
    virtual void hidePopupWindows() = 0; ///< completions, the delete question

    // the upload overlay
    virtual void showLoadingView(const QString &heading, const QString &step, const QString &blogName) = 0;
    /// The same cover while the blog deletes the post, without a way back.
    virtual void showDeletingView(const QString &heading, const QString &step) = 0;
    virtual void updateLoadingView(const QString &heading, const QString &step) = 0;
    virtual void setUploadProgress(float progress) = 0;
    virtual void hideLoadingView() = 0;

    // questions
    virtual void showDeleteAlert(const QString &heading, const QString &title, const QString &text) = 0;
    virtual QCoro::Task<LinkAnswer> askForLink(PageLink link) = 0;
    /// The open panel for one picture. An empty URL: none was chosen.
    virtual QCoro::Task<QUrl> chooseMedia() = 0;

Q_SIGNALS:
    void titleDidBeginEditing(); ///< the first change since the title took the focus, before titleDidChange()
    void titleDidChange();
    void tokensDidChange();
    void fieldDidTakeFocus(); ///< the title or the token field
    void insertTabInTitle(); ///< the focus is to go to the page
    void didPressedSaveButton();
    void didPressedPublishButton();
    void didPressedDeleteButton();
    void didPressedNoticeAction();
    void didPressedCancelUpload();
    void didPressedFormatButton(const QString &command); ///< "Bold", "Italic", "InsertOrderedList", ...
    void didPressedLinkButton();
    void didPressedInsertMedia();
    void alertViewDidDismissWithButtonIndex(int index); ///< of the delete question: 0 cancel, 1 delete
    void didResignMain(); ///< the window lost the focus
};
