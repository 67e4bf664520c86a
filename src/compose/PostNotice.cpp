#include "compose/PostNotice.h"

PostNotice PostNotice::of(const ZLWordpressPost &post, const ZLDocument *document, bool isOnItsWay)
{
    if (document && document->isDamaged())
        return {QStringLiteral("The file of this post cannot be read. It is left as it is until you write.")};
    if (document && document->isInConflict())
        return {QStringLiteral("This post was changed both here and on the blog. Both versions are kept."),
            QStringLiteral("Choose…"), PostAction::AnswerConflict};
    if (post.localPost && post.localPost->status == ZLLocalPostRepresentation::ConflictSolved)
        return {QStringLiteral("This is a copy that was kept of two versions. It does not belong to the post on the "
                               "blog."),
            QStringLiteral("Publish as a New Post"), PostAction::PublishAsNew};
    if (post.blogStatus == QLatin1String("private"))
        return {QStringLiteral("This post is private. It stays so when you update it."), {}, PostAction::None,
            QStringLiteral("postlist_private_icon")};
    if (post.blogStatus == QLatin1String("pending"))
        return {
            QStringLiteral("This post waits for a review on the blog. \"Save\" leaves it waiting, \"Publish\" makes "
                           "it public."),
            {}, PostAction::None, QStringLiteral("postlist_pending_icon")};
    if (document && !isOnItsWay && document->post.firstPublishBegan.isValid())
        return ofUnclearUpload();
    return {};
}

PostNotice PostNotice::ofUnclearUpload()
{
    return {
        QStringLiteral("The upload did not come to its end, and the post may be there. Before it is sent again, the "
                       "blog is looked through for it.")};
}

PostNotice PostNotice::ofGonePost(const ZLWordpressPost &post)
{
    return {QStringLiteral("The blog does not have this post any more."),
        post.status == ZLWordpressPost::Draft ? QStringLiteral("Save as a New Draft")
                                              : QStringLiteral("Publish as a New Post"),
        PostAction::PublishAsNew};
}

PostNotice PostNotice::ofOtherTextOnBlog()
{
    return {QStringLiteral("The blog has changed the text of this post. Here it is as you sent it."),
        QStringLiteral("Take the Blog's Version"), PostAction::TakeBlogVersion};
}
