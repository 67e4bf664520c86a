#include "mainwindow/ZLPostListModel.h"

#include "mainwindow/ZLPostListCellView.h"
#include "text/ContentPasses.h"
#include "text/HTMLEntities.h"

static constexpr int shownLength = 300; // more than two lines of the list hold

int ZLPostListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_posts.size());
}

QVariant ZLPostListModel::data(const QModelIndex &index, int role) const
{
    const LocalPostPtr post = this->post(index.row());
    if (!post)
        return {};
    switch (role) {
    case Qt::DisplayRole:
        return post->title.isEmpty() ? u"No title"_qs : post->title;
    case DetailRole:
        return detail(index.row());
    case StatusRole:
        return post->status;
    case Qt::AccessibleDescriptionRole: // what one sees as an icon, too
        return u"%1. %2"_qs.arg(ZLPostListCellView::wordForPostStatus(post->status), detail(index.row()));
    default:
        return {};
    }
}

QString ZLPostListModel::detail(int row) const
{
    const ZLLocalPostRepresentation *post = m_posts[row].get();
    const auto known = m_details.constFind(post);
    if (known != m_details.cend())
        return *known;
    const QString extract =
        HTMLEntities::stringByDecodingHTMLEntities(ContentPasses::removeHTMLFromString(post->content));
    const QString shown = extract.isEmpty() ? u"No content"_qs : extract.left(shownLength);
    m_details.insert(post, shown);
    return shown;
}

void ZLPostListModel::setPosts(const QList<LocalPostPtr> &posts)
{
    beginResetModel();
    m_posts = posts;
    m_details.clear();
    endResetModel();
}

LocalPostPtr ZLPostListModel::post(int row) const
{
    return row >= 0 && row < m_posts.size() ? m_posts[row] : LocalPostPtr();
}

int ZLPostListModel::rowOfPost(const LocalPostPtr &post) const
{
    return int(m_posts.indexOf(post));
}

int ZLPostListModel::rowOfFile(const QUrl &localFile) const
{
    if (localFile.isEmpty())
        return -1;
    for (int row = 0; row < m_posts.size(); ++row) {
        if (m_posts[row]->localFile == localFile)
            return row;
    }
    return -1;
}

void ZLPostListModel::reloadRow(int row)
{
    const LocalPostPtr post = this->post(row);
    if (!post)
        return;
    m_details.remove(post.get());
    Q_EMIT dataChanged(index(row), index(row));
}
