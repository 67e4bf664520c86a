#pragma once

#include "compose/ComposeParts.h"

/// The Delete button: the question over the view, then the post goes from this computer or from the blog.
class DeleteFlow : public QObject {
    Q_OBJECT
public:
    explicit DeleteFlow(const ComposeParts &parts, QObject *parent = nullptr);
    void didPressedDeleteButton();

Q_SIGNALS:
    void cleanEditorForNewPost();

private:
    void alertViewDidDismissWithButtonIndex(int index);
    void deleteCurrentPost();

    ComposeParts m_parts;
    int m_askedGeneration = -1;
};
