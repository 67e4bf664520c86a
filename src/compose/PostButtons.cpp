#include "compose/PostButtons.h"

#include "model/ZLWordpressPost.h"

namespace {
/// The three faces of the publish button, with the calendar that goes with each.
struct Face {
    const char *word; ///< of the label and the tooltip
    const char *publishImage;
    const char *publishAlternate;
    const char *calendarImage;
    const char *calendarAlternate;
};
constexpr Face publishFace{"Publish", "editor_publish_button", "editor_publish_button_down",
    "editor_button_calendar_off", "editor_button_calendar_press"};
constexpr Face updateFace{"Update", "editor_update_button", "editor_update_button_down",
    "editor_button_calendar_published", "editor_button_calendar_published"};
constexpr Face scheduleFace{"Schedule", "editor_schedule_button", "editor_schedule_button_down",
    "editor_button_calendar_active", "editor_button_calendar_off"};

const Face &faceFor(bool future, int status)
{
    if (future)
        return scheduleFace;
    return status == ZLWordpressPost::Publish ? updateFace : publishFace;
}

QString noun(const ZLWordpressPost &post)
{
    if (!post.localPost)
        return QStringLiteral("post"); // a blank one
    return post.type == ZLWordpressPost::Page ? QStringLiteral("Page") : QStringLiteral("Post");
}
} // namespace

PostButtons PostButtons::of(const ZLWordpressPost &post, PostActions allowed, const QDateTime &now)
{
    const Face &face = faceFor(isInFuture(post, now), post.status);
    const auto image = [](const char *name) { return QString::fromLatin1(name); };
    const QString save = QStringLiteral("editor_save_button");
    const QString remove = QStringLiteral("editor_delete_button");
    const QString word = QString::fromLatin1(face.word);
    const QString name = noun(post);
    return {
        {allowed.testFlag(PostAction::Save), save, save, QStringLiteral("Save ") + name, {}},
        {allowed.testFlag(PostAction::Publish), image(face.publishImage), image(face.publishAlternate),
            word + u' ' + name, word},
        {true, image(face.calendarImage), image(face.calendarAlternate), QStringLiteral("Schedule"), {}},
        {allowed.testFlag(PostAction::Delete), remove, remove, QStringLiteral("Delete ") + name, {}},
    };
}

bool isInFuture(const ZLWordpressPost &post, const QDateTime &now)
{
    return post.createdAt.isValid() && post.createdAt > now;
}
