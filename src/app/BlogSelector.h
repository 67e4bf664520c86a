#pragma once

#include <QStringList>

/// The selector of the current blog in the title bar. Item 0 is an empty item; the first account is item 1.
class BlogSelector {
public:
    struct Item {
        QString title; ///< " %@" of the alias
        QString imagePath; ///< favicon file; null: the built-in "wordpress_favicon"
    };
    virtual ~BlogSelector() = default;
    virtual void setItems(const QList<Item> &items) = 0; ///< without the empty item 0
    virtual void selectItem(int index) = 0;
    virtual void showBlogSelector() = 0;
    virtual void removeBlogSelector() = 0;
    virtual void setTitle(const QString &blogName, const QString &faviconPath) = 0; ///< null path: "wordpress_favicon"
};
