#include "compose/ComposeButtons.h"

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

QString toolTip(const QString &verb, int type)
{
    return verb + (type == ZLWordpressPost::Page ? QLatin1String(" Page") : QLatin1String(" Post"));
}

void setEnabled(ComposeView::Button &button, bool enabled)
{
    button.enabled = enabled;
    button.alpha = enabled ? 1.0 : 0.5;
}

void setPublishFace(ComposeView::Button &button, const Face &face)
{
    button.image = QLatin1String(face.publishImage);
    button.alternateImage = QLatin1String(face.publishAlternate);
    button.text = QLatin1String(face.word);
}
} // namespace

ComposeButtons::ComposeButtons(ComposeView &view)
    : m_view(view)
{
    m_save.image = m_save.alternateImage = QStringLiteral("editor_save_button");
    m_save.toolTip = QStringLiteral("Save post");
    m_publish.toolTip = QStringLiteral("Publish post");
    setPublishFace(m_publish, publishFace);
    m_calendar.image = QLatin1String(publishFace.calendarImage);
    m_calendar.alternateImage = QLatin1String(publishFace.calendarAlternate);
    m_calendar.toolTip = QStringLiteral("Schedule");
    m_deleteToolTip = QStringLiteral("Delete post");
    show();
}

bool ComposeButtons::isInFuture(const ZLWordpressPost &post, const QDateTime &now)
{
    return post.createdAt.isValid() && post.createdAt > now;
}

void ComposeButtons::setActionButtonsForPost(const ZLWordpressPost &post, const QDateTime &now)
{
    const Face &face = faceFor(isInFuture(post, now), post.status);
    setPublishFace(m_publish, face);
    m_calendar.image = QLatin1String(face.calendarImage);
    m_calendar.alternateImage = QLatin1String(face.calendarAlternate);
    nameForType(face.word, post.type);
    const bool isSolvedConflict = post.localPost && post.localPost->status == ZLLocalPostRepresentation::ConflictSolved;
    setEnabled(m_save, post.status != ZLWordpressPost::Publish && !isSolvedConflict);
    setEnabled(m_publish, !isSolvedConflict);
    show();
}

void ComposeButtons::setScheduleImageStatusOn(bool on, int status)
{
    const Face &face = faceFor(on, status);
    setPublishFace(m_publish, face);
    m_calendar.image = QLatin1String(on ? scheduleFace.calendarImage : publishFace.calendarImage);
    show();
}

void ComposeButtons::setButtonsForBlankPost(int type)
{
    if (m_isNamedForType)
        nameForType(publishFace.word, type);
    setEnabled(m_save, true);
    setEnabled(m_publish, true);
    show();
}

void ComposeButtons::setButtonsAfterUpload(const ZLWordpressPost &post, bool withToolTips)
{
    const Face &face = faceFor(false, post.status);
    setPublishFace(m_publish, face);
    setEnabled(m_save, post.status != ZLWordpressPost::Publish);
    if (withToolTips)
        nameForType(face.word, post.type);
    show();
}

void ComposeButtons::nameForType(const char *publishVerb, int type)
{
    m_publish.toolTip = toolTip(QLatin1String(publishVerb), type);
    m_save.toolTip = toolTip(QStringLiteral("Save"), type);
    m_deleteToolTip = toolTip(QStringLiteral("Delete"), type);
    m_isNamedForType = true;
}

void ComposeButtons::show()
{
    m_view.setSaveButton(m_save);
    m_view.setPublishButton(m_publish);
    m_view.setCalendarButton(m_calendar);
    m_view.setDeleteToolTip(m_deleteToolTip);
}
