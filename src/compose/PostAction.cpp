#include "compose/PostAction.h"

#include "model/ZLDocument.h"

namespace {
PostActions actions(bool isKeptCopy, bool isPublished)
{
    if (isKeptCopy) // it stands for no post on the blog
        return PostAction::Delete | PostAction::PublishAsNew;
    return PostAction::Publish | PostAction::Delete | (isPublished ? PostAction::MoveToDrafts : PostAction::Save);
}

bool isKeptCopy(const ZLLocalPostRepresentation &row)
{
    return row.status == ZLLocalPostRepresentation::ConflictSolved;
}
} // namespace

PostActions actionsOfRow(const ZLLocalPostRepresentation &row)
{
    return actions(isKeptCopy(row), row.published);
}

PostActions actionsOfPost(const ZLWordpressPost &post, const ZLDocument *document)
{
    const bool isCopy = post.localPost && isKeptCopy(*post.localPost);
    PostActions allowed = actions(isCopy, post.status == ZLWordpressPost::Publish) | PostAction::Edit;
    if (document && document->hasSyncedVersion())
        allowed |= PostAction::Revert;
    if (document && document->isInConflict())
        allowed |= PostAction::AnswerConflict;
    return allowed;
}
