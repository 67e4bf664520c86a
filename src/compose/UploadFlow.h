#pragma once

#include "compose/ComposeParts.h"

/// What saving and publishing have in common: the guards, the post taken from the screen, the start of the upload.
class UploadFlow : public QObject {
    Q_OBJECT
protected:
    explicit UploadFlow(const ComposeParts &parts, QObject *parent = nullptr);

    /// False while a sheet owns the screen, another flow is under way or the post is being uploaded already.
    bool mayBegin() const;
    /// Says so when there is no connection.
    bool isReachable() const;
    /// Copies title and content from the screen into the post. False: the page gave no answer, or another post came on
    /// the screen before it did.
    QCoro::Task<bool> takeTitleAndContent();
    bool isEmptyPost() const;
    void alertForEmptyPost() const;
    /// Brings the post on the screen into a state that can be sent. False: it cannot be, and the writer was told why.
    QCoro::Task<bool> preparePost();
    /// The tokens, and the id of a post that has none yet.
    void takeTaxonomiesAndId();
    void startUpload(int kind, int heading);

    ComposeParts m_parts;
};
