#include "app/AccountStore.h"

AccountStore::AccountStore(AppEnvironment &environment)
    : m_environment(environment)
{
}

std::optional<ZLError> AccountStore::open()
{
    if (m_context)
        return std::nullopt;
    auto opened = ZLManagedObjectContext::open(m_environment.platform.files.applicationFilesDirectory());
    if (!opened)
        return opened.error();
    m_context = std::move(*opened);
    return std::nullopt;
}

ZLManagedObjectContext *AccountStore::managedObjectContext()
{
    const std::optional<ZLError> error = open();
    if (!error)
        return m_context.get();
    Prompts &prompts = *m_environment.windows.prompts;
    prompts.alertWithError(*error);
    prompts.alert(u"Failed to initialize the store"_qs, u"There was an error building up the data file."_qs);
    return nullptr;
}

QList<AccountPtr> AccountStore::accounts()
{
    const ZLManagedObjectContext *context = managedObjectContext();
    return context ? context->accounts() : QList<AccountPtr>();
}

bool AccountStore::saveOrLog()
{
    ZLManagedObjectContext *context = managedObjectContext();
    if (!context)
        return false;
    const Result<void> saved = context->save();
    if (!saved)
        ZLLog(u"Whoops, couldn't save: %1"_qs.arg(saved.error().description));
    return saved.has_value();
}
