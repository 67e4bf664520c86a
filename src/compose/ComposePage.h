#pragma once

#include "wordpress/ZLWordpressService.h"

#include <QCoroTask>
#include <QObject>
#include <QString>
#include <optional>

/// A picture on its way into the page.
struct ImageInfo {
    QUrl thumbUrl;
    QUrl linkTo; ///< empty: no link, which reaches the page as "(null)"
    QString altText;
    QString caption;
    QString tooltip;
    QUrl featuredUrl; ///< set when the picture is to be the featured image
};

/// The style of the text around the cursor, for the buttons.
struct SelectionStyle {
    bool bold = false, italic = false, underline = false, strikethrough = false;
    bool orderedList = false, unorderedList = false, link = false;
};

/// A link, or what is to become one.
struct PageLink {
    QString url, tooltip; ///< empty where there is no link yet
    QString text; ///< that is or becomes the link
    bool newWindow = false;
    bool isLink = false;
};

/// The editor page as the compose controller sees it: the functions of the script contract. Answers are asynchronous;
/// nullopt means that the page is not there (not loaded yet, died, closed).
class ComposePage : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    enum class Loading {
        NewPost,
        SamePost, ///< what of the content is there already stays, and the cursor with it
    };
    /// `owner` names the post that the content is of; it comes back with the reports about it.
    virtual void loadHTMLContent(const EditorBody &body, int owner, Loading loading) = 0;
    virtual QCoro::Task<std::optional<QString>> getBodyContent() = 0; ///< the form that goes to the blog
    virtual QCoro::Task<std::optional<QString>> getRawContent() = 0;
    virtual void addImage(const ImageInfo &image) = 0;
    virtual void execCommand(const QString &command) = 0; ///< "Bold", "Italic", "InsertOrderedList", ...
    /// Notes the link under the cursor, or else the selection; nullopt: there is no cursor.
    virtual QCoro::Task<std::optional<PageLink>> addLinkMarkToCurrentSelection() = 0;
    /// Changes the noted link, or makes one. Does nothing if another text came in its place meanwhile.
    virtual void addLinkToSelection(const QString &url, const QString &tooltip, bool newWindow) = 0;
    virtual void removeLink() = 0; ///< the noted one, or that under the cursor
    virtual void removeLinkMarkForCurrentSelection() = 0;
    virtual void hidePopupWindows() = 0;
    virtual void focus() = 0;
    virtual bool isShowingImageEditor() const { return false; }
    virtual void cleanUndoStack() = 0;
    /// Pictures on this computer and in its network are shown only if the blog is there, too.
    virtual void setBlogURL(const QUrl &url) = 0;

Q_SIGNALS:
    void ready(); ///< the page reported for the first time
    /// The page's content changed; `html` is in the blog's form, with local pictures as they are. The last report about
    /// a content can come when another one has been sent to the page already; `owner` tells them apart.
    void setPostContent(const QString &html, int owner);
    void selectionChanged(const QString &text, const SelectionStyle &style);
    void openAddLink(const QString &url, const QString &tooltip, bool newWindow);
    void picturesOffered(const QList<QUrl> &files); ///< were dropped or pasted
    void pictureOffered(const QByteArray &png); ///< was pasted
    void focusTitleRequested();
    void focusTokensRequested();
    void gaveUp(); ///< the page's process died too often; it stays away until there is other content
    void crashed(); ///< the page's process died; it has been loaded anew and wants its content again
};
