#pragma once

#include "app/Prompts.h"
#include "compose/ComposeView.h"
#include "compose/PostOnScreen.h"

/// Inserting pictures: each file is copied into the cache folder and goes into the page as it is.
class MediaInsertion : public QObject {
    Q_OBJECT
public:
    MediaInsertion(ComposeHost &host, ComposePage &page, ComposeView &view, Prompts &prompts, PostOnScreen &screen);

    /// Asks for a file by the open panel.
    QCoro::Task<void> insertMedia();
    /// Files that were dropped or pasted.
    QCoro::Task<void> insertPictures(QList<QUrl> files);
    /// A picture that has no file, such as a screenshot from the clipboard.
    QCoro::Task<void> insertPicture(QByteArray png);

private:
    /// The copy's address; empty when it could not be made, which was said.
    QUrl copyIntoCacheFolder(const QUrl &file);
    QString pathInCacheFolder(const QString &suffix) const; ///< null when there is no cache folder
    QCoro::Task<void> addToPage(QList<QUrl> copies);
    bool linksToFullImage(const QUrl &copy) const;

    ComposeHost &m_host;
    ComposePage &m_page;
    ComposeView &m_view;
    Prompts &m_prompts;
    PostOnScreen &m_screen;
};
