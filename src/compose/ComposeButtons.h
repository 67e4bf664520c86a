#pragma once

#include "compose/ComposeView.h"
#include "model/ZLWordpressPost.h"

/// What the buttons show for every post: the table by status and date, and the roads that change only a part of it.
class ComposeButtons {
public:
    explicit ComposeButtons(ComposeView &view);

    /// The whole table.
    void setActionButtonsForPost(const ZLWordpressPost &post, const QDateTime &now);
    /// Calendar and publish images only; the calendar's alternate image stays.
    void setScheduleImageStatusOn(bool on, int status);
    /// A blank post. The tooltips are renewed if a post of another type has set them.
    void setButtonsForBlankPost(int type);
    /// After an upload came back: publish images and the save button by status, tooltips on request.
    void setButtonsAfterUpload(const ZLWordpressPost &post, bool withToolTips);

    static bool isInFuture(const ZLWordpressPost &post, const QDateTime &now);

private:
    void nameForType(const char *publishVerb, int type);
    void show();

    ComposeView &m_view;
    ComposeView::Button m_save;
    ComposeView::Button m_publish;
    ComposeView::Button m_calendar;
    QString m_deleteToolTip;
    bool m_isNamedForType = false;
};
