#pragma once

#include <functional>

class BlogSelector;
class ComposeScreen;
class PostList;
class Prompts;

/// The windows, as far as the controller asks for them.
struct ZLWindows {
    ComposeScreen *compose = nullptr;
    PostList *postList = nullptr;
    Prompts *prompts = nullptr;
    BlogSelector *selector = nullptr;
    std::function<void()> comeToFront = {}; ///< the main window, in front of all others
};
