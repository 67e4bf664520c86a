#pragma once

#include "app/ComposeHost.h"
#include "compose/ComposeView.h"

#include <QHash>
#include <QObject>
#include <QStringList>

/// The overlay that shows the steps of an upload, and the list of the uploads under way. The overlay follows the post,
/// not the screen: it hides when another post comes on the screen and is back when the writer returns.
class UploadOverlay : public QObject {
    Q_OBJECT
public:
    enum Step { Preparing = 0, SyncingTaxonomies = 1, SyncingImages = 2, UploadingContent = 3, Finishing = 4 };
    enum Heading {
        PublishingArticle = 0,
        UpdatingArticle = 1,
        SavingDraft = 2,
        SavingToEvernote = 3,
        SchedulingArticle = 4,
        UpdatingDraft = 5,
        MovingToDrafts = 6,
    };

    UploadOverlay(ComposeHost &host, ComposeView &view, QObject *parent = nullptr);

    static QString stepText(int step);
    static QString headingText(int heading);
    /// Whether an answer about `other` is about the post on the screen: by id, or by title while that has no id.
    static bool matches(const ZLWordpressPost &onScreen, const ZLWordpressPost &other);

    /// An id that is there already keeps its step and heading. A post without an id is not listed.
    void addPostForLoadingList(const PostPtr &post, int heading);
    void removePostFromLoadingList(const QString &id);
    /// A new post is listed under the id that it had before the blog gave it one.
    void removePostOfRow(const LocalPostPtr &row);
    bool isLoading(const QString &id) const { return loadingPostIds.contains(id); }

    void showLoadingView(int heading);
    void hideLoadingView();
    bool isShowingLoadingView() const { return m_isShowingLoadingView; }
    /// A post came on the screen: the overlay of its upload, or none.
    void follow(const PostPtr &onScreen);
    void didUpdateLoadingStatus(const PostPtr &post, int step, const PostPtr &onScreen);
    void didSendBodyData(const PostPtr &post, float progress, const PostPtr &onScreen);
    /// The writer gives up: the service's wait ends and the overlay goes, even if the service knows of no upload.
    void cancel(const PostPtr &onScreen);

private:
    void show(int heading, int step, const QString &blogName);

    ComposeHost &m_host;
    ComposeView &m_view;
    bool m_isShowingLoadingView = false;
    int m_heading = -1;
    QStringList loadingPostIds;
    QHash<QString, int> loadingPostStatuses;
    QHash<QString, int> loadingPostTypes;
    QHash<QString, PostPtr> m_sentPosts; ///< the very records that the service works on
    /// Where each goes. The overlay does not follow a change of the blog: an upload goes on to the one it began with.
    QHash<QString, QString> m_blogNames;
};
