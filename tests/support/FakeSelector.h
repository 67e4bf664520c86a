#pragma once

#include "app/BlogSelector.h"

/// The selector as a record.
class FakeSelector : public BlogSelector {
public:
    void setItems(const QList<Item> &newItems) override { items = newItems; }
    void selectItem(int index) override { selected = index; }
    void showBlogSelector() override { isShown = true; }
    void removeBlogSelector() override { isShown = false; }
    void setTitle(const QString &blogName, const QString &) override { title = blogName; }

    QStringList titles() const
    {
        QStringList texts;
        for (const Item &item : items)
            texts.append(item.title);
        return texts;
    }

    QList<Item> items;
    QString title;
    int selected = 0;
    bool isShown = false;
};
