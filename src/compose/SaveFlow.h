#pragma once

#include "compose/UploadFlow.h"

/// The Save button: the post goes to the blog as a draft. The file on this computer needs no button.
class SaveFlow : public UploadFlow {
    Q_OBJECT
public:
    explicit SaveFlow(const ComposeParts &parts, QObject *parent = nullptr);
    QCoro::Task<void> didPressedSaveButton();

private:
    void saveDraft();
};
