#pragma once

#include <QWidget>

class ZLIconButton;

/// The narrow bar at the left with the window's main buttons.
class ZLSideBarView : public QWidget {
    Q_OBJECT
public:
    explicit ZLSideBarView(QWidget *parent = nullptr);

    void setPostListShown(bool shown);
    void setButtonsEnabled(bool enabled);

Q_SIGNALS:
    void didClickOnPostsList();
    void didClickOnNewPost();
    void didClickOnImportMedia();

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    ZLIconButton *m_postListButton;
    ZLIconButton *m_createNewPostButton;
    ZLIconButton *m_importButton;
};
