#include "compose/UploadOverlay.h"

#include <array>

namespace {
const std::array stepTexts{
    "Preparing...",
    "Syncing categories and tags...",
    "Syncing images...",
    "Uploading content...",
    "Finishing...",
};
const std::array headingTexts{
    "Publishing Article",
    "Updating Article",
    "Saving Draft",
    "Saving to Evernote",
    "Scheduling Article",
    "Updating Draft",
    "Moving to Drafts",
};

template <std::size_t N>
QString textAt(const std::array<const char *, N> &texts, int index)
{
    return index >= 0 && index < int(N) ? QString::fromLatin1(texts[std::size_t(index)]) : QLatin1String("");
}
} // namespace

UploadOverlay::UploadOverlay(ComposeHost &host, ComposeView &view, QObject *parent)
    : QObject(parent)
    , m_host(host)
    , m_view(view)
{
}

QString UploadOverlay::stepText(int step)
{
    return textAt(stepTexts, step);
}

QString UploadOverlay::headingText(int heading)
{
    return textAt(headingTexts, heading);
}

bool UploadOverlay::matches(const ZLWordpressPost &onScreen, const ZLWordpressPost &other)
{
    return onScreen.id.isEmpty() ? onScreen.title == other.title : onScreen.id == other.id;
}

void UploadOverlay::addPostForLoadingList(const PostPtr &post, int heading)
{
    if (post->id.isEmpty() || loadingPostIds.contains(post->id))
        return;
    loadingPostIds.append(post->id);
    loadingPostStatuses[post->id] = Preparing;
    loadingPostTypes[post->id] = heading;
    m_sentPosts[post->id] = post;
    m_blogNames[post->id] = m_host.getBlogName();
}

void UploadOverlay::removePostFromLoadingList(const QString &id)
{
    loadingPostIds.removeAll(id);
    loadingPostStatuses.remove(id);
    loadingPostTypes.remove(id);
    m_sentPosts.remove(id);
    m_blogNames.remove(id);
}

void UploadOverlay::removePostOfRow(const LocalPostPtr &row)
{
    for (const QString &id : QStringList(loadingPostIds)) {
        if (m_sentPosts.value(id)->localPost == row)
            removePostFromLoadingList(id);
    }
}

void UploadOverlay::show(int heading, int step, const QString &blogName)
{
    m_heading = heading;
    m_isShowingLoadingView = true;
    m_view.showLoadingView(headingText(heading), stepText(step), blogName);
}

void UploadOverlay::showLoadingView(int heading)
{
    show(heading, Preparing, m_host.getBlogName());
}

void UploadOverlay::hideLoadingView()
{
    if (!m_isShowingLoadingView)
        return;
    m_isShowingLoadingView = false;
    m_view.hideLoadingView();
}

void UploadOverlay::follow(const PostPtr &onScreen)
{
    if (!isLoading(onScreen->id))
        hideLoadingView();
    else
        show(loadingPostTypes[onScreen->id], loadingPostStatuses[onScreen->id], m_blogNames[onScreen->id]);
}

void UploadOverlay::didUpdateLoadingStatus(const PostPtr &post, int step, const PostPtr &onScreen)
{
    if (isLoading(post->id))
        loadingPostStatuses[post->id] = step;
    if (m_isShowingLoadingView && matches(*onScreen, *post))
        m_view.updateLoadingView(headingText(m_heading), stepText(step));
}

void UploadOverlay::didSendBodyData(const PostPtr &post, float progress, const PostPtr &onScreen)
{
    if (m_isShowingLoadingView && post && matches(*onScreen, *post))
        m_view.setUploadProgress(progress);
}

void UploadOverlay::cancel(const PostPtr &onScreen)
{
    const PostPtr sent = m_sentPosts.value(onScreen->id, onScreen);
    m_host.cancelUploadOfPost(sent);
    removePostFromLoadingList(onScreen->id);
    hideLoadingView();
}
