#pragma once

#include "model/ZLLocalPostRepresentation.h"

#include <QAbstractListModel>
#include <functional>

/// The rows of the post list. Texts are made when a row is painted and kept until it changes.
class ZLPostListModel : public QAbstractListModel {
    Q_OBJECT
public:
    enum Role {
        DetailRole = Qt::UserRole,
        StatusRole,
        MarkRole, ///< what stands in place of the status: "private", "pending", "upload"; empty: nothing does
    };

    using QAbstractListModel::QAbstractListModel;

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;

    void setPosts(const QList<LocalPostPtr> &posts);
    const QList<LocalPostPtr> &posts() const { return m_posts; }
    LocalPostPtr post(int row) const; ///< null for a row that is not there
    int rowOfPost(const LocalPostPtr &post) const; ///< -1 for none
    int rowOfFile(const QUrl &localFile) const; ///< -1 for none
    void reloadRow(int row);
    /// Asked whenever a row is painted: whether the post with this file is on its way to the blog.
    void setIsOnItsWay(std::function<bool(const QUrl &)> isOnItsWay) { m_isOnItsWay = std::move(isOnItsWay); }
    void uploadsDidChange(); ///< rows are to be painted anew

private:
    QString detail(int row) const;
    QString mark(const ZLLocalPostRepresentation &post) const;

    std::function<bool(const QUrl &)> m_isOnItsWay = [](const QUrl &) { return false; };
    QList<LocalPostPtr> m_posts;
    mutable QHash<const ZLLocalPostRepresentation *, QString> m_details;
};
