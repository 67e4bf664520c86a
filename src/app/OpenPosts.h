#pragma once

#include "app/AppEnvironment.h"

/// Which post of each blog was on the screen last, so that the next start can open it.
class OpenPosts {
public:
    OpenPosts(AppEnvironment &environment, const CurrentBlogState &state);

    /// Notes the post that is on the screen now.
    void remember();
    /// Opens the current blog's, if there is one and its file is still in the list.
    void reopen();

private:
    AppEnvironment &m_environment;
    const CurrentBlogState &m_state;
};
