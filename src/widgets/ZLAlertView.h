#pragma once

#include "widgets/ZLSheet.h"

/// The question before a post is deleted.
class ZLAlertView : public ZLSheet {
    Q_OBJECT
public:
    ZLAlertView();

    bool isAlert() const override { return true; }
    /// `title` is the post's; it is shown in double quotes. `text` tells what becomes of it.
    void ask(const QString &heading, const QString &title, const QString &text);

Q_SIGNALS:
    void didDismissWithButtonIndex(int index); ///< 0 cancel, 1 delete

protected:
    void didPressReturn() override { Q_EMIT didDismissWithButtonIndex(0); }
    void didPressEscape() override { Q_EMIT didDismissWithButtonIndex(0); }

private:
    QPushButton *m_delete;
};
