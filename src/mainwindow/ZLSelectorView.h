#pragma once

#include "app/BlogSelector.h"

#include <QToolButton>

class QActionGroup;
class QMenu;

/// The current blog in the title bar, with a menu of all of them. Item 0 is an empty item that the menu does not show.
class ZLSelectorView : public QToolButton, public BlogSelector {
    Q_OBJECT
public:
    explicit ZLSelectorView(QWidget *parent = nullptr);

    void setItems(const QList<Item> &items) override;
    void selectItem(int index) override;
    void showBlogSelector() override;
    void removeBlogSelector() override;
    void setTitle(const QString &blogName, const QString &faviconPath) override;

    int indexOfSelectedItem() const { return m_selectedIndex; }
    /// What stands below the blogs.
    void setConnectAction(QAction *action);
    QSize sizeHint() const override;

Q_SIGNALS:
    void selectorDidChange(int index);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void rebuildMenu();

    QMenu *m_menu;
    QActionGroup *m_group = nullptr;
    QAction *m_connect = nullptr;
    QList<Item> m_items;
    int m_selectedIndex = 0;
};
