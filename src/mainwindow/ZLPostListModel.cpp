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
        return post->title.isEmpty() ? u"No title"_qs : post->title.left(shownLength);
    case DetailRole:
        return detail(index.row());
    case StatusRole:
        return post->status;
    case MarkRole:
        return mark(*post);
    case Qt::AccessibleDescriptionRole: // what one sees as an icon, too
        return u"%1. %2"_qs.arg(ZLPostListCellView::wordForPostStatus(post->status, mark(*post)), detail(index.row()));
    default:
        return {};
    }
}

/// What is going on comes first, then who may see it, then how far the post is.
QString ZLPostListModel::mark(const ZLLocalPostRepresentation &post) const
{
    if (m_isOnItsWay(post.localFile))
        return u"upload"_qs;
    const bool isAsOnBlog = post.status == ZLLocalPostRepresentation::Published
        || post.status == ZLLocalPostRepresentation::PublishedPage || post.status == ZLLocalPostRepresentation::Draft;
    const bool isKnown = post.blogStatus == u"private" || post.blogStatus == u"pending";
    return isAsOnBlog && isKnown ? post.blogStatus : QString();
}

void ZLPostListModel::uploadsDidChange()
{
    if (!m_posts.isEmpty())
        Q_EMIT dataChanged(index(0), index(int(m_posts.size()) - 1), {MarkRole});
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
