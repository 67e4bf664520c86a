#pragma once

#include "compose/ComposeView.h"

#include <QWidget>
#include <array>

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

    void setSaveButton(const ComposeView::Button &button);
    void setPublishButton(const ComposeView::Button &button);
    void setDeleteToolTip(const QString &toolTip);
    void setSelectionStyle(const SelectionStyle &style);
    void setSaveState(const QString &text);
    /// What the buttons say, for the menus that have the same commands.
    bool canSave() const;
    bool canPublish() const;
    bool canDelete() const;
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
    struct Format;
    static const std::array<Format, 6> formats;

    ZLIconButton *addFormatButton(const QString &icon, const QString &toolTip);
    QWidget *makeSeparator();
    void showPublishIcon();
    void showSaveState();
    void showFormatsThatFit();

    QHBoxLayout *m_row;
    std::array<ZLIconButton *, 6> m_formatButtons{};
    ZLIconButton *m_link;
    QLabel *m_saveState;
    QString m_saveStateText; ///< shown where there is room for all of it
    ZLIconButton *m_save;
    ZLIconButton *m_delete;
    QPushButton *m_publish;
    ComposeView::Button m_publishButton;
};
