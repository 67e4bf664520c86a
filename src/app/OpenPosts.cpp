#include "app/OpenPosts.h"

namespace {
const QString defaultsKey = u"openPosts"_qs; // file URL by the blog's name
}

OpenPosts::OpenPosts(AppEnvironment &environment, const CurrentBlogState &state)
    : m_environment(environment)
    , m_state(state)
{
}

void OpenPosts::remember()
{
    if (!m_state.selectedAccount || !m_environment.windows.compose)
        return;
    ZLDefaults &defaults = m_environment.platform.defaults;
    const DocumentPtr document = m_environment.windows.compose->currentDocument();
    QVariantMap open = defaults.objectForKey(defaultsKey).toMap();
    open.insert(m_state.blogName, document ? document->fileURL().toString() : QString());
    if (open != defaults.objectForKey(defaultsKey).toMap())
        defaults.setObjectForKey(open, defaultsKey);
}

void OpenPosts::reopen()
{
    const QVariantMap open = m_environment.platform.defaults.objectForKey(defaultsKey).toMap();
    const QUrl file(open.value(m_state.blogName).toString());
    if (!file.isEmpty())
        m_environment.windows.postList->selectPostFromLocalFileURL(file);
}
