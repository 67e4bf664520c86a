#pragma once

#include "compose/ComposeView.h"
#include "compose/FormatCommands.h"

#include <QKeySequence>
#include <QWidget>

class QHBoxLayout;
class QLabel;
class QPushButton;
class ZLIconButton;

/// The bar over the post: the formats on the left, what becomes of the post on the right. Where it is narrow, formats
/// give way from the last one on; the menu has them all.
class ZLComposeBar : public QWidget {
    Q_OBJECT
public:
    explicit ZLComposeBar(QWidget *parent = nullptr);

    void setButtons(const PostButtons &buttons);
    void setPublishShortcut(const QKeySequence &keys); ///< for the tool tip
    void setSelectionStyle(const SelectionStyle &style);
    void setSaveState(const QString &text);
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    void didPressedFormatButton(const QString &command);
    void didPressedLinkButton();
    void didPressedInsertMedia();
    void didPressedSaveButton();
    void didPressedPublishButton();
    void didPressedDeleteButton();

protected:
    void paintEvent(QPaintEvent *event) override;
    void changeEvent(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    ZLIconButton *addFormatButton(const QString &icon, const QString &toolTip);
    QWidget *makeSeparator();
    void setPublishButton(const PostButtons::Button &button);
    void showPublishIcon();
    void showSaveState();
    void showFormatsThatFit();

    QHBoxLayout *m_row;
    std::array<ZLIconButton *, formatCommands.size()> m_formatButtons{};
    ZLIconButton *m_link;
    QLabel *m_saveState;
    QString m_saveStateText; ///< shown where there is room for all of it
    ZLIconButton *m_save;
    ZLIconButton *m_delete;
    QPushButton *m_publish;
    PostButtons::Button m_publishButton;
    QKeySequence m_publishShortcut;
};
