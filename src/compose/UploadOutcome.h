#pragma once

#include "compose/ComposeButtons.h"
#include "compose/ComposeParts.h"

/// What the screen makes of the notifications of an upload: its steps, its end, its failure. They speak of any post,
/// on the screen or not.
class UploadOutcome : public QObject {
    Q_OBJECT
public:
    UploadOutcome(const ComposeParts &parts, ComposeButtons &buttons, QObject *parent = nullptr);

private:
    void observeSteps();
    void didLoadedPost(const PostPtr &returned, const UpdatedPostInfo &info);
    void didLoadOriginalPost(const PostPtr &returned, const UpdatedPostInfo &info);
    void didFailToUploadPost(const PostPtr &post);

    ComposeParts m_parts;
    ComposeButtons &m_buttons;
};
