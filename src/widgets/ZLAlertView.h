#pragma once

#include "widgets/ZLCoverView.h"

class QLabel;
class QPushButton;

/// The question before a post is deleted, laid over the compose view.
class ZLAlertView : public ZLCoverView {
    Q_OBJECT
public:
    explicit ZLAlertView(QWidget *parent);

    /// `title` is the post's; it is shown in double quotes. `text` tells what becomes of it.
    void ask(const QString &heading, const QString &title, const QString &text);

Q_SIGNALS:
    void didDismissWithButtonIndex(int index); ///< 0 cancel, 1 delete

protected:
    void didPressEscape() override { dismiss(0); }
    void keyPressEvent(QKeyEvent *event) override;

private:
    void dismiss(int index);

    QLabel *m_heading;
    QLabel *m_title;
    QLabel *m_text;
    QPushButton *m_cancel;
    QPushButton *m_delete;
};
