#pragma once

#include "widgets/ZLCoverView.h"

class QLabel;
class QProgressBar;
class QPushButton;
class ZLSpinner;

/// The overlay of an upload: what is done, which step it is at, where it goes, and a way to give up.
class ZLLoadingView : public ZLCoverView {
    Q_OBJECT
public:
    explicit ZLLoadingView(QWidget *parent);

    void setPostTypeText(const QString &heading);
    void setCurrentStatus(const QString &step);
    void setBlogName(const QString &blogName); ///< where it goes; empty: nowhere
    void setCanCancel(bool canCancel);
    void setProgress(float progress); ///< from 0 to 1; the bar shows between the two
    void takeFocus(); ///< itself, and no button: whoever is still typing must not press one

Q_SIGNALS:
    void didPressCancel();

protected:
    void didPressEscape() override { Q_EMIT didPressCancel(); }
    void keyPressEvent(QKeyEvent *event) override;

private:
    ZLSpinner *m_spinner;
    QLabel *m_heading;
    QLabel *m_step;
    QLabel *m_hint; ///< shows once somebody types at it
    QLabel *m_blog;
    QProgressBar *m_progress;
    QPushButton *m_cancel;
};
