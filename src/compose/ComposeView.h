#pragma once

#include "compose/ComposePage.h"

#include <QCoroTask>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QUrl>

/// The fields and buttons of the compose screen, as its controller sees them. What the controller sets itself is not
/// reported back: titleDidChange() and tokensDidChange() speak of the user's doings only.
class ComposeView : public QObject {
    Q_OBJECT
public:
    struct Button {
        bool enabled = true;
        double alpha = 1.0;
        QString image; ///< name of an icon resource
        QString alternateImage; ///< the same while pressed
        QString toolTip;
        QString text; ///< the label of the publish button
        bool operator==(const Button &) const = default;
    };

    using QObject::QObject;

    virtual QString title() const = 0;
    virtual void setTitle(const QString &title) = 0;
    virtual QStringList tokens() const = 0;
    virtual void setTokens(const QStringList &tokens) = 0;
    virtual void commitTokens() = 0; ///< text that is on its way to a token becomes one
    virtual void focusTitle() = 0;
    virtual void focusTokens() = 0;
    virtual void setSaveButton(const Button &button) = 0;
    virtual void setPublishButton(const Button &button) = 0;
    virtual void setCalendarButton(const Button &button) = 0;
    virtual void setDeleteToolTip(const QString &toolTip) = 0;
    virtual void setActionsEnabled(bool enabled) = 0; ///< false while the screen has no blog to write for
    virtual void setSelectionStyle(const SelectionStyle &style) = 0;
    /// A quiet line about the post's state; empty hides it.
    virtual void setNotice(const QString &text) = 0;
    virtual void setSaveState(const QString &text) = 0; ///< whether the writing is on this computer's disk
    virtual void hidePopupWindows() = 0; ///< completions, the delete question

    // the upload overlay
    virtual void showLoadingView(const QString &heading, const QString &step, const QString &blogName) = 0;
    virtual void updateLoadingView(const QString &heading, const QString &step) = 0;
    virtual void setUploadProgress(float progress) = 0;
    virtual void hideLoadingView() = 0;

    // questions
    virtual void showDeleteAlert(const QString &heading, const QString &title) = 0;
    virtual void showAddLinkSheet(const QString &url, const QString &tooltip, bool newWindow) = 0;
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
    void didPressedCancelUpload();
    void didPressedFormatButton(const QString &command); ///< "Bold", "Italic", "InsertOrderedList", ...
    void didPressedLinkButton();
    void didPressedInsertMedia();
    void alertViewDidDismissWithButtonIndex(int index); ///< of the delete question: 0 cancel, 1 delete
    void addLinkDidClickDone(const QString &url, const QString &tooltip, bool newWindow);
    void addLinkDidClickCancel();
    void didResignMain(); ///< the window lost the focus
};
