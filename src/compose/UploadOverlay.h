#pragma once

#include "compose/ComposeView.h"
#include "wordpress/Upload.h"

#include <QPointer>

/// The overlay that shows how far the upload of the post on the screen has come. It follows the post, not the screen:
/// it hides when another post comes and is back when the writer returns.
class UploadOverlay : public QObject {
    Q_OBJECT
public:
    enum class Heading {
        PublishingArticle,
        UpdatingArticle,
        SavingDraft,
        SavingToEvernote,
        SchedulingArticle,
        UpdatingDraft,
        MovingToDrafts,
    };

    explicit UploadOverlay(ComposeView &view);

    static QString stepText(Upload::Step step);
    static QString headingText(Heading heading);
    static Heading headingOf(const ZLWordpressPost &sent, Upload::Kind kind, const QDateTime &now);

    /// The upload of the post on the screen, or null.
    void follow(Upload *upload, const QDateTime &now);
    bool isShowing() const { return m_upload; }
    /// Covers the post on the screen while the blog deletes it, so that nothing is typed that would go with it.
    void showDeletion(bool isUnderWay, bool isPage);
    /// The writer gives up: the wait ends.
    void cancel();

Q_SIGNALS:
    void ended(const UploadOutcome &outcome); ///< of the post on the screen

private:
    void update();
    void end(const UploadOutcome &outcome);
    void hide();

    ComposeView &m_view;
    QPointer<Upload> m_upload;
    bool m_isDeletion = false;
    QString m_heading;
};
