#include "mainwindow/ComposeArea.h"

#include "app/ZLAppDelegate.h"
#include "editor/EditorEngine.h"
#include "editor/ZLComposeWidget.h"
#include "model/LocalFileURL.h"

ComposeArea::ComposeArea(ZLAppDelegate &app, Prompts &prompts, ZLSheetHost &sheets)
    : m_app(app)
    , m_host(app.environment(), app.currentBlog(), app.posts(), app.logins(), app.services())
    , m_widget(new ZLComposeWidget)
    , m_controller(m_host, m_page, m_widget->view(), prompts)
{
    m_page.setParent(this); // so that the page can be found below the window
    m_widget->setSheetHost(&sheets);
    m_widget->setCompletions([this](const QString &text) { return m_host.getTaxonomiesForSearch(text); });
    m_page.setTargetForLinkImage([this] {
        const AccountPtr account = m_host.selectedAccount();
        const bool sameWindow = account && account->preferences && account->preferences->default_open_image_link == 1;
        return sameWindow ? u"_self"_qs : u"_blank"_qs;
    });
}

ComposeArea::~ComposeArea()
{
    delete webView(); // before the page that it shows
}

QWidget *ComposeArea::view() const
{
    return m_widget;
}

void ComposeArea::loadEngine()
{
    if (!m_engine.valid())
        m_engine = EditorEngine::loadAhead();
}

void ComposeArea::makeWebView()
{
    if (webView())
        return;
    EditorEngine *const engine = EditorEngine::load();
    if (!engine)
        return m_page.pageIsGivenUp();
    QWidget *const view = engine->makeView(m_page, m_host.cacheFolder())->widget();
    view->setObjectName(u"editorWebView"_qs);
    m_widget->setPageWidget(view);
}

bool ComposeArea::canFormatSelectedDOMRange() const
{
    const QWidget *focused = m_widget->window()->focusWidget();
    const QWidget *view = webView() ? webView()->widget() : nullptr;
    return view && m_page.isReady() && focused && (focused == view || view->isAncestorOf(focused));
}

void ComposeArea::loadPost(const LocalPostPtr &post, PostAction action)
{
    m_controller.loadPost(post, action);
}

void ComposeArea::doActionForCurrentPost(PostAction action)
{
    m_controller.doActionForCurrentPost(action);
}

void ComposeArea::makeTitleBecomeFirstResponder()
{
    m_controller.makeTitleBecomeFirstResponder();
}

void ComposeArea::cleanEditorForNewPost()
{
    m_controller.newPost();
}

void ComposeArea::cleanUndoStack()
{
    m_controller.cleanUndoStack();
}

bool ComposeArea::isOnScreen(const LocalPostPtr &post) const
{
    const LocalPostPtr shown = m_controller.currentPost()->localPost;
    return shown && isSameFile(shown->localFile, post->localFile);
}
