#pragma once

#include "compose/ComposeParts.h"

/// Inserting a picture from the open panel: the chosen file is copied into the cache folder and goes into the page as
/// it is.
class MediaInsertion : public QObject {
    Q_OBJECT
public:
    explicit MediaInsertion(const ComposeParts &parts, QObject *parent = nullptr);
    QCoro::Task<void> insertMedia();

Q_SIGNALS:
    void setPostContent(const QString &html);

private:
    bool isUploading() const;
    /// The copy's address; empty when it could not be made.
    QUrl copyIntoCacheFolder(const QString &file) const;
    bool linksToFullImage(const QUrl &copy) const;

    ComposeParts m_parts;
    bool m_isChoosing = false;
};
