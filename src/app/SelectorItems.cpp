#include "app/SelectorItems.h"

SelectorItems::SelectorItems(AppEnvironment &environment, CurrentBlogState &state, FaviconLookup &favicons)
    : m_environment(environment)
    , m_state(state)
    , m_favicons(favicons)
{
    connect(&favicons, &FaviconLookup::didStoreFavicon, this, [this](const AccountPtr &account) {
        if (account == m_state.selectedAccount)
            showCurrentBlog();
        refreshSelectorItemsWithAccounts();
    });
}

void SelectorItems::showBlogSelector()
{
    m_environment.windows.selector->showBlogSelector();
}

void SelectorItems::removeBlogSelector()
{
    m_environment.windows.selector->removeBlogSelector();
}

void SelectorItems::refreshSelectorItemsWithAccounts()
{
    QList<BlogSelector::Item> items;
    for (const AccountPtr &account : m_state.accounts) {
        const QString icon = m_favicons.usableFaviconPath(account->alias());
        items.append({u" %1"_qs.arg(account->alias()), icon});
        if (icon.isNull())
            m_favicons.getFavIconForAccount(account);
    }
    m_environment.windows.selector->setItems(items);
}

void SelectorItems::selectItemOfAccount(const AccountPtr &account)
{
    selectItem(int(m_state.accounts.indexOf(account)) + 1);
}

void SelectorItems::selectItem(int index)
{
    m_environment.windows.selector->selectItem(index);
}

void SelectorItems::showCurrentBlog()
{
    m_environment.windows.selector->setTitle(m_state.blogName, m_favicons.usableFaviconPath(m_state.blogName));
}
