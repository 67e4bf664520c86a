#pragma once

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
};
