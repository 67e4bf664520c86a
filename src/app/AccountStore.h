#pragma once

#include "app/AppEnvironment.h"

/// Opens the object store when it is first asked for, and tells the user when that fails.
class AccountStore {
public:
    explicit AccountStore(AppEnvironment &environment);

    /// Opens the store unless it is open, and tells nobody; nothing when that went well.
    std::optional<ZLError> open();
    /// Null when the store cannot be opened; each use tries again, and says so again.
    ZLManagedObjectContext *managedObjectContext();
    /// The context if it was made, without making it.
    ZLManagedObjectContext *openContext() const { return m_context.get(); }
    QList<AccountPtr> accounts();
    /// Saves; a failure is logged and the changes stay in memory.
    bool saveOrLog();

private:
    AppEnvironment &m_environment;
    std::unique_ptr<ZLManagedObjectContext> m_context;
};
